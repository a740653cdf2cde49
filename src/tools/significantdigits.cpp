// SPDX-License-Identifier: MIT
#include "tools/significantdigits.h"

#include <unicode/numberformatter.h>

std::optional<QString> withFourSignificantDigits(double number, const QLocale& locale)
{
    UErrorCode status = U_ZERO_ERROR;
    const icu::UnicodeString text =
        icu::number::NumberFormatter::withLocale(
            icu::Locale::forLanguageTag(locale.bcp47Name().toStdString(), status))
            .precision(icu::number::Precision::minMaxSignificantDigits(1, 4))
            .grouping(UNUM_GROUPING_OFF)
            .formatDouble(number, status)
            .toString(status);
    if (U_FAILURE(status))
        return std::nullopt;
    return QString::fromUtf16(text.getBuffer(), text.length());
}
