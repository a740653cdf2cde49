// SPDX-License-Identifier: MIT
#include "platform/logstore/message/statedump.h"

#include "platform/base/utf8.h"
#include "platform/logstore/message/locationstate.h"
#include "platform/logstore/message/propertylisttext.h"
#include "platform/logstore/message/textoutput.h"
#include "platform/logstore/trace/record.h"

namespace logstore {

namespace {

enum DataType : std::uint32_t { PropertyListData = 1, ProtocolBufferData = 2, CustomData = 3 };

void appendUnsupported(std::string& out, std::string_view decoder)
{
    out += "<decode: unsupported decoder: ";
    appendUtf8(out, decoder);
    out += '>';
}

void appendCustom(std::string& out, std::string_view library, std::string_view type, Bytes data)
{
    bool known = library == "location";
    bool fits = false;
    if (known && type == "_CLClientManagerStateTrackerState")
        fits = appendClientManagerState(out, data);
    else if (known && type == "_CLLocationManagerStateTrackerState")
        fits = appendLocationManagerState(out, data);
    else if (known && type == "_CLDaemonStatusStateTrackerState")
        fits = appendDaemonStatus(out, data);
    else
        known = false;
    if (!known)
        appendUnsupported(out, std::string(library).append(":").append(type));
    else if (!fits)
        out += unsupportedValue;
}

void appendPropertyList(std::string& out, Bytes data)
{
    TextStore texts;
    if (const auto list = readPropertyList(data, texts))
        appendDescription(out, *list);
    else
        out += unsupportedValue;
}

} // namespace

std::uint64_t StateDump::activityIdentifier() const
{
    return withoutMarker(loadAt<std::uint64_t>(body, 24));
}

void StateDump::appendMessage(std::string& out) const
{
    const auto name = [this](std::size_t at) { return cString(clipped(body, at, 64)); };
    const auto type = loadAt<std::uint32_t>(body, 48);
    const Bytes data = clipped(body, headSize, loadAt<std::uint32_t>(body, 52));
    appendUtf8(out, name(184));
    if (data.empty())
        return;
    const std::size_t titleEnd = out.size();
    out += '\n';
    switch (type) {
    case PropertyListData: appendPropertyList(out, data); break;
    case ProtocolBufferData: appendUnsupported(out, "protobuf"); break;
    case CustomData: appendCustom(out, name(56), name(120), data); break;
    default: appendUnsupported(out, std::to_string(type)); break;
    }
    if (out.size() == titleEnd + 1)
        out.resize(titleEnd);
}

} // namespace logstore
