// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

class StateFile;
class QWidget;

/// Restores the place and size of the last window of the same kind, or centres the window over the
/// active one, and stores place and size when the window closes. The window owns this object.
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

/// Shows the window above all others and activates it.
void bringForward(QWidget& window);
