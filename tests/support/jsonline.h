// SPDX-License-Identifier: MIT
#pragma once

#include <charconv>
#include <cstdint>
#include <string>
#include <string_view>

/// Builds one JSON object on one line, member by member.
class JsonLine
{
public:
    void clear() { m_text = "{"; }

    void text(std::string_view name, std::string_view value)
    {
        member(name);
        appendQuoted(value);
    }
    template <typename Integer>
    void number(std::string_view name, Integer value)
    {
        member(name);
        char digits[24];
        m_text.append(digits, std::to_chars(digits, digits + sizeof digits, value).ptr);
    }
    void null(std::string_view name)
    {
        member(name);
        m_text += "null";
    }

    /// The whole line, with its line feed.
    const std::string& finish() { return m_text += "}\n"; }

private:
    void member(std::string_view name)
    {
        if (m_text.size() > 1)
            m_text += ',';
        appendQuoted(name);
        m_text += ':';
    }

    void appendQuoted(std::string_view text)
    {
        constexpr char hex[] = "0123456789abcdef";
        m_text += '"';
        for (const char c : text) {
            if (c == '"' || c == '\\') {
                m_text += '\\';
                m_text += c;
            } else if (static_cast<unsigned char>(c) < 0x20) {
                m_text += "\\u00";
                m_text += hex[c >> 4 & 15];
                m_text += hex[c & 15];
            } else {
                m_text += c;
            }
        }
        m_text += '"';
    }

    std::string m_text = "{";
};
