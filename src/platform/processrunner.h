// SPDX-License-Identifier: MIT
#pragma once

#include "platform/base/result.h"

#include <QByteArray>
#include <QStringList>

#include <chrono>

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

/// The machine's own. A program that outlives `timeLimit` or prints more than `outputLimit` bytes
/// is ended, and its output is a failure.
class SystemProcessRunner final : public ProcessRunner
{
public:
    static constexpr std::chrono::milliseconds defaultTimeLimit{10'000};
    static constexpr qsizetype outputLimit = 1 << 20;

    explicit SystemProcessRunner(std::chrono::milliseconds timeLimit = defaultTimeLimit);

    Result<QByteArray> output(const QString& program, const QStringList& arguments) override;
    QString userName() const override;

private:
    std::chrono::milliseconds m_timeLimit;
};
