// SPDX-License-Identifier: MIT
#pragma once

#include "logstore/writtenstore.h"

#include <QTest>

// What tests of messages have in common: rows of a format string, its arguments and the message.

using Items = std::vector<logstore::writer::Item>;
using i32 = std::int32_t;
using u32 = std::uint32_t;
using u64 = std::uint64_t;

inline void row(const char* name, const char* format, Items items, const char* expected)
{
    QTest::newRow(name) << QByteArray(format) << std::move(items) << utf8(expected);
}

inline void addColumns()
{
    QTest::addColumn<QByteArray>("format");
    QTest::addColumn<Items>("items");
    QTest::addColumn<QString>("expected");
}

inline logstore::writer::Item
noBytes(logstore::writer::ItemKind kind,
        logstore::writer::Privacy privacy = logstore::writer::Privacy::Public)
{
    return logstore::writer::item(kind, privacy, {});
}

/// The bytes 0, 1, 2 and so on.
inline logstore::writer::Bytes counted(std::size_t size)
{
    logstore::writer::Bytes result(size);
    for (std::size_t i = 0; i < size; ++i)
        result[i] = static_cast<std::uint8_t>(i);
    return result;
}

inline void compareMessage()
{
    using namespace logstore::writer;
    QFETCH(QByteArray, format);
    QFETCH(Items, items);
    QFETCH(QString, expected);
    WrittenStore store;
    Record record = store.message(1, format.toStdString());
    record.items = items;
    // Others around it: the private data of a record must not be taken for another's.
    Record neighbour = store.message(0, "%s");
    neighbour.items = {text("neighbour", Privacy::Private)};
    store.addRecords({neighbour, record, neighbour});
    const auto entries = store.entries();
    QCOMPARE(entries.size(), std::size_t(3));
    QCOMPARE(entries[2].message, expected);
    QCOMPARE(entries[2].format, QString::fromUtf8(format));
    QCOMPARE(entries[0].message + entries[1].message, QStringLiteral("neighbourneighbour"));
}
