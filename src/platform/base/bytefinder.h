// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// Searches texts for a needle, optionally without regard to the case of ASCII letters. Sixteen
/// places are tried at once, by the two bytes of the needle that are rarest in log messages.
class ByteFinder
{
public:
    static constexpr std::size_t npos = std::string_view::npos;

    enum class Case : bool { Exact, AsciiIgnored };

    ByteFinder(std::string_view needle, Case letters);

    /// The first place at `from` or after it; npos when there is none.
    std::size_t find(std::string_view text, std::size_t from = 0) const;
    bool isIn(std::string_view text) const { return find(text) != npos; }
    /// `text` has at least the needle's length.
    bool standsAt(const char* text) const;
    std::size_t size() const { return m_needle.size(); }

private:
    std::size_t findOneByOne(std::string_view text, std::size_t start, std::size_t end) const;

    struct Probe
    {
        std::size_t offset = 0;
        char byte = 0;
        char caseBit = 0; ///< set in a byte before it is compared
    };
    Probe probe(std::size_t offset) const;

    std::string m_needle;   ///< lower case when case is ignored
    std::string m_caseBits; ///< of each byte
    Probe m_first;
    Probe m_second;
};
