// SPDX-License-Identifier: MIT
#include "platform/processrunner.h"
#include "support/testcase.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

class TestProcessRunner : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void givesTheWholeOutput()
    {
        QCOMPARE(shell(u"seq 1 20000"_s).value_or("failed").count('\n'), 20000);
        QCOMPARE(shell(u"printf 'a\\0b'; exec 1>&-; true"_s).value_or("failed"),
                 QByteArray("a\0b", 3));
    }

    void passesArgumentsAsTheyAre()
    {
        const auto output =
            m_runner.output(u"/bin/sh"_s, {u"-c"_s, u"printf '%s|' \"$@\""_s, u"sh"_s,
                                           u"two words"_s, u"$HOME"_s, u""_s});
        QCOMPARE(output.value_or("failed"), "two words|$HOME||"_ba);
    }

    void exitCodeAndErrorsDoNotMatter()
    {
        QCOMPARE(shell(u"echo out; echo err >&2; exit 3"_s).value_or("failed"), "out\n"_ba);
    }

    void programWithoutOutput() { QCOMPARE(shell(u"true"_s).value_or("failed"), QByteArray()); }

    void standardInputIsEmpty() { QCOMPARE(shell(u"cat"_s).value_or("failed"), QByteArray()); }

    void failsWhenItCannotBeStarted()
    {
        const auto output = m_runner.output(u"/nowhere/program"_s, {});
        QVERIFY(!output);
        QVERIFY(
            QString::fromStdString(output.error().description).contains(u"“/nowhere/program”"_s));
    }

    void endsAProgramThatHangs_data()
    {
        QTest::addColumn<QString>("script");
        QTest::newRow("silent") << u"exec sleep 1000"_s;
        QTest::newRow("with its output closed") << u"exec sleep 1000 >&-"_s;
        QTest::newRow("after some output") << u"echo some; exec sleep 1000"_s;
    }

    void endsAProgramThatHangs()
    {
        QFETCH(QString, script);
        SystemProcessRunner impatient(200ms);
        const auto output = impatient.output(u"/bin/sh"_s, {u"-c"_s, script});
        QVERIFY(!output);
        QVERIFY(
            QString::fromStdString(output.error().description).contains(u"did not end in time"_s));
    }

    void endsAProgramThatNeverStopsPrinting()
    {
        const auto output = shell(u"exec yes"_s);
        QVERIFY(!output);
        QVERIFY(QString::fromStdString(output.error().description).contains(u"too long"_s));
    }

    void userIsTheOneThatTheSystemNames()
    {
        const auto name = shell(u"id -un"_s);
        QCOMPARE(m_runner.userName(),
                 QString::fromLocal8Bit(name.value_or(QByteArray()).trimmed()));
    }

private:
    Result<QByteArray> shell(const QString& script)
    {
        return m_runner.output(u"/bin/sh"_s, {u"-c"_s, script});
    }

    SystemProcessRunner m_runner;
};

TESSEL_TEST(TestProcessRunner)
#include "tst_processrunner.moc"
