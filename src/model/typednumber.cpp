// SPDX-License-Identifier: MIT
#include "model/typednumber.h"

#include <charconv>

std::optional<qint64> typedNumber(const QString& text)
{
    const std::string bytes = text.toStdString();
    std::string_view digits = bytes;
    if (digits.starts_with('+') && !digits.starts_with("+-"))
        digits.remove_prefix(1);
    qint64 number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (error != std::errc() || end != digits.data() + digits.size())
        return std::nullopt;
    return number;
}
