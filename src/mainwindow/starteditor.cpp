// SPDX-License-Identifier: MIT
#include "mainwindow/starteditor.h"

#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QLineEdit>

using namespace Qt::StringLiterals;

namespace {

const QString pattern = u"yyyy-MM-dd HH:mm"_s;

/// The start that a text begins with; the text of a row goes on with seconds and more.
QDateTime pastedStart(const QString& text)
{
    const QString start = text.trimmed().left(pattern.size());
    return QDateTime::fromString(QString(start).replace(u'T', u' '), pattern);
}

bool isDigit(const QString& typed)
{
    return typed.size() == 1 && typed.front() >= u'0' && typed.front() <= u'9';
}

} // namespace

StartEditor::StartEditor(const QDateTime& date, QWidget* parent) : QDateTimeEdit(date, parent)
{
    setLayoutDirection(Qt::LeftToRight); // else its parts change places
    setDisplayFormat(pattern);
    setCalendarPopup(true);
}

void StartEditor::keyPressEvent(QKeyEvent* event)
{
    if (event->matches(QKeySequence::Paste)) {
        const QDateTime start = pastedStart(QApplication::clipboard()->text());
        if (start.isValid())
            return setDateTime(start);
    }
    // In a whole date and time without a selection a digit would be one too many and be refused.
    const bool isWhole = lineEdit()->text().size() == pattern.size();
    if (isDigit(event->text()) && isWhole && !lineEdit()->hasSelectedText())
        setSelectedSection(currentSection());
    QDateTimeEdit::keyPressEvent(event);
}
