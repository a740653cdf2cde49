// SPDX-License-Identifier: MIT
#include "tools/toolview.h"

#include "platform/desktop/documenttext.h"
#include "platform/desktop/symbols.h"
#include "tools/logfoldertool.h"

#include <QAction>
#include <QCheckBox>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QToolBar>

using namespace Qt::StringLiterals;

namespace {

constexpr QSize smallestContent(650, 200);

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

ToolView::~ToolView()
{
    showWorking(false);
}

QAction* ToolView::addCommand(const Command& command)
{
    auto* const action = new QAction(symbolIcon(command.symbol), command.title, this);
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
    connect(tool, &LogFolderTool::theOutputTextChanged, this, [this, tool] {
        showText(m_output->document(), tool->theOutputText());
        if (m_isWorking)
            m_output->viewport()->repaint(); // long work reports as it goes on
    });
    connect(tool, &LogFolderTool::workingChanged, this, &ToolView::showWorking);
}

void ToolView::showWorking(bool working)
{
    if (m_isWorking == working)
        return;
    m_isWorking = working;
    if (working)
        QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    else
        QGuiApplication::restoreOverrideCursor();
}
