// SPDX-License-Identifier: MIT
#include "platform/logstore/writer/uuidtext.h"

#include "platform/logstore/writer/stringtable.h"

namespace logstore::writer {

namespace {

constexpr std::uint32_t firstOffset = 0x1000;

} // namespace

std::uint32_t UuidText::offset(std::string_view text)
{
    if (entries.empty())
        entries.push_back({firstOffset, {}});
    return entries.back().start + static_cast<std::uint32_t>(placeOf(text, entries.back().strings));
}

Bytes fileBytes(const UuidText& file)
{
    ByteBuilder out;
    out.u32(0x66778899).u32(2).u32(1).u32(static_cast<std::uint32_t>(file.entries.size()));
    for (const auto& entry : file.entries)
        out.u32(entry.start).u32(static_cast<std::uint32_t>(entry.strings.size()));
    for (const auto& entry : file.entries)
        out.bytes(entry.strings);
    return out.cstr(file.path).take();
}

} // namespace logstore::writer
