// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace logstore {

/// The items of a folder, sorted by name; empty when it cannot be listed. Left out are the `._name`
/// companions that some archivers write, and links whose targets lie outside `allowedRoots`.
std::vector<std::filesystem::path>
listFolder(const std::filesystem::path& folder,
           const std::vector<std::filesystem::path>& allowedRoots);

/// ASCII letters in upper case.
std::string upperCase(std::string text);

} // namespace logstore
