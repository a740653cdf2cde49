// SPDX-License-Identifier: MIT
#include "platform/administrators.h"

std::optional<QString> administratorsGroup()
{
#ifdef Q_OS_MACOS
    return QStringLiteral("80");
#else
    return std::nullopt;
#endif
}
