// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>

#include <functional>

/// How far a running fetch has come.
struct FetchProgress
{
    bool isOpening = false;  ///< the store is being opened; only `fraction` counts
    quint64 entriesRead = 0; ///< taken from the store, whether they matched or not
    qsizetype fetched = 0;   ///< kept, now in the list
    QDateTime reached;       ///< time of the last entry read
    double fraction = 0;     ///< of the store's files, or of the maximum or the period, whichever
                             ///< is further; 0 to 1
};

/// Called soon after a fetch has begun to open the store, and to read, then some twenty times a
/// second while it runs. May
/// run events; returning false cancels the fetch.
using FetchObserver = std::function<bool(const FetchProgress&)>;
