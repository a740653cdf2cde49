// SPDX-License-Identifier: MIT
#pragma once

#include "platform/alerts.h"

/// Alerts as message boxes over the active window.
class QtAlerts final : public Alerts
{
public:
    void critical(const QString& message, const QString& informativeText) override;
    bool
    offer(const QString& message, const QString& informativeText, const QString& button) override;
};
