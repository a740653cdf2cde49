// SPDX-License-Identifier: MIT
#pragma once

#include "platform/result.h"

#include <QByteArray>
#include <QStringList>

/// Runs other programs, and knows who runs this one.
class ProcessRunner
{
public:
    virtual ~ProcessRunner() = default;
    /// Starts the program, reads its standard output to the end, waits for it to exit.
    /// Fails when it cannot be started. The exit code is not looked at.
    virtual Result<QByteArray> output(const QString& program, const QStringList& arguments) = 0;
    /// The login name of the user who runs the application.
    virtual QString userName() const = 0;
};
