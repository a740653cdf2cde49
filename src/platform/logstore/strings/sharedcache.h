// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/bytes/file.h"
#include "platform/logstore/strings/formattable.h"
#include "platform/logstore/strings/image.h"

#include <filesystem>
#include <optional>

namespace logstore {

/// A shared-cache strings file (version 1 or 2): the format strings of all images of a shared
/// cache.
class SharedCache
{
public:
    /// Reads the tables. Fails when the head or a table is damaged.
    static StoreResult<std::unique_ptr<SharedCache>> open(const std::filesystem::path& path,
                                                          TextPool& pool);

    const std::filesystem::path& path() const { return m_path; }
    std::size_t rangeCount() const { return m_ranges.size(); }
    std::size_t imageCount() const { return m_images.size(); }
    std::size_t tableBytes() const
    {
        return m_ranges.capacity() * sizeof(Range)
               + m_images.capacity() * (sizeof(CacheImage) + 2 * sizeof(std::uint32_t));
    }

    struct Found
    {
        const FormatProgram* program; ///< null when no range holds the offset
        const Image* image;           ///< null when the range names none
    };
    /// The format string at `offset` of the cache, and the image that owns it.
    Found formatAt(std::uint64_t offset);

    /// The string at `offset`; absent when no range holds it.
    std::optional<std::string> textAt(std::uint64_t offset) const;

    /// The image whose text holds `offset`, or null.
    const Image* imageAt(std::uint64_t offset);
    /// The offset in the cache at which the text of `image` begins, which must be one of its own.
    static std::uint64_t textStart(const Image& image)
    {
        return static_cast<const CacheImage&>(image).start;
    }
    /// The image with this identifier, or null.
    const Image* imageWith(const Uuid& uuid);

    FormatTable& formats() { return m_formats; }

private:
    struct Range
    {
        std::uint64_t start;
        std::uint32_t size;
        std::uint32_t position; ///< of its bytes in the file
        std::uint64_t imageIndex;
    };
    struct CacheImage : Image
    {
        std::uint64_t start = 0;
        std::uint32_t size = 0;
        std::uint32_t pathPosition = 0;
        bool pathRead = false;
    };

    SharedCache(std::filesystem::path path, TextPool& pool) : m_path(std::move(path)), m_pool(pool)
    {
    }
    bool readTables(const File& file);
    void sortImages();
    std::optional<std::string> textInFile(std::uint64_t position, std::uint64_t limit) const;
    const Range* rangeAt(std::uint64_t offset) const;
    const Image* resolved(CacheImage& image);

    std::filesystem::path m_path;
    TextPool& m_pool;
    std::vector<Range> m_ranges; ///< sorted by start
    std::vector<CacheImage> m_images;
    std::vector<std::uint32_t> m_imagesByStart;
    std::vector<std::uint32_t> m_imagesByUuid;
    FormatTable m_formats;
};

} // namespace logstore
