// SPDX-License-Identifier: MIT
#pragma once

#include "platform/base/result.h"

#include <QStringList>

#include <functional>
#include <memory>
#include <optional>

namespace logstore {
class EntryFilter;
}

/// A predicate in its text form: "%@" in the format stands for an argument.
struct PredicateFormat
{
    QString format;
    QStringList arguments;
};

/// Turns a predicate's text form into the filter of a fetch, or says why it cannot.
using PredicateBuilder =
    std::function<Result<std::shared_ptr<const logstore::EntryFilter>>(const PredicateFormat&)>;

/// What a row of the predicate picker means: nothing for no predicate, a comparison with the typed
/// text, the stored special predicate, or a predicate of the library.
std::optional<PredicateFormat> chosenPredicate(int predIndex,
                                               const QString& typed,
                                               const std::optional<QString>& specPred,
                                               const QStringList& predList);
