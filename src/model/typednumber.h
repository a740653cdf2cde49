// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <optional>

/// The number that a user typed: a sign or none, then ASCII digits and nothing else, within 64
/// bits.
std::optional<qint64> typedNumber(const QString& text);
