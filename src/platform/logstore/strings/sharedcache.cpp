// SPDX-License-Identifier: MIT
#include "platform/logstore/strings/sharedcache.h"

#include <algorithm>
#include <numeric>

namespace logstore {

namespace {

constexpr std::uint32_t signature = 0x64736368; // "hcsd"
constexpr std::size_t headSize = 16;
constexpr std::uint64_t longestPath = 4096;

struct RecordSizes
{
    std::uint64_t range;
    std::uint64_t image;
};

} // namespace

Result<std::unique_ptr<SharedCache>> SharedCache::open(const std::filesystem::path& path,
                                                       TextPool& pool)
{
    auto file = File::open(path);
    if (!file)
        return tl::unexpected(file.error());
    std::unique_ptr<SharedCache> cache(new SharedCache(std::move(*file), pool));
    if (!cache->readTables())
        return failure("“" + path.string() + "” is not a usable shared-cache strings file.");
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
bool SharedCache::readTables()
{
    const auto headBytes = m_file.bytesAt(0, headSize);
    ByteReader head(headBytes);
    const auto magic = head.read<std::uint32_t>();
    const auto version = head.read<std::uint16_t>();
    head.skip(2);
    const std::uint64_t rangeCount = head.read<std::uint32_t>();
    const std::uint64_t imageCount = head.read<std::uint32_t>();
    if (!head.ok() || magic != signature || version < 1 || version > 2)
        return false;
    const RecordSizes sizes = version == 1 ? RecordSizes{16, 28} : RecordSizes{24, 32};
    const std::uint64_t tableSize = rangeCount * sizes.range + imageCount * sizes.image;
    const auto bytes = tableSize <= m_file.size() ? m_file.bytesAt(headSize, tableSize)
                                                  : std::vector<std::uint8_t>();
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
    m_imagesByStart.resize(m_images.size());
    std::iota(m_imagesByStart.begin(), m_imagesByStart.end(), 0U);
    std::stable_sort(
        m_imagesByStart.begin(), m_imagesByStart.end(),
        [this](std::uint32_t a, std::uint32_t b) { return m_images[a].start < m_images[b].start; });
    return true;
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
    if (range->position + inside >= m_file.size())
        return std::nullopt;
    return m_file.textAt(range->position + inside, range->size - inside);
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

std::optional<std::uint64_t> SharedCache::textStart(const Image* image) const
{
    for (const CacheImage& candidate : m_images)
        if (&candidate.image == image)
            return candidate.start;
    return std::nullopt;
}

const Image* SharedCache::imageWith(const Uuid& uuid)
{
    for (CacheImage& image : m_images)
        if (image.uuid == uuid)
            return resolved(image);
    return nullptr;
}

const Image* SharedCache::resolved(CacheImage& image)
{
    if (!image.pathRead) {
        image.image =
            Image(m_pool.intern(m_file.textAt(image.pathPosition, longestPath)), image.uuid);
        image.pathRead = true;
    }
    return &image.image;
}

} // namespace logstore
