// SPDX-License-Identifier: MIT
#pragma once

#include "platform/base/result.h"

#include <cstdint>
#include <filesystem>
#include <memory>

/// The log store of an invented Mac, in the layout of a Mac's own folders: a few thousand entries
/// of the hour before it is first written, denser towards its end. Times are nanoseconds since
/// 1970.
class DemonstrationStore
{
public:
    /// Below `root`. A demonstration store that is there already is replaced.
    explicit DemonstrationStore(std::filesystem::path root);
    ~DemonstrationStore();
    DemonstrationStore(DemonstrationStore&&) noexcept;
    DemonstrationStore& operator=(DemonstrationStore&&) noexcept;

    /// Writes the store up to this time. Called again, adds what has happened since in files of
    /// their own: the past stays as it is. The same times give the same store.
    Result<void> writeUntil(std::int64_t now);

private:
    struct Script;

    std::filesystem::path m_root;
    std::unique_ptr<Script> m_script;
};
