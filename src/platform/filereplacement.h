// SPDX-License-Identifier: MIT
#pragma once

#include "platform/base/result.h"

#include <filesystem>
#include <functional>

class QByteArray;
class QIODevice;

/// Writes a whole file so that the old one is never lost: `write` fills a new file beside it, which
/// takes the place of the old one, its owner, its group and its permissions once every byte is on
/// disk. A link is followed.
///
/// When `write` returns false, or the system refuses any step, the old file stays as it was and the
/// failure names the path and the reason. Folders, devices and pipes are refused.
Result<void> replaceFile(const std::filesystem::path& path,
                         const std::function<bool(QIODevice&)>& write);

/// The same for contents that are at hand.
Result<void> replaceFile(const std::filesystem::path& path, const QByteArray& contents);
