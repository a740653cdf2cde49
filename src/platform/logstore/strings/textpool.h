// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace logstore {

/// Keeps one copy of each distinct text for as long as it lives; equal texts get the same address.
/// Its capacity is limited, above what real stores need; later texts become empty.
class TextPool
{
public:
    /// The pool's copy of valid UTF-8 `text`. The empty text has a null address.
    std::string_view intern(std::string_view text);

    /// The same for bytes that may not be valid UTF-8.
    std::string_view internUnchecked(std::string_view bytes);

private:
    std::string_view store(std::string_view text);

    std::unordered_set<std::string_view> m_texts;
    std::vector<std::unique_ptr<char[]>> m_blocks;
    std::size_t m_bytes = 0;
    std::size_t m_blockUsed = 0;
    std::size_t m_blockSize = 0;
};

/// The part of a path after its last slash.
inline std::string_view lastPathComponent(std::string_view path)
{
    return path.substr(path.rfind('/') + 1);
}

} // namespace logstore
