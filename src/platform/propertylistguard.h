// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArrayView>

/// Says whether a property list may be handed to the parser. The parser checks every offset, but it
/// follows nesting by recursion until the stack ends, and it copies a container of the binary form
/// once for each reference to it, so that a hundred bytes can ask for more memory than there is.
bool isSafePropertyList(QByteArrayView bytes);
