// SPDX-License-Identifier: MIT
#include "logstore/memorypeak.h"

#include <atomic>
#include <cstdlib>
#include <malloc.h>
#include <new>

namespace {

std::atomic<std::size_t> liveBytes = 0;
std::atomic<std::size_t> peakBytes = 0;

} // namespace

MemoryPeak::MemoryPeak() : m_before(liveBytes)
{
    peakBytes = m_before;
}

std::size_t MemoryPeak::bytes() const
{
    return peakBytes - m_before;
}

void* operator new(std::size_t size)
{
    void* memory = std::malloc(size);
    if (!memory)
        throw std::bad_alloc();
    const std::size_t live = liveBytes += ::malloc_usable_size(memory);
    if (live > peakBytes)
        peakBytes = live;
    return memory;
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    try {
        return operator new(size);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

void operator delete(void* memory) noexcept
{
    liveBytes -= ::malloc_usable_size(memory);
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    operator delete(memory);
}
