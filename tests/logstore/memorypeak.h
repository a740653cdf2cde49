// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

/// The most memory that was in use at once since it was made. One at a time.
class MemoryPeak
{
public:
    MemoryPeak();
    std::size_t bytes() const;

private:
    std::size_t m_before;
};
