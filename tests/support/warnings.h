// SPDX-License-Identifier: MIT
#pragma once

#include <QRegularExpression>
#include <QTest>

/// Makes every warning a failure but the one that the platform without a display has for each
/// dialog.
inline void failOnWarnings()
{
    QTest::failOnWarning(
        QRegularExpression(QStringLiteral("^(?!This plugin does not support propagateSizeHints)")));
}
