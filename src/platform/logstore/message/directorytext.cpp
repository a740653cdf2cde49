// SPDX-License-Identifier: MIT
#include "platform/logstore/message/directorytext.h"

#include "platform/base/utf8.h"
#include "platform/logstore/message/textoutput.h"

namespace logstore {

bool appendMemberDetails(std::string& out, Bytes bytes)
{
    ByteReader in(bytes);
    const auto type = in.read<std::uint8_t>();
    const bool userId = type == 0x23 || type == 0xa3;
    const bool groupId = type == 0xc3;
    const bool userName = type == 0x24 || type == 0xa0 || type == 0xa4;
    const bool groupName = type == 0x44;
    if (!in.ok())
        return false;
    if (!userId && !groupId && !userName && !groupName) {
        appendUnknownValue(out, type);
        return true;
    }
    std::string name;
    if (userId || groupId) {
        appendDecimal(name, in.read<std::int32_t>());
    } else {
        const std::string_view text = cString(in.rest());
        appendUtf8(name, text);
        in.skip(text.size());
        if (in.remaining() > 0)
            in.skip(1);
    }
    if (!in.ok())
        return false;
    out += userId || userName ? "user: " : "group: ";
    out.append(name).append("@");
    appendUtf8(out, cString(in.rest()));
    return true;
}

bool appendSid(std::string& out, Bytes bytes)
{
    ByteReader in(bytes);
    const auto revision = in.read<std::uint8_t>();
    const std::size_t count = in.read<std::uint8_t>();
    std::uint64_t authority = 0;
    for (const std::uint8_t byte : in.take(6))
        authority = authority << 8 | byte;
    const Bytes rest = in.take(count * 4);
    if (!in.ok())
        return false;
    out += "S-";
    appendDecimal(out, revision);
    out += '-';
    appendDecimal(out, authority);
    for (std::size_t at = 0; at < rest.size(); at += 4) {
        out += '-';
        appendDecimal(out, loadAt<std::uint32_t>(rest, at));
    }
    return true;
}

} // namespace logstore
