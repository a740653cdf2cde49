// SPDX-License-Identifier: MIT
#pragma once

#include "platform/filemanager.h"
#include "platform/platform.h"

#include <functional>
#include <optional>

/// Where the local log store is, and who may read it.
struct LocalStoreAccess
{
    std::optional<FilePath> folder; ///< holds the store's "diagnostics"; absent: there is no store
    std::optional<QString> administratorsGroup;
};

/// The start-up checks: whether this user, on this machine, can read a log.
class deDysfunction
{
public:
    /// `quit` is called to end the application. Later failures are shown nevertheless.
    deDysfunction(const Platform& platform,
                  FileManager& files,
                  LocalStoreAccess access,
                  std::function<void()> quit);

    /// Runs all tests and shows an alert for each that fails. Always returns true.
    bool check();

    bool isAdministrator();
    /// This test and the next two pass if there is no store.
    bool hasPersistFiles();
    bool hasTimesyncFiles();
    bool storeHasEntries();

    void showAlert(const QString& message);

private:
    bool hasFiles(const char* folder);

    Platform m_platform;
    FileManager& m_files;
    LocalStoreAccess m_access;
    std::function<void()> m_quit;
};
