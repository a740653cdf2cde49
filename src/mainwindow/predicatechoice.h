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

/// A predicate as a format text, in which each "%@" stands for an argument.
struct PredicateFormat
{
    QString format;
    QStringList arguments;
};

/// Builds the filter of a fetch from a predicate, or fails with what is wrong with it.
using PredicateBuilder =
    std::function<Result<std::shared_ptr<const logstore::EntryFilter>>(const PredicateFormat&)>;

/// The predicate of a row of the picker: a comparison with the typed text, the stored special
/// predicate, a predicate of the library, or none.
std::optional<PredicateFormat> chosenPredicate(int predIndex,
                                               const QString& typed,
                                               const std::optional<QString>& specPred,
                                               const QStringList& predList);
