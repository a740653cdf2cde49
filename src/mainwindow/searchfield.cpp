// SPDX-License-Identifier: MIT
#include "mainwindow/searchfield.h"

#include "platform/desktop/symbols.h"

#include <QKeyEvent>

using namespace Qt::StringLiterals;

SearchField::SearchField(QWidget* parent) : QLineEdit(parent)
{
    setObjectName(u"search"_s);
    setAccessibleName(tr("Search text"));
    setPlaceholderText(tr("search text"));
    setClearButtonEnabled(true);
    addAction(symbolIcon(u"magnifyingglass"_s), LeadingPosition);
    setAcceptDrops(false); // the window opens a document that is dropped here
    connect(this, &QLineEdit::returnPressed, this, &SearchField::submitted);
}

void SearchField::keyPressEvent(QKeyEvent* event)
{
    if (event->key() != Qt::Key_Escape)
        return QLineEdit::keyPressEvent(event);
    clear();
    Q_EMIT ended();
}
