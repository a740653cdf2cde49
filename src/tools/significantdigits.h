// SPDX-License-Identifier: MIT
#pragma once

#include <QLocale>
#include <QString>

#include <optional>

/// The number with at most four significant digits, in the signs of the locale, without grouping or
/// exponent.
std::optional<QString> withFourSignificantDigits(double number, const QLocale& locale);
