// SPDX-License-Identifier: MIT
#include "model/entrydate.h"

#include <QTest>

using namespace Qt::StringLiterals;

class TestEntryDate : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }
};

QTEST_GUILESS_MAIN(TestEntryDate)
#include "tst_entrydate.moc"
