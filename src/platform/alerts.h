// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// Modal alerts.
class Alerts
{
public:
    virtual ~Alerts() = default;
    /// A critical alert with one button, "OK"; returns when the user has dismissed it. What follows
    /// an empty line in the informative text is shown in a font of equal widths.
    virtual void critical(const QString& message, const QString& informativeText) = 0;
    /// An alert with "Cancel" and a button that does what is offered; true when that was pressed.
    virtual bool
    offer(const QString& message, const QString& informativeText, const QString& button) = 0;
};
