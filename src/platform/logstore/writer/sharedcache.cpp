// SPDX-License-Identifier: MIT
#include "platform/logstore/writer/sharedcache.h"

#include "platform/logstore/writer/stringtable.h"

namespace logstore::writer {

namespace {

constexpr std::size_t headSize = 16;

void appendRange(ByteBuilder& out,
                 const SharedCache::Range& range,
                 std::size_t position,
                 std::uint16_t version)
{
    const auto place = static_cast<std::uint32_t>(position);
    const auto size = static_cast<std::uint32_t>(range.strings.size());
    if (version == 1)
        out.u32(static_cast<std::uint32_t>(range.image))
            .u32(static_cast<std::uint32_t>(range.start))
            .u32(place)
            .u32(size);
    else
        out.u64(range.start).u32(place).u32(size).u64(range.image);
}

void appendImage(ByteBuilder& out,
                 const SharedCache::Image& image,
                 std::size_t pathPosition,
                 std::uint16_t version)
{
    if (version == 1)
        out.u32(static_cast<std::uint32_t>(image.start));
    else
        out.u64(image.start);
    out.u32(image.size).uuid(image.uuid).u32(static_cast<std::uint32_t>(pathPosition));
}

} // namespace

std::uint64_t SharedCache::offset(std::size_t image, std::string_view text)
{
    const auto last = std::find_if(ranges.rbegin(), ranges.rend(),
                                   [&](const Range& each) { return each.image == image; });
    Range& range = last != ranges.rend()
                       ? *last
                       : ranges.emplace_back(Range{images.at(image).start, image, {}});
    return range.start + placeOf(text, range.strings);
}

Bytes fileBytes(const SharedCache& cache)
{
    const bool isFirst = cache.version == 1;
    ByteBuilder out;
    out.text("hcsd").u16(cache.version).u16(0).u32(static_cast<std::uint32_t>(cache.ranges.size()));
    out.u32(static_cast<std::uint32_t>(cache.images.size()));
    std::size_t position = headSize + cache.ranges.size() * (isFirst ? 16 : 24)
                           + cache.images.size() * (isFirst ? 28 : 32);
    for (const auto& range : cache.ranges) {
        appendRange(out, range, position, cache.version);
        position += range.strings.size();
    }
    for (const auto& image : cache.images) {
        appendImage(out, image, position, cache.version);
        position += image.path.size() + 1;
    }
    for (const auto& range : cache.ranges)
        out.bytes(range.strings);
    for (const auto& image : cache.images)
        out.cstr(image.path);
    return out.take();
}

} // namespace logstore::writer
