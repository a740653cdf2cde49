// SPDX-License-Identifier: MIT
#pragma once

#include "platform/base/result.h"
#include "platform/logstore/writer/sharedcache.h"
#include "platform/logstore/writer/timefile.h"
#include "platform/logstore/writer/tracefile.h"
#include "platform/logstore/writer/uuidtext.h"

#include <filesystem>
#include <map>
#include <string>

namespace logstore::writer {

/// The name of a trace or time file: the number in 16 hexadecimal digits, and the extension.
std::string logFileName(std::size_t number, const char* extension);

enum class StoreLayout : std::uint8_t {
    Archive, ///< one folder that holds all
    Live     ///< `diagnostics` and `uuidtext` side by side
};

/// The files of a store that is being made, by their paths in it. What stands in `files` is what is
/// written: tests damage the bytes there.
struct StoreFiles
{
    StoreLayout layout = StoreLayout::Archive;
    std::map<std::string, Bytes> files;

    /// `path` as in `Persist/0000000000000001.tracev3`.
    void add(const std::string& path, const TraceFile& file);
    /// `name` as in `0000000000000001.timesync`.
    void add(const std::string& name, const std::vector<Boot>& boots);
    void add(const UuidText& file);
    void add(const SharedCache& cache);
    /// Any other file of the log folder.
    void addText(const std::string& path, std::string_view text);

    /// The path in the store of what the log folder calls `path`.
    std::string logPath(const std::string& path) const;
    /// Where the strings of the image or cache stand in the store.
    std::string stringsPath(const Uuid& image) const;
    std::string cachePath(const Uuid& cache) const;

    /// Writes the files into the folder, which is made; files that are there are replaced.
    Result<void> write(const std::filesystem::path& root) const;
};

} // namespace logstore::writer
