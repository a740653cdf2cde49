// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <unistd.h>

/// A folder for the files that a fuzz target reads, one for each run of a program.
class StoreFolder
{
public:
    StoreFolder()
        : m_root(std::filesystem::temp_directory_path()
                 / ("tessel-fuzz-" + std::to_string(::getpid())))
    {
    }
    StoreFolder(const StoreFolder&) = delete;
    StoreFolder& operator=(const StoreFolder&) = delete;
    ~StoreFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(m_root, ignored);
    }

    const std::filesystem::path& root() const { return m_root; }

    /// Puts the bytes into the file at `relative`, in place of what was there.
    std::filesystem::path write(const char* relative, const std::uint8_t* data, std::size_t size)
    {
        const std::filesystem::path path = m_root / relative;
        std::filesystem::create_directories(path.parent_path());
        std::ofstream file(path, std::ios::binary | std::ios::trunc);
        file.write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
        return path;
    }

private:
    std::filesystem::path m_root;
};
