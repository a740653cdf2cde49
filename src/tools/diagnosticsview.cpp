// SPDX-License-Identifier: MIT
#include "tools/diagnosticsview.h"

#include <QAction>
#include <QCheckBox>

using namespace Qt::StringLiterals;

DiagnosticsView::DiagnosticsView(const Platform& platform, FileManager& files, QWidget* parent)
    : DiagnosticsView(Diagnoser::make(platform, files), parent)
{
}

DiagnosticsView::DiagnosticsView(const std::shared_ptr<Diagnoser>& diagnoser, QWidget* parent)
    : ToolView(tr("Diagnostics Tool"), u"DiagnosticsView.toolbar"_s, diagnoser, parent)
{
    setObjectName(u"diagtool"_s);
    const QCheckBox* const csv = addSwitch(u"csv"_s, tr("CSV"));
    Diagnoser* const model = diagnoser.get();
    addCommand({u"infodiag"_s, tr("Get Info"), tr("Get &Info…"), u"checklist"_s,
                tr("Get information on a diagnostics folder"), [model] { model->getInfo(); }});
    addCommand({u"catdiag"_s, tr("Catalogue"), tr("Ca&talogue…"), u"list.bullet"_s,
                tr("Catalogue a diagnostics folder"), [model] { model->catalogue(); }});
    addCommand({u"analdiag"_s, tr("Analyse"), tr("&Analyse…"), u"numbers.rectangle"_s,
                tr("Analyse the contents of a diagnostics folder"),
                [model, csv] { model->analyse(csv->isChecked()); }});
    addCommand({u"savediag"_s, tr("Save Text"), tr("&Save Text…"), u"arrow.down.document.fill"_s,
                tr("Save the contents of this window to a file"), [model] { model->saveText(); }})
        ->setShortcut(QKeySequence::Save);
}
