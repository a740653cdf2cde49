// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/bytes/bytereader.h"
#include "platform/logstore/storeproblems.h"

#include <filesystem>
#include <string>
#include <vector>

namespace logstore {

/// A regular file open for reading at offsets. Not a memory map: a file that another program cuts
/// short must cost what is gone and not be a crash.
class File
{
public:
    /// Fails on anything but a readable regular file.
    static StoreResult<File> open(const std::filesystem::path& path);

    File(const File&) = delete;
    File& operator=(const File&) = delete;
    File(File&& other) noexcept;
    File& operator=(File&& other) noexcept;
    ~File();

    std::uint64_t size() const { return m_size; }

    /// Reads as many bytes as there are from `offset` on, at most `into.size()`.
    std::size_t readAt(std::uint64_t offset, std::span<std::uint8_t> into) const;

    /// The first offset from `offset` on that is not in a hole of the file; the size when only
    /// holes follow.
    std::uint64_t nextData(std::uint64_t offset) const;

    /// At most `size` bytes from `offset` on; never more memory than the file has bytes.
    std::vector<std::uint8_t> bytesAt(std::uint64_t offset, std::uint64_t size) const;

    /// The valid UTF-8 form of the text at `offset` up to a zero byte, at most `limit` bytes of it.
    std::string textAt(std::uint64_t offset, std::uint64_t limit) const;

private:
    File(int descriptor, std::uint64_t size) : m_descriptor(descriptor), m_size(size) {}

    int m_descriptor;
    std::uint64_t m_size;
};

} // namespace logstore
