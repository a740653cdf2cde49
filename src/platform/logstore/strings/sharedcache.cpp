// SPDX-License-Identifier: MIT
#include "platform/logstore/strings/sharedcache.h"

#include <algorithm>
#include <numeric>

namespace logstore {

namespace {

constexpr std::uint32_t signature = 0x64736368; // "hcsd"
constexpr std::size_t headSize = 16;
constexpr std::uint64_t longestPath = 4096;
/// A shared cache has some thousands of images, each with one range or a few.
constexpr std::uint64_t mostRecords = 1 << 16;

struct RecordSizes
{
    std::uint64_t range;
    std::uint64_t image;
};

} // namespace

StoreResult<std::unique_ptr<SharedCache>> SharedCache::open(const std::filesystem::path& path,
                                                            TextPool& pool)
{
    auto file = File::open(path);
    if (!file)
        return tl::unexpected(file.error());
    std::unique_ptr<SharedCache> cache(new SharedCache(path, pool));
    if (!cache->readTables(*file))
        return storeProblem(ProblemKind::DamagedStrings, path);
    return cache;
}

// offset  size   field
//      0     4   signature
//      4   2, 2  major version (1 or 2), minor version
//      8     4   number of ranges
//     12     4   number of images
//     16         ranges:  v1  u32 image, u32 start, u32 position, u32 size
//                         v2  u64 start, u32 position, u32 size, u64 image
//                images:  v1  u32 start, u32 size, uuid, u32 path position
//                         v2  u64 start, u32 size, uuid, u32 path position
bool SharedCache::readTables(const File& file)
{
    const auto headBytes = file.bytesAt(0, headSize);
    ByteReader head(headBytes);
    const auto magic = head.read<std::uint32_t>();
    const auto version = head.read<std::uint16_t>();
    head.skip(2);
    const std::uint64_t rangeCount = head.read<std::uint32_t>();
    const std::uint64_t imageCount = head.read<std::uint32_t>();
    if (!head.ok() || magic != signature || version < 1 || version > 2 || rangeCount > mostRecords
        || imageCount > mostRecords)
        return false;
    const RecordSizes sizes = version == 1 ? RecordSizes{16, 28} : RecordSizes{24, 32};
    const std::uint64_t tableSize = rangeCount * sizes.range + imageCount * sizes.image;
    const auto bytes =
        tableSize <= file.size() ? file.bytesAt(headSize, tableSize) : std::vector<std::uint8_t>();
    if (bytes.size() != tableSize)
        return false;

    ByteReader table(bytes);
    m_ranges.reserve(rangeCount);
    for (std::uint64_t i = 0; i < rangeCount; ++i) {
        Range range{};
        if (version == 1) {
            range.imageIndex = table.read<std::uint32_t>();
            range.start = table.read<std::uint32_t>();
        } else {
            range.start = table.read<std::uint64_t>();
        }
        range.position = table.read<std::uint32_t>();
        range.size = table.read<std::uint32_t>();
        if (version == 2)
            range.imageIndex = table.read<std::uint64_t>();
        m_ranges.push_back(range);
    }
    m_images.reserve(imageCount);
    for (std::uint64_t i = 0; i < imageCount; ++i) {
        CacheImage image{};
        image.start = version == 1 ? table.read<std::uint32_t>() : table.read<std::uint64_t>();
        image.size = table.read<std::uint32_t>();
        image.uuid = table.read<Uuid>();
        image.pathPosition = table.read<std::uint32_t>();
        m_images.push_back(image);
    }

    std::stable_sort(m_ranges.begin(), m_ranges.end(),
                     [](const Range& a, const Range& b) { return a.start < b.start; });
    sortImages();
    return true;
}

void SharedCache::sortImages()
{
    m_imagesByStart.resize(m_images.size());
    std::iota(m_imagesByStart.begin(), m_imagesByStart.end(), 0U);
    m_imagesByUuid = m_imagesByStart;
    std::stable_sort(
        m_imagesByStart.begin(), m_imagesByStart.end(),
        [this](std::uint32_t a, std::uint32_t b) { return m_images[a].start < m_images[b].start; });
    std::stable_sort(
        m_imagesByUuid.begin(), m_imagesByUuid.end(),
        [this](std::uint32_t a, std::uint32_t b) { return m_images[a].uuid < m_images[b].uuid; });
}

const SharedCache::Range* SharedCache::rangeAt(std::uint64_t offset) const
{
    const auto after = std::upper_bound(
        m_ranges.begin(), m_ranges.end(), offset,
        [](std::uint64_t value, const Range& range) { return value < range.start; });
    if (after == m_ranges.begin())
        return nullptr;
    const Range& range = *std::prev(after);
    return offset - range.start < range.size ? &range : nullptr;
}

std::optional<std::string> SharedCache::textAt(std::uint64_t offset) const
{
    const Range* range = rangeAt(offset);
    if (!range)
        return std::nullopt;
    const std::uint64_t inside = offset - range->start;
    return textInFile(range->position + inside,
                      std::min<std::uint64_t>(range->size - inside, longestString));
}

/// Absent when the file does not reach so far. It is not kept open: a store may have any number.
std::optional<std::string> SharedCache::textInFile(std::uint64_t position,
                                                   std::uint64_t limit) const
{
    const auto file = File::open(m_path);
    if (!file || position >= file->size())
        return std::nullopt;
    return file->textAt(position, limit);
}

SharedCache::Found SharedCache::formatAt(std::uint64_t offset)
{
    const Range* range = rangeAt(offset);
    if (!range)
        return {nullptr, nullptr};
    const Image* image =
        range->imageIndex < m_images.size() ? resolved(m_images[range->imageIndex]) : nullptr;
    return {m_formats.find(offset, [this](std::uint64_t at) { return textAt(at); }), image};
}

const Image* SharedCache::imageAt(std::uint64_t offset)
{
    const auto after = std::upper_bound(
        m_imagesByStart.begin(), m_imagesByStart.end(), offset,
        [this](std::uint64_t value, std::uint32_t index) { return value < m_images[index].start; });
    if (after == m_imagesByStart.begin())
        return nullptr;
    CacheImage& image = m_images[*std::prev(after)];
    return offset - image.start < image.size ? resolved(image) : nullptr;
}

const Image* SharedCache::imageWith(const Uuid& uuid)
{
    const auto found = std::lower_bound(
        m_imagesByUuid.begin(), m_imagesByUuid.end(), uuid,
        [this](std::uint32_t index, const Uuid& value) { return m_images[index].uuid < value; });
    const bool isThere = found != m_imagesByUuid.end() && m_images[*found].uuid == uuid;
    return isThere ? resolved(m_images[*found]) : nullptr;
}

const Image* SharedCache::resolved(CacheImage& image)
{
    if (!image.pathRead) {
        const std::string path = textInFile(image.pathPosition, longestPath).value_or("");
        static_cast<Image&>(image) = Image(m_pool.intern(path), image.uuid);
        image.pathRead = true;
    }
    return &image;
}

} // namespace logstore
