// SPDX-License-Identifier: MIT
#include "platform/processrunner.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QProcess>

#include <cerrno>
#include <pwd.h>
#include <unistd.h>
#include <vector>

namespace {

tl::unexpected<Failure> failed(const QString& program, const QString& reason)
{
    const QString text = QStringLiteral("The program “%1” could not be run: %2.");
    return failure(text.arg(program, reason).toStdString());
}

} // namespace

SystemProcessRunner::SystemProcessRunner(std::chrono::milliseconds timeLimit)
    : m_timeLimit(timeLimit)
{
}

Result<QByteArray> SystemProcessRunner::output(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start(program, arguments, QIODevice::ReadOnly);
    const QDeadlineTimer deadline(m_timeLimit);
    const auto timeLeft = [&] { return static_cast<int>(deadline.remainingTime()); };
    if (!process.waitForStarted(timeLeft()))
        return failed(program, process.errorString());

    QByteArray output;
    while (process.waitForReadyRead(timeLeft())) {
        output += process.readAllStandardOutput();
        if (output.size() > outputLimit) {
            process.kill();
            process.waitForFinished();
            return failed(program, QStringLiteral("its output is too long"));
        }
    }
    if (process.state() != QProcess::NotRunning && !process.waitForFinished(timeLeft())) {
        process.kill();
        process.waitForFinished();
        return failed(program, QStringLiteral("it did not end in time"));
    }
    return output + process.readAllStandardOutput();
}

QString SystemProcessRunner::userName() const
{
    constexpr std::size_t usualLength = 1024;
    constexpr std::size_t longest = 1 << 20;
    passwd record{};
    passwd* found = nullptr;
    for (std::vector<char> texts(usualLength); texts.size() <= longest;
         texts.resize(texts.size() * 2)) {
        if (getpwuid_r(getuid(), &record, texts.data(), texts.size(), &found) != ERANGE)
            return found ? QFile::decodeName(found->pw_name) : QString::number(getuid());
    }
    return QString::number(getuid());
}
