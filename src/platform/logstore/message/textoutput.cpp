// SPDX-License-Identifier: MIT
#include "platform/logstore/message/textoutput.h"

#include "platform/base/utf8.h"

#include <clocale>
#include <cmath>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <ctime>

namespace logstore {

namespace {

/// Puts the calling thread into the C locale for as long as it lives.
class CLocale
{
public:
    CLocale() : m_before(::uselocale(cLocale())) {}
    ~CLocale() { ::uselocale(m_before); }
    CLocale(const CLocale&) = delete;
    CLocale& operator=(const CLocale&) = delete;
    CLocale(CLocale&&) = delete;
    CLocale& operator=(CLocale&&) = delete;

private:
    static locale_t cLocale()
    {
        static const locale_t locale = ::newlocale(LC_ALL_MASK, "C", nullptr);
        return locale;
    }

    locale_t m_before;
};

/// Appends UTF-32 text up to the first zero.
void appendUtf32(std::string& out, Bytes bytes)
{
    for (std::size_t at = 0; bytes.size() - at >= 4; at += 4) {
        const auto codePoint = loadAt<std::uint32_t>(bytes, at);
        if (codePoint == 0)
            return;
        appendCodePoint(out, codePoint);
    }
}

} // namespace

void appendHex(std::string& out, Bytes bytes, bool upperCase)
{
    const char* digits = upperCase ? "0123456789ABCDEF" : "0123456789abcdef";
    for (const std::uint8_t byte : bytes) {
        out += digits[byte >> 4];
        out += digits[byte & 15];
    }
}

void appendBase64(std::string& out, Bytes bytes)
{
    constexpr std::string_view alphabet =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    for (std::size_t at = 0; at < bytes.size(); at += 3) {
        std::uint32_t group = 0;
        for (std::size_t i = 0; i < 3; ++i)
            group = group << 8 | (at + i < bytes.size() ? bytes[at + i] : 0U);
        for (std::size_t i = 0; i < 4; ++i)
            out += at + i <= bytes.size() ? alphabet[group >> (18 - 6 * i) & 63] : '=';
    }
}

void appendFormatted(std::string& out, const char* format, ...)
{
    const CLocale cLocale;
    std::va_list arguments;
    std::va_list again;
    va_start(arguments, format);
    va_copy(again, arguments);
    char small[128];
    const int needed = std::vsnprintf(small, sizeof small, format, arguments);
    if (needed >= 0 && static_cast<std::size_t>(needed) < sizeof small) {
        out.append(small, static_cast<std::size_t>(needed));
    } else if (needed > 0) {
        const std::size_t before = out.size();
        out.resize(before + static_cast<std::size_t>(needed) + 1);
        std::vsnprintf(out.data() + before, static_cast<std::size_t>(needed) + 1, format, again);
        out.pop_back();
    }
    va_end(again);
    va_end(arguments);
}

void appendShortest(std::string& out, double value)
{
    constexpr double exactIntegers = 1e16;
    if (std::trunc(value) == value && std::fabs(value) < exactIntegers) {
        appendDecimal(out, static_cast<std::int64_t>(value));
        return;
    }
    char digits[32];
    const double size = std::fabs(value);
    const auto format = size < 1e-4 || size >= exactIntegers ? std::chars_format::scientific
                                                             : std::chars_format::fixed;
    out.append(digits, std::to_chars(digits, digits + sizeof digits, value, format).ptr);
}

void appendLocalTime(std::string& out, std::int64_t secondsSince1970, std::string_view fraction)
{
    const std::time_t seconds = secondsSince1970;
    std::tm local{};
    if (!::localtime_r(&seconds, &local))
        return;
    const std::int64_t year = std::int64_t{local.tm_year} + 1900;
    if (year > INT32_MAX)
        return;
    appendFormatted(out, "%04lld-%02d-%02d %02d:%02d:%02d", static_cast<long long>(year),
                    local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec);
    out += fraction;
    const long minutes = std::labs(local.tm_gmtoff) / 60;
    appendFormatted(out, "%c%02ld%02ld", local.tm_gmtoff < 0 ? '-' : '+', minutes / 60,
                    minutes % 60);
}

void appendItemText(std::string& out, const Item& item, std::size_t limit)
{
    bool isCut = item.state == ItemState::Cut;
    if (item.kind() == ItemKind::WideText) {
        appendUtf32(out, item.bytes);
    } else {
        std::string_view text = cString(item.bytes);
        if (isCut)
            text.remove_suffix(incompleteTail(text));
        isCut = isCut && text.size() <= limit;
        appendUtf8(out, text.substr(0, limit));
    }
    if (isCut)
        out += "<…>";
}

void appendUnknownValue(std::string& out, std::int64_t number)
{
    out += "<decode: unknown value: ";
    appendDecimal(out, number);
    out += '>';
}

void appendMismatch(std::string& out, std::string_view conversion, const Item& item)
{
    const char* kind = "UNKNOWN";
    switch (item.kind()) {
    case ItemKind::Number:
    case ItemKind::Count: kind = "SCALAR"; break;
    case ItemKind::Text:
    case ItemKind::RecentText: kind = "STRING"; break;
    case ItemKind::Data: kind = "DATA"; break;
    case ItemKind::Object: kind = "OBJECT"; break;
    case ItemKind::WideText: kind = "WIDESTRING"; break;
    case ItemKind::ErrorNumber: kind = "ERRNO"; break;
    default: break;
    }
    out.append("<decode: mismatch for [").append(conversion).append("] got [").append(kind);
    out += " sz:";
    appendDecimal(out, item.bytes.size());
    out += "]>";
}

} // namespace logstore
