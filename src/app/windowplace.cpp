// SPDX-License-Identifier: MIT
#include "app/windowplace.h"

#include "platform/desktop/statefile.h"

#include <QApplication>
#include <QEvent>
#include <QScreen>
#include <QWidget>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// Whether another window is at the same place. Compares the areas inside the frames: the frame of
/// a window is not known before it is shown.
bool isCovered(const QWidget& window)
{
    const QWidgetList all = QApplication::topLevelWidgets();
    return std::any_of(all.begin(), all.end(), [&window](const QWidget* other) {
        return other != &window && other->isVisible()
               && other->geometry().topLeft() == window.geometry().topLeft();
    });
}

} // namespace

WindowPlace::WindowPlace(QWidget* window, StateFile& state, const QString& kind)
    : QObject(window)
    , m_window(window)
    , m_state(state)
    , m_identifier(u"window."_s + kind)
{
    restore();
    window->installEventFilter(this);
}

void WindowPlace::restore()
{
    const QByteArray place = m_state.arrangement(m_identifier);
    if (place.isEmpty() || !m_window->restoreGeometry(place))
        centreOverActiveWindow();
    stepAside();
}

void WindowPlace::centreOverActiveWindow()
{
    if (const QWidget* const active = QApplication::activeWindow()) {
        if (!m_window->testAttribute(Qt::WA_Resized))
            m_window->adjustSize();
        m_window->move(active->geometry().center() - m_window->rect().center());
    }
}

void WindowPlace::stepAside()
{
    constexpr QPoint step(28, 28);
    const QRect screen = m_window->screen()->availableGeometry();
    while (isCovered(*m_window) && screen.contains(m_window->geometry().translated(step)))
        m_window->setGeometry(m_window->geometry().translated(step));
}

bool WindowPlace::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Close)
        m_state.setArrangement(m_identifier, m_window->saveGeometry());
    return QObject::eventFilter(watched, event);
}

void bringForward(QWidget& window)
{
    window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
    window.show();
    window.raise();
    window.activateWindow();
}
