// SPDX-License-Identifier: MIT
#include "tools/toolview.h"

#include "platform/desktop/documenttext.h"
#include "platform/desktop/symbols.h"
#include "platform/desktop/workpanel.h"
#include "tools/logfoldertool.h"

#include <QAction>
#include <QCheckBox>
#include <QHBoxLayout>
#include <QLocale>
#include <QPlainTextEdit>
#include <QToolBar>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr QSize smallestContent(650, 200);
/// While the tool works, showing its text takes a tenth of the time at most, however long it grows.
constexpr qint64 shortestPause = 100; // milliseconds
constexpr qint64 pausePerShowing = 10;

} // namespace

ToolView::ToolView(const QString& title,
                   const QString& toolBarIdentifier,
                   std::shared_ptr<LogFolderTool> tool,
                   QWidget* parent)
    : QMainWindow(parent)
    , m_tool(std::move(tool))
    , m_toolBar(addToolBar(tr("Toolbar")))
    , m_switches(new QHBoxLayout)
    , m_output(new QPlainTextEdit)
{
    setWindowTitle(title);
    m_toolBar->setObjectName(toolBarIdentifier);
    m_toolBar->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    m_toolBar->setMovable(false);

    auto* const content = new QWidget;
    content->setMinimumSize(smallestContent);
    auto* const column = new QVBoxLayout(content);
    column->addLayout(m_switches);
    column->addWidget(m_output, 1);
    setCentralWidget(content);
    m_switches->setSpacing(2 * m_switches->spacing());
    m_switches->addStretch();
    m_switches->addStretch();
    bindOutput();
}

ToolView::~ToolView() = default;

QAction* ToolView::addCommand(const Command& command)
{
    auto* const action = new QAction(symbolIcon(command.symbol), command.menuText, this);
    action->setIconText(command.title);
    action->setObjectName(command.identifier);
    action->setToolTip(command.help);
    action->setStatusTip(command.help);
    connect(action, &QAction::triggered, this, command.run);
    m_toolBar->addAction(action);
    addAction(action);
    return action;
}

QCheckBox* ToolView::addSwitch(const QString& identifier, const QString& title)
{
    auto* const control = new QCheckBox(title);
    control->setObjectName(identifier);
    control->setAccessibleName(title);
    m_switches->insertWidget(m_switches->count() - 1, control);
    return control;
}

void ToolView::bindOutput()
{
    m_output->setObjectName(u"theOutputText"_s);
    m_output->setAccessibleName(tr("Report"));
    m_output->setTabChangesFocus(true);
    // The editor outlives this window's own fields.
    bindText(
        m_output->document(), [tool = m_tool] { return tool->theOutputText(); },
        [tool = m_tool](const QString& text) { tool->setTheOutputText(text); });
    LogFolderTool* const tool = m_tool.get();
    connect(tool, &LogFolderTool::theOutputTextChanged, this, &ToolView::followText);
    connect(tool, &LogFolderTool::workingChanged, this, &ToolView::followWork);
    connect(tool, &LogFolderTool::copied, this, &ToolView::showCopied);
}

void ToolView::followText()
{
    if (!m_work)
        return showOutput();
    m_isBehind = m_sinceShown.elapsed() < m_pause;
    if (m_isBehind)
        return;
    m_sinceShown.start();
    showOutput();
    m_output->viewport()->repaint();
    m_pause = std::max(shortestPause, pausePerShowing * m_sinceShown.restart());
}

void ToolView::showOutput()
{
    showText(m_output->document(), m_tool->theOutputText());
}

void ToolView::followWork(bool working)
{
    if (working) {
        m_work = std::make_unique<WorkPanel>(this, tr("Creating the log archive"),
                                             WorkPanel::Cancel::None);
        m_pause = shortestPause;
        m_sinceShown.start();
    } else {
        if (std::exchange(m_isBehind, false))
            showOutput();
        m_work.reset();
    }
}

void ToolView::showCopied(const CopyProgress& progress)
{
    const QLocale locale;
    m_work->update(tr("%1 items copied\n%2")
                       .arg(locale.toString(progress.items),
                            locale.formattedDataSize(static_cast<qint64>(progress.bytes))));
}
