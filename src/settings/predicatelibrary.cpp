// SPDX-License-Identifier: MIT
#include "settings/predicatelibrary.h"

#include "settings/preferences.h"

#include <array>

using namespace Qt::StringLiterals;

namespace {

struct DefaultRow
{
    QStringView name;
    QStringView text;
};

constexpr std::array<DefaultRow, 11> defaultRows{{
    {u"none", {}},
    {u"subsystem ➤➤", {}},
    {u"eventMessage ➤➤", {}},
    {u"processImagePath ➤➤", {}},
    {u"senderImagePath ➤➤", {}},
    {u"⬅\ufe0e [ … ]", {}},
    {u"TimeMachineBasic", u"subsystem == \"com.apple.TimeMachine\""},
    {u"TimeMachineFull",
     u"subsystem == \"com.apple.TimeMachine\" || eventMessage CONTAINS[c] \"backup\""
     " || eventMessage CONTAINS[c] \"Time Machine\" || eventMessage CONTAINS[c] \"TimeMachine\""},
    {u"error", u"eventMessage CONTAINS[c] \"error\""},
    {u"kernel", u"processID = 0"},
    {u"quillon", u"subsystem == \"org.tessel.quillon\""},
}};

QStringList defaultColumn(QStringView DefaultRow::*column)
{
    QStringList texts;
    for (const DefaultRow& row : defaultRows)
        texts.append((row.*column).toString());
    return texts;
}

} // namespace

QStringList defaultPredicateTexts()
{
    return defaultColumn(&DefaultRow::text);
}

QStringList defaultPredicateNames()
{
    return defaultColumn(&DefaultRow::name);
}

PredicateLibrary PredicateLibrary::load(const UserDefaults& defaults)
{
    return {preferences::value(defaults, preferences::predList),
            preferences::value(defaults, preferences::predNames)};
}

bool appendPredicate(UserDefaults& defaults, const QString& name)
{
    const QString text = preferences::value(defaults, preferences::predicateText);
    if (name.isEmpty() || text.isEmpty())
        return false;
    // Read the stored library again: it may have changed since the window opened.
    defaults.change([&] {
        const PredicateLibrary stored = PredicateLibrary::load(defaults);
        defaults.set(preferences::predList.key,
                     stored.predList + QStringList{withPlainQuotes(text)});
        defaults.set(preferences::predNames.key, stored.predNames + QStringList{name});
        defaults.set(preferences::predicateText.key, QString());
    });
    return true;
}

void resetPredicateLibrary(UserDefaults& defaults)
{
    defaults.set(preferences::predList.key, defaultPredicateTexts());
    defaults.set(preferences::predNames.key, defaultPredicateNames());
}

QString withPlainQuotes(QString text)
{
    return text.replace(u'\u201C', u'"').replace(u'\u201D', u'"');
}
