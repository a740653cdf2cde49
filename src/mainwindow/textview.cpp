// SPDX-License-Identifier: MIT
#include "mainwindow/textview.h"

#include "settings/bindings.h"

using namespace Qt::StringLiterals;

TextView::TextView(UserDefaults& defaults, QWidget* parent) : QPlainTextEdit(parent)
{
    setObjectName(u"textView"_s);
    setAccessibleName(tr("Gloss"));
    bind(document(), defaults, preferences::selectText);
    moveCursor(QTextCursor::Start);
}

QSize TextView::sizeHint() const
{
    constexpr int columns = 80;
    constexpr int lines = 20;
    const QFontMetrics metrics = fontMetrics();
    return {metrics.averageCharWidth() * columns, metrics.lineSpacing() * lines};
}
