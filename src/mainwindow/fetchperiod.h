// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// The number of seconds that a typed period stands for, whatever the user's locale: decimal or
/// hexadecimal, infinity and not-a-number included. A text that is not wholly a number is 5
/// seconds.
double periodSeconds(const QString& text);
