// SPDX-License-Identifier: MIT
#include "support/fakeplatform.h"
#include "support/logfolder.h"
#include "support/testcase.h"
#include "tools/diagnoser.h"
#include "tools/statisticstext.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

class TestDiagnoser : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestCase::init();
        QLocale::setDefault(QLocale::c());
        m_folder = std::make_unique<LogFolder>();
        m_platform = std::make_unique<FakePlatform>();
        m_files = FakeFileManager();
        m_diagnoser = Diagnoser::make(m_platform->platform, m_files);
    }

    void panelStartsAtTheLastFolder()
    {
        m_diagnoser->getInfo();
        m_platform->panels.confirm(m_folder->shownPath());
        m_diagnoser->catalogue();
        m_platform->panels.confirm(m_folder->shownPath());
        m_diagnoser->analyse(true);

        const QList<OpenPanelRequest> asked = m_platform->panels.openRequests;
        QCOMPARE(asked.size(), 3);
        QCOMPARE(asked[0].startFolder, u"/private/var/db/diagnostics"_s);
        QCOMPARE(asked[1].startFolder, m_folder->shownPath());
        for (const OpenPanelRequest& request : asked) {
            QCOMPARE(request.contentType, ContentType::Folder);
            QVERIFY(request.showsHidden);
        }
        QCOMPARE(m_diagnoser->theDefaultURL(), QUrl::fromLocalFile(m_folder->shownPath()));
    }

    void cancellingChangesNothing()
    {
        m_diagnoser->setTheOutputText(u"before"_s);
        const QSignalSpy changed(m_diagnoser.get(), &Diagnoser::theOutputTextChanged);
        const QSignalSpy moved(m_diagnoser.get(), &Diagnoser::theDefaultURLChanged);
        m_diagnoser->getInfo();
        m_platform->panels.cancel();
        m_diagnoser->catalogue();
        m_platform->panels.confirmWithoutLocation();
        m_diagnoser->analyse(false);
        m_platform->panels.cancel();
        m_diagnoser->saveText();
        m_platform->panels.cancel();
        QCOMPARE(changed.count() + moved.count(), 0);
        QCOMPARE(m_diagnoser->theOutputText(), u"before"_s);
    }

    void infoCountsTheFolders()
    {
        m_folder->make("Persist/1.tracev3");
        m_folder->make("Persist/.hidden");
        m_folder->make("Persist/folder/file");
        m_folder->make("Special/1");
        m_folder->make("timesync/1");
        m_folder->make("timesync/2");
        m_folder->make("loose");
        m_files.alter = [](const FilePath& path, FileAttributes& file) {
            // All of them copies; one was written on 2024-02-29 at 12:05:09 UTC, a week and an hour
            // before now.
            file.created = FileTime(std::chrono::seconds(1709816700));
            file.modified = FileTime(
                std::chrono::seconds(path.filename() == ".hidden" ? 1709208309 : 1709816700));
        };
        run(&Diagnoser::getInfo);
        QCOMPARE(
            m_diagnoser->theOutputText(),
            u"Unified log information.  Check of log files in the diagnostics folder.\n"
            "\t4 items in the path %1:\n"
            "\t3 files in the Persist folder;\n"
            "\t1 files in the Special folder;\n"
            "\t0 files in the Signpost folder;\n"
            "\t2 files in the timesync folder.\n"
            "The oldest Persist log entry has a datestamp of 2024-02-29T12_05_09Z, 7.042 days ago.\n"_s
                .arg(m_folder->shownPath()));
    }

    void infoOfAnUnknownFolder()
    {
        run(&Diagnoser::getInfo);
        QVERIFY(m_diagnoser->theOutputText().endsWith(
            u"\t0 items in the path %1:\n"
            "\t0 files in the Persist folder;\n\t0 files in the Special folder;\n"
            "\t0 files in the Signpost folder;\n\t0 files in the timesync folder.\n"
            "Couldn't determine the oldest log entry.\n"_s.arg(m_folder->shownPath())));
    }

    void infoDatesTheOldestEntry()
    {
        std::filesystem::create_directory(m_folder->path("Persist"));
        run(&Diagnoser::getInfo); // empty, and so as old as this moment
        QVERIFY(m_diagnoser->theOutputText().endsWith(u"of 2024-03-07T13_05_09Z, 0 days ago.\n"));
        QLocale::setDefault(QLocale(u"de_DE"_s));
        m_folder->make("Persist/1");
        m_files.alter = [](const FilePath&, FileAttributes& file) { file.created = FileTime(); };
        run(&Diagnoser::getInfo);
        QVERIFY(
            m_diagnoser->theOutputText().endsWith(u"of 1970-01-01T00_00_00Z, 19790 days ago.\n"));
        m_files.alter = [](const FilePath&, FileAttributes& file) {
            file.created = FileTime(std::chrono::seconds(1709816709 - 108'000));
        };
        m_files.fails = [](const FilePath& path) { return path.filename() == "2"; };
        m_folder->make("Persist/2");
        run(&Diagnoser::getInfo);
        QVERIFY(m_diagnoser->theOutputText().endsWith(u", 1,25 days ago.\n"));
        m_files.fails = [](const FilePath& path) { return path.filename() != "Persist"; };
        run(&Diagnoser::getInfo);
        QVERIFY(m_diagnoser->theOutputText().endsWith(u", 0 days ago.\n"));
    }

    void daysHaveFourDigits_data()
    {
        QTest::addColumn<double>("number");
        QTest::addColumn<QLocale>("locale");
        QTest::addColumn<QString>("text");
        const QLocale c = QLocale::c();
        QTest::newRow("zero") << 0.0 << c << u"0"_s;
        QTest::newRow("whole") << 7.0 << c << u"7"_s;
        QTest::newRow("cut to four") << 12.34567 << c << u"12.35"_s;
        QTest::newRow("nothing to cut") << 0.5 << c << u"0.5"_s;
        QTest::newRow("small") << 0.000123456 << c << u"0.0001235"_s;
        QTest::newRow("large") << 1234567.0 << c << u"1235000"_s;
        QTest::newRow("no grouping") << 1234.0 << QLocale(u"en_US"_s) << u"1234"_s;
        QTest::newRow("comma") << 1234.5678 << QLocale(u"de_DE"_s) << u"1235"_s;
        QTest::newRow("decimal comma") << 3.14159 << QLocale(u"de_DE"_s) << u"3,142"_s;
        QTest::newRow("other digits") << 3.14159 << QLocale(u"ar_EG"_s) << u"٣٫١٤٢"_s;
    }

    void daysHaveFourDigits()
    {
        QFETCH(double, number);
        QFETCH(QLocale, locale);
        QFETCH(QString, text);
        QCOMPARE(withFourSignificantDigits(number, locale), text);
    }

    void cataloguesFourFolders()
    {
        for (const char* name :
             {"live.tracev3", "Persist/1.tracev3", "Special/2.tracev3", "Signpost/3.tracev3",
              "timesync/4.tracev3", "HighVolume/5.tracev3"})
            m_folder->make(name, "abc");
        m_files.alter = [](const FilePath&, FileAttributes& file) {
            file.created = file.modified = FileTime();
        };
        run(&Diagnoser::catalogue);
        run(&Diagnoser::catalogue); // of which nothing is left
        const QString rest =
            u"\t1970-01-01 01:00:00 +0100  1970-01-01 01:00:00 +0100  3 bytes, period 0.0 min\n"_s;
        const QStringList lines{u"/live.tracev3"_s + rest, u"Persist/1.tracev3"_s + rest,
                                u"Signpost/3.tracev3"_s + rest, u"Special/2.tracev3"_s + rest};
        QCOMPARE(m_diagnoser->theFileArray(), lines);
        QCOMPARE(m_diagnoser->theOutputText(),
                 u"Catalogue listing of %1 :\n\n"_s.arg(m_folder->shownPath())
                     + lines.join(QString()));
        QVERIFY(m_diagnoser->theStatsDict().isEmpty());
    }

    void catalogueSaysWhatItCannotList()
    {
        m_folder->make("Special/1.txt");
        run(&Diagnoser::catalogue);
        QCOMPARE(m_diagnoser->theOutputText(),
                 u"Catalogue listing of %1 :\n\n"
                 "The folder “%1/Persist” could not be listed: No such file or directory."
                 "The folder “%1/Signpost” could not be listed: No such file or directory."_s.arg(
                     m_folder->shownPath()));
    }

    void analysesAsText()
    {
        m_folder->make("1.txt",
                       rotationRecord("b", numberedRows(6)) + rotationRecord("a", numberedRows(6)));
        m_folder->make("2.txt", rotationRecord("b", numberedRows(7)));
        m_folder->make("3.txt", "\xff");
        m_diagnoser->analyse(false);
        m_platform->panels.confirm(m_folder->shownPath());

        QString rows;
        for (int number = 1; number <= 7; ++number)
            rows += u"\t%1 %2.0 p%2\n"_s.arg(number * 1000).arg(number);
        const QString a = u"a 2024-03-07 14:05:09 10485760:\n"_s + rows.chopped(13);
        const QString b = u"b 2024-03-07 14:05:09 10485760:\n"_s + rows;
        QCOMPARE(m_diagnoser->theFileArray(), (QStringList{u"a"_s, u"b"_s, u"b"_s}));
        QCOMPARE(m_diagnoser->theStatsDict(), (QHash<QString, QString>{{u"a"_s, a}, {u"b"_s, b}}));
        QCOMPARE(m_diagnoser->theOutputText(),
                 u"Analysis of %1 :\n\n"
                 "The file “%1/3.txt” could not be read: It is not text in UTF-8."_s.arg(
                     m_folder->shownPath())
                     + a + b + b);
    }

    void analysesAsValues()
    {
        m_folder->make("1.txt", rotationRecord("a", numberedRows(1) + "\n\n\n\n\n")
                                    + rotationRecord("none", "\n\n\n\n\n\n"));
        m_diagnoser->analyse(true);
        m_platform->panels.confirm(m_folder->shownPath());
        QCOMPARE(m_diagnoser->theOutputText(),
                 u"date,time,totalsize,filename,size,percent,process\n"
                 "2024-03-07,14:05:09,10485760,a,1000,1.0,p1\n"_s);
        QCOMPARE(m_diagnoser->theFileArray(), (QStringList{u"a"_s, u"none"_s}));
    }

    void analysesAnEmptyFolder()
    {
        m_diagnoser->analyse(false);
        m_platform->panels.confirm(m_folder->shownPath());
        QCOMPARE(m_diagnoser->theOutputText(),
                 u"Analysis of %1 :\n\n"_s.arg(m_folder->shownPath()));
        m_diagnoser->analyse(true);
        m_platform->panels.confirm(m_folder->shownPath() + u'/');
        QCOMPARE(m_diagnoser->theOutputText(),
                 u"date,time,totalsize,filename,size,percent,process\n"_s);
    }

    void analysisSaysWhatItCannotList()
    {
        m_diagnoser->analyse(false);
        m_platform->panels.confirm(m_folder->shownPath(u"missing"_s));
        QCOMPARE(m_diagnoser->theOutputText(),
                 u"Analysis of %1 :\n\n"
                 "The folder “%1” could not be listed: No such file or directory."_s.arg(
                     m_folder->shownPath(u"missing"_s)));
    }

    void savesTheTextAsAsked()
    {
        m_diagnoser->setTheOutputText(u"Zeile 📍\n"_s);
        m_diagnoser->saveText();
        m_diagnoser->setTheOutputText(u"later"_s);
        QCOMPARE(m_platform->panels.saveRequests.value(0).contentType, ContentType::Text);
        QCOMPARE(m_platform->panels.saveRequests.value(0).proposedName,
                 u"DiagnosticsAnalysis.txt"_s);
        m_folder->make("saved.txt", "a longer text that was there before");
        m_platform->panels.confirm(m_folder->shownPath(u"saved.txt"_s));
        QCOMPARE(m_folder->bytes("saved.txt"), QByteArray("Zeile 📍\n"));
        QCOMPARE(m_diagnoser->theOutputText(), u"later"_s);
    }

    void saveFailureIsAppended()
    {
        m_diagnoser->setTheOutputText(u"text"_s);
        m_diagnoser->saveText();
        m_platform->panels.confirm(m_folder->shownPath(u"missing/saved.txt"_s));
        QVERIFY(m_diagnoser->theOutputText().startsWith(
            u"textThe file “%1/missing/saved.txt” could not be written: "_s.arg(
                m_folder->shownPath())));
    }

    void workIsAnnounced()
    {
        const QSignalSpy working(m_diagnoser.get(), &Diagnoser::workingChanged);
        m_diagnoser->catalogue();
        QCOMPARE(working.count(), 0);
        m_platform->panels.confirm(m_folder->shownPath());
        QCOMPARE(working.count(), 2);
        QVERIFY(working[0][0].toBool() && !working[1][0].toBool());
    }

private:
    void run(void (Diagnoser::*command)())
    {
        ((*m_diagnoser).*command)();
        m_platform->panels.confirm(m_folder->shownPath());
    }

    std::unique_ptr<LogFolder> m_folder;
    std::unique_ptr<FakePlatform> m_platform;
    FakeFileManager m_files;
    std::shared_ptr<Diagnoser> m_diagnoser;
};

TESSEL_TEST(TestDiagnoser)
#include "tst_diagnoser.moc"
