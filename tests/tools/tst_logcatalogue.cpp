// SPDX-License-Identifier: MIT
#include "support/logfolder.h"
#include "support/testcase.h"
#include "tools/logcatalogue.h"

#include <QTest>

#include <cerrno>
#include <cstring>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

/// 2024-03-01 09:41:07 UTC
constexpr FileTime created{1709286067s};

QStringList linesOf(FileManager& files, const FilePath& folder, const QString& label = {})
{
    LogCatalogue catalogue(files, QTimeZone::utc());
    catalogue.addFolder(folder, label);
    return catalogue.takeSortedLines();
}

} // namespace

class TestLogCatalogue : public TestCase
{
    Q_OBJECT

private Q_SLOTS:

    void linesGiveDatesSizeAndPeriod_data()
    {
        QTest::addColumn<qint64>("milliseconds"); // of writing
        QTest::addColumn<QString>("end");
        QTest::newRow("an hour") << qint64{4'530'000}
                                 << u"2024-03-01 10:56:37 +0000  7 bytes, period 75.5 min"_s;
        QTest::newRow("no time") << qint64{0}
                                 << u"2024-03-01 09:41:07 +0000  7 bytes, period 0.0 min"_s;
        QTest::newRow("parts of a second")
            << qint64{999} << u"2024-03-01 09:41:07 +0000  7 bytes, period 0.0 min"_s;
        QTest::newRow("rounded up")
            << qint64{3'001} << u"2024-03-01 09:41:10 +0000  7 bytes, period 0.1 min"_s;
        QTest::newRow("days") << qint64{864'000'000}
                              << u"2024-03-11 09:41:07 +0000  7 bytes, period 14400.0 min"_s;
        QTest::newRow("modified before it was created")
            << qint64{-1} << u"2024-03-01 09:41:06 +0000  7 bytes"_s;
    }

    void linesGiveDatesSizeAndPeriod()
    {
        QFETCH(qint64, milliseconds);
        QFETCH(QString, end);
        const LogFolder folder;
        folder.make("0000000000000042.tracev3", "7 bytes");
        FakeFileManager files;
        files.alter = [milliseconds](const FilePath&, FileAttributes& file) {
            file.created = created;
            file.modified = created + std::chrono::milliseconds(milliseconds);
        };
        // What was modified before it was created is a copy, and older than that.
        const QString start = milliseconds < 0 ? u"06"_s : u"07"_s;
        QCOMPARE(linesOf(files, folder.path(), u"Persist"_s),
                 QStringList{u"Persist/0000000000000042.tracev3\t2024-03-01 09:41:"_s + start
                             + u" +0000  "_s + end + u'\n'});
    }

    void datesAreThoseOfTheZone_data()
    {
        QTest::addColumn<QString>("zone");
        QTest::addColumn<QString>("date");
        QTest::newRow("east") << u"Europe/Berlin"_s << u"2024-03-01 10:41:07 +0100"_s;
        QTest::newRow("west") << u"America/St_Johns"_s << u"2024-03-01 06:11:07 -0330"_s;
        QTest::newRow("half an hour") << u"Asia/Kolkata"_s << u"2024-03-01 15:11:07 +0530"_s;
    }

    void datesAreThoseOfTheZone()
    {
        QFETCH(QString, zone);
        QFETCH(QString, date);
        const LogFolder folder;
        folder.make("a.tracev3");
        FakeFileManager files;
        files.alter = [](const FilePath&, FileAttributes& file) {
            file.created = file.modified = created;
        };
        LogCatalogue catalogue(files, QTimeZone(zone.toLatin1()));
        catalogue.addFolder(folder.path(), {});
        QCOMPARE(catalogue.takeSortedLines(),
                 QStringList{u"/a.tracev3\t%1  %1  0 bytes, period 0.0 min\n"_s.arg(date)});
    }

    void onlyLogDataFilesAreListed()
    {
        const LogFolder folder;
        folder.make("yes.tracev3");
        folder.make(".hidden.tracev3");
        folder.make("capitals.TRACEV3");
        folder.make(".tracev3");
        folder.make("other.tracev3.txt");
        folder.make("folder.tracev3/deeper.tracev3");
        ::symlinkat("yes.tracev3", AT_FDCWD, folder.path("link.tracev3").c_str());
        ::mkfifo(folder.path("pipe.tracev3").c_str(), 0600);
        SystemFileManager files;
        const QStringList lines = linesOf(files, folder.path());
        QCOMPARE(lines.size(), 2);
        QVERIFY(lines[0].startsWith(u"/.hidden.tracev3\t"));
        QVERIFY(lines[1].startsWith(u"/yes.tracev3\t"));
    }

    void failuresAreGathered()
    {
        const LogFolder folder;
        folder.make("gone.tracev3");
        folder.make("good.tracev3");
        FakeFileManager files;
        files.fails = [](const FilePath& path) { return path.filename() == "gone.tracev3"; };
        LogCatalogue catalogue(files, QTimeZone::utc());
        catalogue.addFolder(folder.path("missing"), {});
        catalogue.addFolder(folder.path(), {});
        QCOMPARE(
            catalogue.errors(),
            u"The folder “%1” could not be listed: %2.[gone.tracev3 failed]"_s.arg(
                folder.shownPath(u"missing"_s), QString::fromLocal8Bit(std::strerror(ENOENT))));
        QCOMPARE(catalogue.takeSortedLines().size(), 1);
    }

    void namesNeedNotBeText()
    {
        const LogFolder folder;
        folder.make("\xff.tracev3", "x");
        SystemFileManager files;
        const QStringList lines = linesOf(files, folder.path());
        std::filesystem::remove(folder.path("\xff.tracev3"));
        QCOMPARE(lines.size(), 1);
        QVERIFY(lines[0].startsWith(u"/\ufffd.tracev3\t"));
        QVERIFY(lines[0].contains(u" 1 bytes"));
    }
};

TESSEL_TEST(TestLogCatalogue)
#include "tst_logcatalogue.moc"
