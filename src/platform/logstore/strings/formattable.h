// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/message/formatprogram.h"

#include <cstdint>
#include <memory>
#include <unordered_map>

namespace logstore {

/// Longer than any real format string; it bounds what a file without zero bytes can give.
constexpr std::uint64_t longestString = std::uint64_t{64} * 1024;

/// The format strings of one string file that have been asked for, parsed once each.
class FormatTable
{
public:
    /// `total` counts the bytes of all tables that share it; it must outlive the table.
    void countIn(std::size_t& total) { m_total = &total; }

    /// The program at `offset`; `read(offset)` gives the text (an optional) the first time.
    template <typename Read>
    const FormatProgram* find(std::uint64_t offset, Read read)
    {
        const auto [place, isNew] = m_programs.try_emplace(offset);
        if (isNew) {
            constexpr std::size_t placeSize = 64;
            std::size_t bytes = placeSize;
            if (auto text = read(offset)) {
                place->second = std::make_unique<const FormatProgram>(std::move(*text));
                bytes += place->second->bytes();
            }
            if (m_total)
                *m_total += bytes;
        }
        return place->second.get();
    }

    void clear() { m_programs.clear(); }

private:
    std::unordered_map<std::uint64_t, std::unique_ptr<const FormatProgram>> m_programs;
    std::size_t* m_total = nullptr;
};

} // namespace logstore
