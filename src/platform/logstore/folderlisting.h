// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/storeproblems.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace logstore {

/// Whether the path, all links followed, lies in one of the folders.
bool staysInside(const std::filesystem::path& path,
                 const std::vector<std::filesystem::path>& allowedRoots);

/// The items of a folder, sorted by name. Fails when it cannot be listed. Left out are the `._name`
/// companions that some archivers write, and links whose targets lie outside `allowedRoots`.
StoreResult<std::vector<std::filesystem::path>>
listFolder(const std::filesystem::path& folder,
           const std::vector<std::filesystem::path>& allowedRoots);

/// The items of a folder that have this name in any case, sorted. Of a folder that cannot be
/// listed, the path that has it as it is.
std::vector<std::filesystem::path> itemsNamed(const std::filesystem::path& folder,
                                              const std::string& name);

/// Whether the name consists of so many hexadecimal digits in either case.
bool isHexName(std::string_view name, std::size_t size);

/// ASCII letters in upper case.
std::string upperCase(std::string text);

} // namespace logstore
