// SPDX-License-Identifier: MIT
#include "platform/desktop/workpanel.h"

#include <QCloseEvent>
#include <QGuiApplication>

#include <utility>

using namespace std::chrono_literals;

namespace {

constexpr int steps = 1000;
constexpr int panelWidth = 340; ///< so that growing numbers do not move its edges

/// Stays until the work is done, whatever the user does.
class FirmDialog final : public QProgressDialog
{
public:
    explicit FirmDialog(QWidget* window) : QProgressDialog(window) { setCancelButton(nullptr); }

    void reject() override {}

protected:
    void closeEvent(QCloseEvent* event) override { event->ignore(); }
};

} // namespace

WorkPanel::WorkPanel(QWidget* window,
                     QString title,
                     Cancel cancel,
                     std::chrono::milliseconds patience)
    : m_window(window)
    , m_title(std::move(title))
    , m_cancel(cancel)
    , m_pause(patience)
{
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    m_pausing.start();
}

WorkPanel::~WorkPanel()
{
    QGuiApplication::restoreOverrideCursor();
}

bool WorkPanel::update(const QString& text, std::optional<double> fraction)
{
    if (m_pausing.elapsed() >= m_pause.count()) {
        if (!m_dialog)
            show(fraction.has_value());
        if (fraction)
            m_dialog->setValue(static_cast<int>(*fraction * steps));
        m_dialog->setLabelText(text);
        // The panel is modal: its button is all that takes the user's events.
        QCoreApplication::processEvents(m_cancel == Cancel::Button
                                            ? QEventLoop::AllEvents
                                            : QEventLoop::ExcludeUserInputEvents);
        m_pause = 50ms;
        m_pausing.start();
    }
    return !m_dialog || !m_dialog->wasCanceled();
}

void WorkPanel::show(bool knowsTheWhole)
{
    if (m_cancel == Cancel::Button)
        m_dialog = std::make_unique<QProgressDialog>(m_window);
    else
        m_dialog = std::make_unique<FirmDialog>(m_window);
    m_dialog->setObjectName(QStringLiteral("workPanel"));
    m_dialog->setWindowTitle(m_title);
    m_dialog->setWindowModality(Qt::ApplicationModal);
    m_dialog->setCursor(Qt::ArrowCursor);
    m_dialog->setMinimumWidth(panelWidth);
    m_dialog->setRange(0, knowsTheWhole ? steps : 0);
    m_dialog->setMinimumDuration(0);
    m_dialog->setAutoReset(false);
    m_dialog->setAutoClose(false);
    m_dialog->show();
}
