// SPDX-License-Identifier: MIT
#pragma once

/// Shows what Tessel is, over the active window.
void showAbout();
