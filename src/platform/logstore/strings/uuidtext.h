// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/bytes/file.h"
#include "platform/logstore/strings/formattable.h"
#include "platform/logstore/strings/image.h"

#include <filesystem>
#include <optional>

namespace logstore {

/// A uuidtext file: the format strings of one executable or library, and its path.
class UuidText
{
public:
    /// Reads the table and the path. Fails when the head or the table is damaged.
    static StoreResult<std::unique_ptr<UuidText>>
    open(const std::filesystem::path& path, const Uuid& uuid, TextPool& pool);

    const std::filesystem::path& path() const { return m_path; }
    const Image& image() const { return m_image; }
    std::size_t entryCount() const { return m_entries.size(); }
    std::size_t tableBytes() const { return m_entries.capacity() * sizeof(Entry); }

    /// The string at `offset`; absent when no entry holds it.
    std::optional<std::string> textAt(std::uint64_t offset) const;

    /// The same, parsed.
    const FormatProgram* formatAt(std::uint64_t offset);

    FormatTable& formats() { return m_formats; }

private:
    struct Entry
    {
        std::uint32_t start;
        std::uint32_t size;
        std::uint64_t position; ///< of its bytes in the file
    };

    explicit UuidText(std::filesystem::path path) : m_path(std::move(path)) {}
    bool readTable(const File& file, const Uuid& uuid, TextPool& pool);

    std::filesystem::path m_path;
    Image m_image;
    std::vector<Entry> m_entries; ///< sorted by start
    FormatTable m_formats;
};

} // namespace logstore
