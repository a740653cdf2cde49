// SPDX-License-Identifier: MIT
#pragma once

#include <QElapsedTimer>
#include <QMainWindow>

#include <functional>
#include <memory>

class LogFolderTool;
class QCheckBox;
class QHBoxLayout;
class QPlainTextEdit;
class QToolBar;
class WorkPanel;
struct CopyProgress;

/// What the windows of the two tools have in common: a toolbar, a row of switches, and the tool's
/// text, which the user may edit.
class ToolView : public QMainWindow
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(ToolView)

public:
    ~ToolView() override;

protected:
    struct Command
    {
        QString identifier;
        QString title;
        QString menuText;
        QString symbol;
        QString help;
        std::function<void()> run;
    };

    ToolView(const QString& title,
             const QString& toolBarIdentifier,
             std::shared_ptr<LogFolderTool> tool,
             QWidget* parent);

    QAction* addCommand(const Command& command);
    QCheckBox* addSwitch(const QString& identifier, const QString& title);

private:
    void bindOutput();
    void followText();
    void showOutput();
    void followWork(bool working);
    void showCopied(const CopyProgress& progress);

    std::shared_ptr<LogFolderTool> m_tool;
    QToolBar* m_toolBar;
    QHBoxLayout* m_switches;
    QPlainTextEdit* m_output;
    QElapsedTimer m_sinceShown;        ///< or since work began
    qint64 m_pause = 0;                ///< milliseconds in which work shows no more of its text
    bool m_isBehind = false;           ///< whether there is text that was not shown for this
    std::unique_ptr<WorkPanel> m_work; ///< while the tool works
};
