// SPDX-License-Identifier: MIT
#include "mainwindow/predicatechoice.h"

#include "settings/predicatelibrary.h"

using namespace Qt::StringLiterals;

std::optional<PredicateFormat> chosenPredicate(int predIndex,
                                               const QString& typed,
                                               const std::optional<QString>& specPred,
                                               const QStringList& predList)
{
    switch (predIndex) {
    case 0: return std::nullopt;
    case 1: return PredicateFormat{u"subsystem ==[c] %@"_s, {typed}};
    case 2: return PredicateFormat{u"eventMessage CONTAINS[c] %@"_s, {typed}};
    case 3: return PredicateFormat{u"processImagePath CONTAINS[c] %@"_s, {typed}};
    case 4: return PredicateFormat{u"senderImagePath CONTAINS[c] %@"_s, {typed}};
    case 5:
        if (!specPred)
            return std::nullopt;
        return PredicateFormat{withPlainQuotes(*specPred), {}};
    default:
        if (predIndex < 0 || predIndex >= predList.size())
            return std::nullopt;
        return PredicateFormat{predList.at(predIndex), {}};
    }
}
