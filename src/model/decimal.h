// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <charconv>
#include <cstddef>
#include <string_view>

/// A whole number in decimal digits, made without asking for memory.
class Decimal
{
public:
    template <typename Number>
    explicit Decimal(Number number)
    {
        const auto result = std::to_chars(m_digits.begin(), m_digits.end(), number);
        m_size = static_cast<std::size_t>(result.ptr - m_digits.data());
    }

    std::string_view view() const { return {m_digits.data(), m_size}; }

private:
    std::array<char, 24> m_digits{}; ///< 64 bits have twenty, with their sign
    std::size_t m_size = 0;
};
