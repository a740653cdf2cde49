// SPDX-License-Identifier: MIT
#include "app/predicatebuilding.h"

#include "platform/base/timeunits.h"
#include "platform/clock.h"
#include "platform/predicatefilter.h"

#include <QCoreApplication>

namespace {

predicate::BuildSettings buildSettings(const Clock& clock)
{
    predicate::BuildSettings settings;
    settings.now = clock.now().toMSecsSinceEpoch() * nanosecondsPerMillisecond;
    settings.utcOffset = [zone = clock.timeZone()](std::int64_t shownSeconds) -> std::int64_t {
        const QDateTime shown = QDateTime::fromSecsSinceEpoch(shownSeconds, QTimeZone::utc());
        const QDateTime moment(shown.date(), shown.time(), zone);
        // Clocks that are put forward skip an hour, in some zones at midnight. With the offset of
        // the day before, a skipped time becomes the moment of the change or a later one.
        return moment.isValid() ? moment.offsetFromUtc() : zone.offsetFromUtc(shown.addDays(-1));
    };
    return settings;
}

predicate::Arguments arguments(const QStringList& texts)
{
    predicate::Arguments arguments;
    for (const QString& text : texts)
        arguments.push_back({text.toStdString()});
    return arguments;
}

/// The place of the error, first as it must not be cut off, and what is wrong there.
QString placed(const QString& text, const predicate::PredicateError& error)
{
    const QStringView before = QStringView(text).left(static_cast<qsizetype>(error.position));
    const qsizetype character = before.mid(before.lastIndexOf(u'\n') + 1).toUcs4().size() + 1;
    const QString sentence = QString::fromStdString(error.sentence);
    if (!text.contains(u'\n'))
        return QCoreApplication::translate("LogPredicates", "Character %1: %2")
            .arg(QString::number(character), sentence);
    return QCoreApplication::translate("LogPredicates", "Line %1, character %2: %3")
        .arg(QString::number(before.count(u'\n') + 1), QString::number(character), sentence);
}

} // namespace

PredicateBuilder predicateBuilder(const Clock& clock)
{
    return [&clock](const PredicateFormat& chosen)
               -> Result<std::shared_ptr<const logstore::EntryFilter>> {
        const std::string format = chosen.format.toStdString();
        auto built = predicate::build(format, arguments(chosen.arguments), buildSettings(clock));
        if (!built)
            return failure(predicate::alertText(built.error(), format));
        return std::make_shared<PredicateFilter>(*std::move(built));
    };
}

PredicateCheck predicateCheck(const Clock& clock)
{
    return [&clock](const QString& text) -> std::optional<QString> {
        const auto built = predicate::build(text.toStdString(), {}, buildSettings(clock));
        if (built)
            return std::nullopt;
        return placed(text, built.error());
    };
}
