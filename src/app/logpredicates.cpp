// SPDX-License-Identifier: MIT
#include "app/logpredicates.h"

#include "platform/clock.h"
#include "platform/logpredicate.h"

namespace {

predicate::BuildSettings buildSettings(const Clock& clock)
{
    constexpr std::int64_t nanosecondsPerMillisecond = 1'000'000;
    predicate::BuildSettings settings;
    settings.now = clock.now().toMSecsSinceEpoch() * nanosecondsPerMillisecond;
    settings.utcOffset = [zone = clock.timeZone()](std::int64_t shownSeconds) -> std::int64_t {
        const QDateTime shown = QDateTime::fromSecsSinceEpoch(shownSeconds, Qt::UTC);
        const QDateTime moment(shown.date(), shown.time(), zone);
        return moment.isValid() ? moment.offsetFromUtc() : 0;
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

} // namespace

PredicateBuilder logPredicates(const Clock& clock)
{
    return [&clock](const PredicateFormat& chosen)
               -> Result<std::shared_ptr<const logstore::EntryFilter>> {
        const std::string format = chosen.format.toStdString();
        auto built = predicate::build(format, arguments(chosen.arguments), buildSettings(clock));
        if (!built)
            return failure(predicate::alertText(built.error(), format));
        return std::make_shared<LogPredicate>(*std::move(built));
    };
}

PredicateCheck predicateCheck(const Clock& clock)
{
    return [&clock](const QString& text) -> std::optional<QString> {
        const auto built = predicate::build(text.toStdString(), {}, buildSettings(clock));
        if (built)
            return std::nullopt;
        return QString::fromStdString(built.error().sentence);
    };
}
