// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

/// A row of a statistics record, as the log daemon writes it.
inline QByteArray statisticsRow(int size, double percent, const QByteArray& process)
{
    return "    - [ " + QByteArray::number(size).rightJustified(10) + ", "
           + QByteArray::number(percent, 'f', 1).rightJustified(5) + ", " + process + " ]\n";
}

/// A record of a log data file that was rotated out. A blank line ends each record.
inline QByteArray rotationRecord(const QByteArray& name, const QByteArray& rows)
{
    return "--- !logd statistics record\n"
           "type  : File Rotate\n"
           "file  : Persist/"
           + name
           + "\n"
             "time  : 2024-03-07 14:05:09+0100\n"
             "total : 10485760\n"
             "procs :\n"
           + rows + "\n";
}

/// Rows of the processes p1, p2 and so on.
inline QByteArray numberedRows(int count)
{
    QByteArray rows;
    for (int number = 1; number <= count; ++number)
        rows += statisticsRow(1000 * number, number, "/usr/libexec/p" + QByteArray::number(number));
    return rows;
}
