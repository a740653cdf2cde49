// SPDX-License-Identifier: MIT
#pragma once

#include "platform/predicate/predicateerror.h"

#include <QTest>

// A table of wrong predicates: the text, and the place and the sentence of its error.

inline void addMistakeColumns()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("position");
    QTest::addColumn<QString>("sentence");
}

inline void mistake(const char* name, const QString& text, int position, const QString& sentence)
{
    QTest::newRow(name) << text << position << sentence;
}

/// `result` is what came of the row's text.
template <typename Result>
void compareMistake(const Result& result, predicate::Stage stage)
{
    QFETCH(const int, position);
    QFETCH(const QString, sentence);
    QVERIFY(!result);
    QCOMPARE(QString::fromStdString(result.error().sentence), sentence);
    QCOMPARE(result.error().stage, stage);
    QCOMPARE(result.error().position, static_cast<std::size_t>(position));
}
