// SPDX-License-Identifier: MIT
#include "tools/archiveview.h"

#include <QAction>
#include <QCheckBox>

using namespace Qt::StringLiterals;

ArchiveView::ArchiveView(const Platform& platform, FileManager& files, QWidget* parent)
    : ArchiveView(Archiver::make(platform, files), parent)
{
}

ArchiveView::ArchiveView(const std::shared_ptr<Archiver>& archiver, QWidget* parent)
    : ToolView(tr("Logarchive Tool"), u"ArchiveView.toolbar"_s, archiver, parent)
{
    setObjectName(u"logarchtool"_s);
    const QCheckBox* const debug = addSwitch(u"debug"_s, tr("Debug"));
    const QCheckBox* const csv = addSwitch(u"csv"_s, tr("CSV"));
    Archiver* const model = archiver.get();
    addCommand({u"copyarch"_s, tr("Create Logarchive"), tr("Create &Logarchive…"),
                u"archivebox.fill"_s, tr("Create a new logarchive from log folders"),
                [model, debug] { model->createArchive(debug->isChecked()); }});
    addCommand({u"catarch"_s, tr("Catalogue"), tr("Ca&talogue…"), u"list.bullet"_s,
                tr("Catalogue an existing logarchive"), [model] { model->catalogue(); }});
    addCommand({u"analarch"_s, tr("Analyse"), tr("&Analyse…"), u"numbers.rectangle"_s,
                tr("Analyse the contents of an existing logarchive"),
                [model, csv] { model->analyse(csv->isChecked()); }});
    addCommand({u"savearch"_s, tr("Save Text"), tr("&Save Text…"), u"arrow.down.document.fill"_s,
                tr("Save the contents of this window to a file"), [model] { model->saveText(); }})
        ->setShortcut(QKeySequence::Save);
}
