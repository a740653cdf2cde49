// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace logstore {

/// Whether the path, all links followed, lies in one of the folders.
bool staysInside(const std::filesystem::path& path,
                 const std::vector<std::filesystem::path>& allowedRoots);

/// The items of a folder, sorted by name; empty when it cannot be listed. Left out are the `._name`
/// companions that some archivers write, and links whose targets lie outside `allowedRoots`.
std::vector<std::filesystem::path>
listFolder(const std::filesystem::path& folder,
           const std::vector<std::filesystem::path>& allowedRoots);

/// ASCII letters in upper case.
std::string upperCase(std::string text);

} // namespace logstore
