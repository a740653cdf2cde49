// SPDX-License-Identifier: MIT
#include "platform/logstore/writer/storefiles.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fstream>

namespace logstore::writer {

namespace {

namespace fs = std::filesystem;

std::string digits(const Uuid& uuid)
{
    std::string text = uuid.text();
    text.erase(std::remove(text.begin(), text.end(), '-'), text.end());
    return text;
}

tl::unexpected<Failure> cannotWrite(const fs::path& path, const std::string& reason)
{
    return failure("The file “" + path.string() + "” could not be written: " + reason + ".");
}

Result<void> writeFile(const fs::path& path, const Bytes& bytes)
{
    std::error_code error;
    fs::create_directories(path.parent_path(), error);
    if (error)
        return cannotWrite(path, error.message());
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(reinterpret_cast<const char*>(bytes.data()),
              static_cast<std::streamsize>(bytes.size()));
    if (!out.flush())
        return cannotWrite(path, std::strerror(errno));
    return {};
}

} // namespace

std::string logFileName(std::size_t number, const char* extension)
{
    std::array<char, 40> name{};
    std::snprintf(name.data(), name.size(), "%016zx.%s", number, extension);
    return name.data();
}

std::string StoreFiles::logPath(const std::string& path) const
{
    return layout == StoreLayout::Live ? "diagnostics/" + path : path;
}

std::string StoreFiles::stringsPath(const Uuid& image) const
{
    const std::string name = digits(image);
    return (layout == StoreLayout::Live ? "uuidtext/" : "") + name.substr(0, 2) + "/"
           + name.substr(2);
}

std::string StoreFiles::cachePath(const Uuid& cache) const
{
    return (layout == StoreLayout::Live ? "uuidtext/dsc/" : "dsc/") + digits(cache);
}

void StoreFiles::add(const std::string& path, const TraceFile& file)
{
    files[logPath(path)] = fileBytes(file);
}

void StoreFiles::add(const std::string& name, const std::vector<Boot>& boots)
{
    files[logPath("timesync/" + name)] = timeFileBytes(boots);
}

void StoreFiles::add(const UuidText& file)
{
    files[stringsPath(file.uuid)] = fileBytes(file);
}

void StoreFiles::add(const SharedCache& cache)
{
    files[cachePath(cache.uuid)] = fileBytes(cache);
}

void StoreFiles::addText(const std::string& path, std::string_view text)
{
    files[logPath(path)].assign(text.begin(), text.end());
}

Result<void> StoreFiles::write(const fs::path& root) const
{
    for (const auto& [path, bytes] : files)
        if (auto written = writeFile(root / path, bytes); !written)
            return written;
    return {};
}

} // namespace logstore::writer
