// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <filesystem>
#include <optional>

/// The folder of real archives that the environment variable TESSEL_SAMPLES names, if it is set.
inline std::optional<std::filesystem::path> samplesFolder()
{
    const QString folder = qEnvironmentVariable("TESSEL_SAMPLES");
    if (folder.isEmpty())
        return std::nullopt;
    return std::filesystem::path(folder.toStdString());
}

/// For tests that cannot run without them.
#define SKIP_WITHOUT_SAMPLES()                                                                     \
    if (!samplesFolder())                                                                          \
    QSKIP("TESSEL_SAMPLES names no folder of real archives")
