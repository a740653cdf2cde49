// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/message/decoration.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace logstore {

/// One conversion of a format string: "%{public}-8.3lld".
struct Conversion
{
    static constexpr std::int32_t none = -1;
    static constexpr std::int32_t fromItem = -2;   ///< a star
    static constexpr std::int32_t largest = 65535; ///< of widths and precisions

    enum class Length : std::uint8_t { Plain, Char, Short, Long };

    char letter = 0;
    Length length = Length::Plain; ///< hh, h, l (and ll, q, j, z, t, L)
    bool leftJustified = false;
    bool plusSign = false;
    bool spaceSign = false;
    bool alternate = false;
    bool zeroPadded = false;
    std::int32_t width = none;
    std::int32_t precision = none;
    Decorations decorations;
    std::string_view text; ///< the conversion as written
};

/// A format string, parsed once: what is written as it stands and what is filled in, in order.
class FormatProgram
{
public:
    explicit FormatProgram(std::string text);
    FormatProgram(const FormatProgram&) = delete;
    FormatProgram& operator=(const FormatProgram&) = delete;
    FormatProgram(FormatProgram&&) = delete;
    FormatProgram& operator=(FormatProgram&&) = delete;
    ~FormatProgram() = default;

    struct Step
    {
        std::string_view literal; ///< written first, may be empty
        std::int32_t conversion =
            Conversion::none; ///< index of the conversion that follows, or none
    };

    std::string_view text() const { return m_text; }
    /// What the program takes in memory.
    std::size_t bytes() const;
    const std::vector<Step>& steps() const { return m_steps; }
    const Conversion& conversion(std::int32_t index) const
    {
        return m_conversions[static_cast<std::size_t>(index)];
    }

private:
    const std::string m_text;
    std::vector<Step> m_steps;
    std::vector<Conversion> m_conversions;
};

} // namespace logstore
