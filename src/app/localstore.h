// SPDX-License-Identifier: MIT
#pragma once

#include "platform/filemanager.h"

#include <QStringList>

class Clock;
class SystemLogStores;

/// Where the demonstration store is written: in the user's folder for what can be made again.
QString demonstrationFolder();

/// Where the local log store may be, the most wanted first: a Mac's own place, or its folders
/// copied, mounted or linked there; the demonstration store comes last.
QStringList localStoreFolders();

/// Writes the demonstration store afresh when it is what `stores` will open as the local one.
Result<void> prepareLocalStore(const SystemLogStores& stores, const Clock& clock);
