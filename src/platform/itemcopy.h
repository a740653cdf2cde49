// SPDX-License-Identifier: MIT
#pragma once

#include "platform/filemanager.h"

/// Copies a file, a link, or a folder with all it holds, with its attributes. The copy is
/// made under another name beside `to` and gets its own name when it is whole. Links are copied as
/// links. What is deleted while its folder is copied is left out.
Result<void> copyItem(const FilePath& from, const FilePath& to, const CopyObserver& observer);
