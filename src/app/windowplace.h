// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

class StateFile;
class QWidget;

/// Puts a new window where the last one of its kind was, with its size, or else over the middle of
/// the active window, and remembers where it is when it closes. Belongs to the window.
class WindowPlace final : public QObject
{
    Q_OBJECT

public:
    WindowPlace(QWidget* window, StateFile& state, const QString& kind);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void restore();
    void centreOverActiveWindow();
    void stepAside();

    QWidget* m_window;
    StateFile& m_state;
    QString m_identifier;
};

/// Shows the window above all others and gives it the keyboard.
void bringForward(QWidget& window);
