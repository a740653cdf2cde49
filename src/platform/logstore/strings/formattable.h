// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/message/formatprogram.h"

#include <cstdint>
#include <memory>
#include <unordered_map>

namespace logstore {

/// The format strings of one string file that have been asked for, parsed once each.
class FormatTable
{
public:
    /// The program at `offset`; `read(offset)` gives the text (an optional) the first time.
    template <typename Read>
    const FormatProgram* find(std::uint64_t offset, Read read)
    {
        const auto [place, isNew] = m_programs.try_emplace(offset);
        if (isNew) {
            if (auto text = read(offset)) {
                m_bytes += text->size() * 2 + 160;
                place->second = std::make_unique<const FormatProgram>(std::move(*text));
            }
        }
        return place->second.get();
    }

    std::size_t bytes() const { return m_bytes + m_programs.size() * 32; }
    void clear()
    {
        m_programs.clear();
        m_bytes = 0;
    }

private:
    std::unordered_map<std::uint64_t, std::unique_ptr<const FormatProgram>> m_programs;
    std::size_t m_bytes = 0;
};

} // namespace logstore
