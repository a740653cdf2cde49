// SPDX-License-Identifier: MIT
#include "support/logfolder.h"
#include "support/testcase.h"
#include "tools/logstatistics.h"
#include "tools/statisticstext.h"

#include <QTest>

#include <cerrno>
#include <cstring>

using namespace Qt::StringLiterals;

namespace {

const QString name = u"0000000000000042.tracev3"_s;
const QString prefix = u"0000000000000042.tracev3 2024-03-07 14:05:09 10485760:\n"_s;

/// The record in which one text stands for another.
QByteArray changed(const QByteArray& from, const QByteArray& to)
{
    QByteArray record = rotationRecord("0000000000000042.tracev3", numberedRows(6));
    const qsizetype at = record.indexOf(from);
    Q_ASSERT(at >= 0);
    return record.replace(at, from.size(), to);
}

LogStatistics analysed(const QByteArray& text, LogStatistics::Form form = LogStatistics::Form::Text)
{
    LogStatistics statistics(form);
    statistics.analyseText(text);
    return statistics;
}

} // namespace

class TestLogStatistics : public TestCase
{
    Q_OBJECT

private Q_SLOTS:

    void rowsAreReadByTheirColumns_data()
    {
        QTest::addColumn<QByteArray>("row");
        QTest::addColumn<QString>("line");
        QTest::newRow("path") << "    - [    3355443,  32.0, /usr/sbin/demo ]"_ba
                              << u"\t3355443 32.0 demo\n"_s;
        QTest::newRow("no path") << "    - [     153399,   1.5, standalone ]"_ba
                                 << u"\t153399 1.5  standalone\n"_s;
        QTest::newRow("blanks in the path")
            << "    - [ 7, 1.0, /A b/Notes Demo ]"_ba << u"\t7 1.0 Notes Demo\n"_s;
        QTest::newRow("comma in the path")
            << "    - [ 7, 1.0, /opt/one, two/bin/comma ]"_ba << u"\t7 1.0 o\n"_s;
        QTest::newRow("fields after the third")
            << "    - [ 7, 1.0, /bin/abc ], x, y"_ba << u"\t7 1.0 abc\n"_s;
        QTest::newRow("slash last") << "    - [ 7, 1.0, /bin/ ]"_ba << u"\t7 1.0 \n"_s;
        QTest::newRow("third field of two") << "    - [ 7, 1.0,ab"_ba << u"\t7 1.0 \n"_s;
        QTest::newRow("third field of one") << "    - [ 7, 1.0,a"_ba << u"\t7 1.0 \n"_s;
        QTest::newRow("first field too short") << "short, 1.0, /bin/abc ]"_ba << u"\t 1.0 abc\n"_s;
        QTest::newRow("first field of eight") << "12345678,,/bin/abc ]"_ba << u"\t  abc\n"_s;
        QTest::newRow("tabs around")
            << "    - [\t\t7\t,\t1.0\t, /bin/abc ]"_ba << u"\t7 1.0 abc\n"_s;
        QTest::newRow("two fields") << "    - [ 7, 1.0"_ba << u""_s;
        QTest::newRow("empty") << ""_ba << u""_s;
        QTest::newRow("any writing")
            << "    - [ 7, 1.0, /usr/libexec/démon📍 ]"_ba << u"\t7 1.0 démon📍\n"_s;
        QTest::newRow("accent by itself at the end")
            << "    - [ 7, 1.0, /bin/ae\xCC\x81]"_ba << u"\t7 1.0 a\n"_s;
        QTest::newRow("emoji before the size") << "📍📍📍📍📍📍📍📍7,1,/a ]"_ba << u"\t7 1 a\n"_s;
    }

    void rowsAreReadByTheirColumns()
    {
        QFETCH(QByteArray, row);
        QFETCH(QString, line);
        const auto statistics =
            analysed(rotationRecord("0000000000000042.tracev3", row + "\n\n\n\n\n\n"));
        QCOMPARE(statistics.reports().value(name), prefix + line);
    }

    void recordsOfAnySize_data()
    {
        QTest::addColumn<int>("lines");
        QTest::addColumn<int>("rows"); // fewer than none: the record does not count
        QTest::newRow("10 lines") << 10 << -1;
        QTest::newRow("11 lines") << 11 << 6;
        QTest::newRow("24 lines") << 24 << 19;
        QTest::newRow("25 lines") << 25 << 20;
        QTest::newRow("26 lines") << 26 << 20;
        QTest::newRow("40 lines") << 40 << 20;
    }

    void recordsOfAnySize()
    {
        QFETCH(int, lines);
        QFETCH(int, rows);
        QByteArray record = rotationRecord("0000000000000042.tracev3", numberedRows(lines - 5));
        record.chop(2); // ends with the last row's text
        const auto statistics = analysed(record);
        QCOMPARE(statistics.fileNames().size(), rows < 0 ? 0 : 1);
        QCOMPARE(statistics.reports().value(name).count(u'\t'), std::max(rows, 0));
    }

    void onlyRotationsCount_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("nothing") << QByteArray();
        QTest::newRow("only separators") << QByteArray("--- !logd statistics record\n").repeated(3);
        QTest::newRow("another kind") << changed("File Rotate", "Memory Rollover");
        QTest::newRow("another folder") << changed("Persist/", "Special/");
        QTest::newRow("one blank before the colon") << changed("type  :", "type :");
        QTest::newRow("carriage returns") << changed("Rotate\n", "Rotate\r\n");
        QTest::newRow("something before it") << changed("type  :", "\ntype  :");
        QTest::newRow("separator cut") << QByteArray("--- !logd statistics reco");
        QTest::newRow("cut in the kind") << rotationRecord("x", {}).first(40);
    }

    void onlyRotationsCount()
    {
        QFETCH(QByteArray, text);
        QVERIFY(analysed(text).fileNames().isEmpty());
        // A good record before and behind it is not touched.
        const QByteArray good = rotationRecord("good", numberedRows(6));
        QCOMPARE(analysed(good + text + good).fileNames(), (QStringList{u"good"_s, u"good"_s}));
    }

    void unusableRecordsArePassedOver_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<bool>("isText");
        QTest::addColumn<bool>("isValues");
        QTest::newRow("good") << changed("2024", "2024") << true << true;
        QTest::newRow("time without colon") << changed("time  : ", "time  ") << false << false;
        QTest::newRow("total without colon") << changed("total : ", "total ") << false << false;
        QTest::newRow("date too short")
            << changed("2024-03-07 14:05:09+0100", "0100") << false << false;
        QTest::newRow("only the offset")
            << changed("2024-03-07 14:05:09+0100", "+0100") << true << false;
        QTest::newRow("no blank in the date") << changed("07 14", "07T14") << true << false;
    }

    void unusableRecordsArePassedOver()
    {
        QFETCH(QByteArray, text);
        QFETCH(bool, isText);
        QFETCH(bool, isValues);
        QCOMPARE(analysed(text).fileNames().size(), isText ? 1 : 0);
        QCOMPARE(analysed(text, LogStatistics::Form::Csv).reports().size(), isValues ? 1 : 0);
    }

    void anyNewlineEndsALine_data()
    {
        QTest::addColumn<QByteArray>("newline");
        QTest::newRow("line feed") << "\n"_ba;
        QTest::newRow("carriage return") << "\r"_ba;
        QTest::newRow("both") << "\r\n"_ba;
        QTest::newRow("vertical tab") << "\v"_ba;
        QTest::newRow("form feed") << "\f"_ba;
        QTest::newRow("next line") << "\xC2\x85"_ba;
        QTest::newRow("line separator") << "\xE2\x80\xA8"_ba;
        QTest::newRow("paragraph separator") << "\xE2\x80\xA9"_ba;
    }

    void anyNewlineEndsALine()
    {
        QFETCH(QByteArray, newline);
        QByteArray record = rotationRecord("0000000000000042.tracev3", numberedRows(6));
        const qsizetype body = record.indexOf("time  :");
        record = record.first(body) + record.sliced(body).replace("\n", newline);
        QCOMPARE(analysed(record).reports().value(name).count(u'\t'), 6);
    }

    void namesEndAtTheSecondSlash()
    {
        QCOMPARE(analysed(rotationRecord("a/b/c", numberedRows(6))).fileNames(),
                 QStringList{u"a"_s});
    }

    void readsTheTextFilesOfAFolder()
    {
        const LogFolder folder;
        const auto record = [](const char* file) { return rotationRecord(file, numberedRows(6)); };
        folder.make("b.txt", record("from b"));
        folder.make("a.txt", record("from a"));
        folder.make("c.TXT", record("capitals"));
        folder.make(".txt", record("no extension"));
        folder.make("d.text", record("another extension"));
        folder.make("below/e.txt", record("below"));
        folder.make("empty.txt");
        SystemFileManager files;
        LogStatistics statistics(LogStatistics::Form::Text);
        statistics.analyseFolder(files, folder.path());
        QCOMPARE(statistics.fileNames(), (QStringList{u"from a"_s, u"from b"_s}));
        QCOMPARE(statistics.errors(), u""_s);
    }

    void failuresAreGathered()
    {
        const LogFolder folder;
        folder.make("1.txt", "\xff" + rotationRecord("broken", numberedRows(6)));
        folder.make("2.txt", rotationRecord("refused", numberedRows(6)));
        folder.make("3.txt", rotationRecord("good", numberedRows(6)));
        folder.make("4.txt/file");
        FakeFileManager files;
        files.fails = [](const FilePath& path) { return path.filename() == "2.txt"; };
        LogStatistics statistics(LogStatistics::Form::Text);
        statistics.analyseFolder(files, folder.path());
        QCOMPARE(statistics.fileNames(), QStringList{u"good"_s});
        QCOMPARE(statistics.errors(),
                 u"The file “%1” could not be read: It is not text in UTF-8.[2.txt failed]"
                 "The file “%2” could not be read: %3."_s.arg(
                     folder.shownPath(u"1.txt"_s), folder.shownPath(u"4.txt"_s),
                     QString::fromLocal8Bit(std::strerror(EISDIR))));
    }
};

TESSEL_TEST(TestLogStatistics)
#include "tst_logstatistics.moc"
