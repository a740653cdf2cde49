// SPDX-License-Identifier: MIT
#include "app/window.h"
