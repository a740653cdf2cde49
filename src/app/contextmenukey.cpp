// SPDX-License-Identifier: MIT
#include "app/contextmenukey.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QWidget>

ContextMenuKey::ContextMenuKey(QObject* parent) : QObject(parent)
{
    qApp->installEventFilter(this);
}

bool ContextMenuKey::eventFilter(QObject* watched, QEvent* event)
{
    auto* const widget = qobject_cast<QWidget*>(watched);
    if (event->type() != QEvent::KeyPress || !widget)
        return false;
    const auto* const key = static_cast<QKeyEvent*>(event);
    if (key->key() != Qt::Key_F10 || key->modifiers() != Qt::ShiftModifier)
        return false;
    const QPoint place = widget->inputMethodQuery(Qt::ImCursorRectangle).toRect().center();
    QContextMenuEvent asked(QContextMenuEvent::Keyboard, place, widget->mapToGlobal(place));
    QApplication::sendEvent(widget, &asked);
    return true;
}
