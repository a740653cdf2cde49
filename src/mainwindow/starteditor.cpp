// SPDX-License-Identifier: MIT
#include "mainwindow/starteditor.h"

#include <QApplication>
#include <QCalendarWidget>
#include <QClipboard>
#include <QKeyEvent>
#include <QLineEdit>
#include <QRegularExpression>
#include <QTimeZone>

#include <optional>

using namespace Qt::StringLiterals;

namespace {

const QString pattern = u"yyyy-MM-dd HH:mm"_s;

/// The local time. A time that was skipped when clocks were put forward becomes the one after it.
QDateTime shownTime(const QDate& date, const QTime& time)
{
    return QDateTime::fromMSecsSinceEpoch(QDateTime(date, time).toMSecsSinceEpoch());
}

/// The seconds east of Greenwich that a text such as +0130, -05:00 or Z gives.
std::optional<int> zoneOffset(QString zone)
{
    if (zone.isEmpty())
        return std::nullopt;
    if (zone == u'Z')
        return 0;
    zone.remove(u':');
    const int seconds = (zone.mid(1, 2).toInt() * 60 + zone.mid(3, 2).toInt()) * 60;
    return zone.startsWith(u'-') ? -seconds : seconds;
}

/// The local time of a row's time. Rows end with the offset that was in force at the fetch,
/// whatever their date; so a row with today's offset shows local time.
QDateTime localTime(const QDate& date, const QTime& time, std::optional<int> offset)
{
    if (!offset || *offset == QDateTime::currentDateTime().offsetFromUtc())
        return shownTime(date, time);
    return QDateTime(date, time, QTimeZone::utc()).addSecs(-*offset).toLocalTime();
}

/// The typed digit, of any script, as an ASCII digit; empty if it is no digit.
QString typedDigit(const QString& typed)
{
    const int value = typed.size() == 1 ? typed.front().digitValue() : -1;
    return value < 0 ? QString() : QString::number(value);
}

} // namespace

StartEditor::StartEditor(const QDateTime& date, QWidget* parent) : QDateTimeEdit(date, parent)
{
    setLayoutDirection(Qt::LeftToRight); // else its parts change places
    setLocale(QLocale::c());
    setDisplayFormat(pattern);
    setCorrectionMode(CorrectToNearestValue); // has fixup() called
    setCalendarPopup(true);
    calendarWidget()->setLocale(QLocale());
}

void StartEditor::fixup(QString& input) const
{
    static const QRegularExpression form(
        u"^\\s*(\\d*)\\s*-\\s*(\\d*)\\s*-\\s*(\\d*)\\s+(\\d*)\\s*:\\s*(\\d*)\\s*$"_s);
    const QRegularExpressionMatch parts = form.match(input);
    const QDateTime before = dateTime();
    const auto part = [&parts](int number, int otherwise) {
        bool isNumber = false;
        const int value = parts.captured(number).toInt(&isNumber);
        return isNumber ? value : otherwise;
    };
    const bool isWholeYear = parts.captured(1).size() == 4;
    const QDate oldDay = before.date();
    const QDate day(isWholeYear ? part(1, 0) : oldDay.year(), part(2, oldDay.month()),
                    part(3, oldDay.day()));
    const QTime time(part(4, before.time().hour()), part(5, before.time().minute()));
    input = shownTime(day.isValid() ? day : oldDay, time.isValid() ? time : before.time())
                .toString(pattern);
}

bool StartEditor::paste(const QString& text)
{
    static const QRegularExpression form(
        u"^\\s*(\\d{4}-\\d\\d-\\d\\d)[ T](\\d\\d:\\d\\d)"
        "(?::(\\d\\d)(?:[.,]\\d*)?)?\\s*(Z|[+-]\\d\\d:?\\d\\d)?"_s);
    const QRegularExpressionMatch parts = form.match(text);
    const QDate date = QDate::fromString(parts.captured(1), Qt::ISODate);
    const QTime time = QTime::fromString(parts.captured(2), Qt::ISODate);
    if (!date.isValid() || !time.isValid())
        return false;
    setDateTime(localTime(date, time, zoneOffset(parts.captured(4))));
    if (!parts.captured(3).isEmpty())
        Q_EMIT secondsPasted(parts.captured(3));
    return true;
}

void StartEditor::keyPressEvent(QKeyEvent* event)
{
    if (event->matches(QKeySequence::Paste) && paste(QApplication::clipboard()->text()))
        return;
    const QString digit = typedDigit(event->text());
    if (digit.isEmpty())
        return QDateTimeEdit::keyPressEvent(event);
    // Without a selection, the editor would refuse another digit in a complete date and time.
    const bool isWhole = lineEdit()->text().size() == pattern.size();
    if (isWhole && !lineEdit()->hasSelectedText())
        setSelectedSection(currentSection());
    QKeyEvent ascii(event->type(), event->key(), event->modifiers(), digit, event->isAutoRepeat());
    QDateTimeEdit::keyPressEvent(&ascii);
}
