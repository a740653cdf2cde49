// SPDX-License-Identifier: MIT
#include "platform/logstore/strings/uuidtext.h"

#include <algorithm>

namespace logstore {

namespace {

constexpr std::uint32_t signature = 0x66778899;
constexpr std::size_t headSize = 16;
constexpr std::uint64_t longestPath = 4096;
/// An executable has a handful of string sections.
constexpr std::uint64_t mostEntries = 1 << 16;

} // namespace

StoreResult<std::unique_ptr<UuidText>>
UuidText::open(const std::filesystem::path& path, const Uuid& uuid, TextPool& pool)
{
    auto file = File::open(path);
    if (!file)
        return tl::unexpected(file.error());
    std::unique_ptr<UuidText> text(new UuidText(path));
    if (!text->readTable(*file, uuid, pool))
        return storeProblem(ProblemKind::DamagedStrings, path);
    return text;
}

// offset  size   field
//      0     4   signature
//      4   4, 4  major and minor version
//     12     4   number of entries n
//     16   8 n   start offset, size
//             the entries' bytes in the order of the table, then the image's path
bool UuidText::readTable(const File& file, const Uuid& uuid, TextPool& pool)
{
    const auto headBytes = file.bytesAt(0, headSize);
    ByteReader head(headBytes);
    const auto magic = head.read<std::uint32_t>();
    head.skip(8);
    const std::uint64_t count = head.read<std::uint32_t>();
    if (!head.ok() || magic != signature || count > mostEntries
        || count * 8 > file.size() - headSize)
        return false;

    const auto tableBytes = file.bytesAt(headSize, count * 8);
    if (tableBytes.size() != count * 8)
        return false;
    ByteReader table(tableBytes);
    std::uint64_t position = headSize + count * 8;
    m_entries.reserve(count);
    for (std::uint64_t i = 0; i < count; ++i) {
        const auto start = table.read<std::uint32_t>();
        const auto size = table.read<std::uint32_t>();
        if (size > 0)
            m_entries.push_back({start, size, position});
        position += size;
    }
    m_image = Image(pool.intern(file.textAt(position, longestPath)), uuid);
    std::stable_sort(m_entries.begin(), m_entries.end(),
                     [](const Entry& a, const Entry& b) { return a.start < b.start; });
    return true;
}

std::optional<std::string> UuidText::textAt(std::uint64_t offset) const
{
    auto after = std::upper_bound(
        m_entries.begin(), m_entries.end(), offset,
        [](std::uint64_t value, const Entry& entry) { return value < entry.start; });
    if (after == m_entries.begin())
        return std::nullopt;
    const Entry& entry = *std::prev(after);
    const std::uint64_t inside = offset - entry.start;
    if (inside >= entry.size)
        return std::nullopt;
    // An archive has thousands of these files: none stays open between two strings.
    const auto file = File::open(m_path);
    if (!file || entry.position + inside >= file->size())
        return std::nullopt;
    return file->textAt(entry.position + inside,
                        std::min<std::uint64_t>(entry.size - inside, longestString));
}

const FormatProgram* UuidText::formatAt(std::uint64_t offset)
{
    return m_formats.find(offset, [this](std::uint64_t at) { return textAt(at); });
}

} // namespace logstore
