// SPDX-License-Identifier: MIT
#pragma once

#include <QIcon>
#include <QString>

/// The symbol of this name, drawn in the palette's text colour at the moment and size of drawing.
/// A name without a drawing gives a null icon.
QIcon symbolIcon(const QString& name);
