// SPDX-License-Identifier: MIT
#pragma once

#include <QRegularExpression>
#include <QTest>

/// Makes every warning a failure but those that the platform without a display has for each dialog,
/// for each window that is brought forward, and for each menu.
inline void failOnWarnings()
{
    QTest::failOnWarning(QRegularExpression(
        QStringLiteral("^(?!This plugin does not support "
                       "(propagateSizeHints\\(\\)|raise\\(\\)|grabbing the keyboard)$)")));
}
