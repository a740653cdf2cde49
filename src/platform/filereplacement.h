// SPDX-License-Identifier: MIT
#pragma once

#include "platform/result.h"

#include <QString>

#include <functional>

class QIODevice;

/// Writes a whole file so that nobody ever meets half of it: `write` fills a new file beside the
/// old one, which takes the old one's place and permissions once every byte is on disk. When
/// `write` returns false, or the disk refuses, the old file stays as it was and the failure names
/// the path and the reason.
Result<void> replaceFile(const QString& path, const std::function<bool(QIODevice&)>& write);
