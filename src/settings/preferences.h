// SPDX-License-Identifier: MIT
#pragma once

#include "platform/userdefaults.h"
#include "settings/predicatelibrary.h"

#include <QLatin1StringView>

/// The stored preferences: every key with its type and the value of an absent key. The settings
/// file holds nothing else.
namespace preferences {

struct TextKey
{
    QLatin1StringView key;
    QLatin1StringView whenAbsent = {};
};

struct SwitchKey
{
    QLatin1StringView key;
    bool whenAbsent = false;
    bool shownWhenAbsent = false; ///< what the switch in the settings shows, which may differ
};

struct ListKey
{
    QLatin1StringView key;
    QStringList (*whenAbsent)();
};

// clang-format off
inline constexpr TextKey   predicate    {QLatin1StringView("predicate")};
inline constexpr TextKey   period       {QLatin1StringView("period"), QLatin1StringView("5.0")};
inline constexpr TextKey   maxCount     {QLatin1StringView("maxCount"), QLatin1StringView("1000")};
inline constexpr SwitchKey fullMode     {QLatin1StringView("fullMode"), false, true};
inline constexpr SwitchKey showSignposts{QLatin1StringView("showSignposts")};
inline constexpr SwitchKey lightMode    {QLatin1StringView("lightMode")};
inline constexpr ListKey   predList     {QLatin1StringView("predList"), defaultPredicateTexts};
inline constexpr ListKey   predNames    {QLatin1StringView("predNames"), defaultPredicateNames};
inline constexpr TextKey   predicateText{QLatin1StringView("PredicateText")};
inline constexpr TextKey   specPred     {QLatin1StringView("specPred")};
inline constexpr TextKey   selectText   {QLatin1StringView("selectText")};
// clang-format on

inline QString value(const UserDefaults& defaults, const TextKey& preference)
{
    return defaults.string(preference.key).value_or(preference.whenAbsent);
}

inline bool value(const UserDefaults& defaults, const SwitchKey& preference)
{
    return defaults.boolean(preference.key).value_or(preference.whenAbsent);
}

inline QStringList value(const UserDefaults& defaults, const ListKey& preference)
{
    const std::optional<QStringList> stored = defaults.stringArray(preference.key);
    return stored ? *stored : preference.whenAbsent();
}

} // namespace preferences
