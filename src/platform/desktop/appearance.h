// SPDX-License-Identifier: MIT
#pragma once

/// The looks of all windows. To be called before the first window is made.
namespace appearance {

/// Dark, whatever the desktop's own setting.
void forceDark();

/// As the desktop is set. Where the desktop's theme does not reach the toolkit, its light or dark
/// preference is asked for, and followed when it changes.
void followSystem();

} // namespace appearance
