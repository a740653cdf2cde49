// SPDX-License-Identifier: MIT
#include "mainwindow/fetchperiod.h"

#include <clocale>
#include <cstdlib>
#include <cstring>

namespace {

constexpr double defaultPeriod = 5.0;

// std::from_chars has neither the sign "+" nor the prefix "0x", and QString::toDouble no
// hexadecimal form, so the conversion is the C library's own, held to the POSIX locale.
double convert(const char* text, char** end)
{
    static const locale_t posix = newlocale(LC_ALL_MASK, "POSIX", nullptr);
    return strtod_l(text, end, posix);
}

} // namespace

double periodSeconds(const QString& text)
{
    const QByteArray bytes = text.toUtf8();
    if (bytes.isEmpty() || std::strchr(" \t\n\v\f\r", bytes.front()) != nullptr)
        return defaultPeriod;
    char* end = nullptr;
    const double seconds = convert(bytes.constData(), &end);
    return end == bytes.constData() + bytes.size() ? seconds : defaultPeriod;
}
