// SPDX-License-Identifier: MIT
#pragma once

#include "platform/filemanager.h"

/// Copies a file, a link, or a folder with all it holds, with its attributes, as
/// FileManager::copyItem() describes; returns what failed. The copy is made under another name
/// beside `to` and gets its own name at the end. What is deleted while its folder is copied is left
/// out without a word.
std::vector<Failure>
copyItem(const FilePath& from, const FilePath& to, CopiedTop top, const CopyObserver& observer);
