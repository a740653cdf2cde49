// SPDX-License-Identifier: MIT
#include "model/logentry.h"

#include <QRandomGenerator>

namespace {

/// Gives 64 random bits. Asking the system for every identity would cost more than all the rest of
/// an entry.
quint64 random64()
{
    static QRandomGenerator64 generator = QRandomGenerator64::securelySeeded();
    return generator();
}

} // namespace

QString kindMarker(qint64 type)
{
    switch (type) {
    case LogMessageEntry: return QStringLiteral("\u25B6\uFE0F");
    case ActivityEntry: return QStringLiteral("\U0001F94E");
    case BoundaryEntry: return QStringLiteral("\U0001F3AC");
    case SignpostEntry: return QStringLiteral("\U0001F4CD");
    default: return QStringLiteral("\u2B55\uFE0F");
    }
}

QString LogEntry::plainTextLine() const
{
    QString line;
    for (const Text* field : {&date, &level, &category, &sender, &process, &subsystem})
        line += field->toString() + QStringLiteral(" | ");
    return line + composedMessage.toString() + signpostName.toString();
}

QUuid LogEntry::makeId()
{
    const quint64 high = random64();
    const quint64 low = random64();
    const auto byte = [low](int index) { return static_cast<uchar>(low >> (56 - 8 * index)); };
    const auto version4 = static_cast<ushort>((high & 0x0fff) | 0x4000);
    const auto variant = static_cast<uchar>((byte(0) & 0x3f) | 0x80);
    return {static_cast<uint>(high >> 32),
            static_cast<ushort>(high >> 16),
            version4,
            variant,
            byte(1),
            byte(2),
            byte(3),
            byte(4),
            byte(5),
            byte(6),
            byte(7)};
}
