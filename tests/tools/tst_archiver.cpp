// SPDX-License-Identifier: MIT
#include "platform/propertylist.h"
#include "support/fakeplatform.h"
#include "support/logfolder.h"
#include "support/testcase.h"
#include "tools/archiver.h"
#include "tools/diagnoser.h"
#include "tools/statisticstext.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QByteArray versionList = "<plist version=\"1.0\"><dict><key>Version</key><integer>8</integer>"
                               "<key>ttl01</key><integer>18446744073709551615</integer>"
                               "<key>ttl14</key><dict><key>UUID</key><string>A</string></dict>"
                               "</dict></plist>";

} // namespace

class TestArchiver : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestCase::init();
        m_folder = std::make_unique<LogFolder>();
        m_platform = std::make_unique<FakePlatform>();
        m_files = FakeFileManager();
        m_archiver = Archiver::make(m_platform->platform, m_files);
    }

    void cancellingStops()
    {
        m_archiver->setTheOutputText(u"before"_s);
        m_archiver->createArchive(true);
        m_platform->panels.cancel();
        QCOMPARE(m_archiver->theOutputText(), u"before"_s);
        QVERIFY(!m_platform->panels.isOpen());

        m_archiver->createArchive(true);
        m_platform->panels.confirm(m_folder->shownPath(u"db"_s));
        const OpenPanelRequest source = m_platform->panels.openRequests.last();
        QCOMPARE(source.contentType, ContentType::Folder);
        QVERIFY(source.showsHidden);
        QCOMPARE(source.startFolder, u""_s);
        const SavePanelRequest destination = m_platform->panels.saveRequests.value(0);
        QCOMPARE(destination.contentType, ContentType::LogArchive);
        QCOMPARE(destination.proposedName, u"db.logarchive"_s);
        m_platform->panels.cancel();
        QCOMPARE(m_archiver->theOutputText(), here(u"Source: ~/db\n"_s));
    }

    void everythingFindsItsPlace()
    {
        makeSource();
        create();
        QCOMPARE(
            m_folder->files("db.logarchive"),
            (QStringList{u"00/AB"_s, u"Extra/logdata.statistics.0.txt"_s, u"Extra/version.plist"_s,
                         u"HighVolume/4.tracev3"_s, u"Info.plist"_s, u"Persist/1.tracev3"_s,
                         u"Signpost/3.tracev3"_s, u"Special/2.tracev3"_s, u"dsc/CD"_s,
                         u"logdata.LiveData.tracev3"_s, u"timesync/5.timesync"_s}));
        QCOMPARE(m_folder->bytes("db.logarchive/Persist/1.tracev3"),
                 "diagnostics/Persist/1.tracev3"_ba);
        QCOMPARE(m_archiver->theOutputText(),
                 here(u"Source: ~/db\nDestination:~/db.logarchive\n"_s));
        QVERIFY(m_archiver->theFileArray().isEmpty() && m_archiver->theStatsDict().isEmpty());
    }

    void progressAddsUp()
    {
        makeSource();
        QList<CopyProgress> steps;
        connect(m_archiver.get(), &Archiver::copied, this,
                [&steps](const CopyProgress& progress) { steps.append(progress); });
        create();
        QVERIFY(std::ranges::is_sorted(steps, {}, &CopyProgress::items));
        // Ten files and links, in eight folders: "uuidtext" with two, and five of log data.
        std::uint64_t bytes = 0;
        for (const QString& name : m_folder->files("db.logarchive"))
            if (name != u"Info.plist")
                bytes += m_folder->bytes(("db.logarchive/" + name.toStdString())).size();
        QCOMPARE(steps.last().items, 18U);
        QCOMPARE(steps.last().bytes, bytes);
    }

    void debugNamesEveryStep()
    {
        makeSource();
        create(true);
        QCOMPARE(m_archiver->theOutputText(),
                 here(u"Source: ~/db\n"
                      "Destination:~/db.logarchive\n"
                      "copying from ~/db/uuidtext to ~/db.logarchive\n"
                      "copying from ~/db/diagnostics/Persist to ~/db.logarchive/Persist\n"
                      "copying from ~/db/diagnostics/Special to ~/db.logarchive/Special\n"
                      "copying from ~/db/diagnostics/Signpost to ~/db.logarchive/Signpost\n"
                      "copying from ~/db/diagnostics/HighVolume to ~/db.logarchive/HighVolume\n"
                      "copying from ~/db/diagnostics/timesync to ~/db.logarchive/timesync\n"
                      "creating folder at ~/db.logarchive/Extra\n"
                      "getting contents of folder at ~/db/diagnostics\n"
                      "copying from ~/db/diagnostics/logdata.LiveData.tracev3 to "
                      "~/db.logarchive/logdata.LiveData.tracev3\n"
                      "copying from ~/db/diagnostics/logdata.statistics.0.txt to "
                      "~/db.logarchive/Extra/logdata.statistics.0.txt\n"
                      "copying from ~/db/diagnostics/version.plist to "
                      "~/db.logarchive/Extra/version.plist\n"
                      "opening property list at ~/db.logarchive/Extra/version.plist\n"
                      "building export dictionary\n"
                      "writing export dictionary to ~/db.logarchive/Info.plist\n"_s));
    }

    void infoHasItsTypes()
    {
        makeSource();
        m_platform->clock.ticks = std::numeric_limits<quint64>::max();
        create();
        const QVariantMap list = info();
        const QVariantMap time = list.value(u"EndTimeRef"_s).toMap();
        QCOMPARE(time.keys(), (QStringList{u"ContinuousTime"_s, u"UUID"_s}));
        QCOMPARE(time.value(u"ContinuousTime"_s), QVariant(std::numeric_limits<quint64>::max()));
        static const QRegularExpression uuid(u"^[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}$"_s);
        QVERIFY(uuid.match(time.value(u"UUID"_s).toString()).hasMatch());

        const QVariantMap oldest{{u"OldestTimeRef"_s, time}};
        const QVariantMap ttl{{u"ttl01"_s, std::numeric_limits<quint64>::max()},
                              {u"ttl14"_s, QVariantMap{{u"UUID"_s, u"A"_s}}}};
        QCOMPARE(list, (QVariantMap{{u"EndTimeRef"_s, time},
                                    {u"LiveMetadata"_s, oldest},
                                    {u"OSArchiveVersion"_s, qint64{4}},
                                    {u"OSLoggingSupportProject"_s, u"libtrace-1147.80.3"_s},
                                    {u"OSLoggingSupportVersion"_s, 1147.8},
                                    {u"PersistMetadata"_s, oldest},
                                    {u"SpecialMetadata"_s,
                                     QVariantMap{{u"OldestTimeRef"_s, time}, {u"TTL"_s, ttl}}}}));
        QCOMPARE(list.value(u"OSLoggingSupportVersion"_s).typeId(), QMetaType::Double);

        std::filesystem::remove_all(m_folder->path("db.logarchive"));
        create();
        QVERIFY(info().value(u"EndTimeRef"_s)
                != list.value(u"EndTimeRef"_s)); // another UUID each time
    }

    void versionLosesItsOwnKey_data()
    {
        QTest::addColumn<QByteArray>("version");
        QTest::addColumn<bool>("isEmpty");
        QTest::newRow("three keys") << versionList << false;
        QTest::newRow("only the version")
            << "<plist><dict><key>Version</key><integer>8</integer></dict></plist>"_ba << false;
        QTest::newRow("no keys") << "<plist><dict/></plist>"_ba << true;
        QTest::newRow("damaged") << "<plist><dict><key>"_ba << true;
        QTest::newRow("no dictionary") << "<plist><array/></plist>"_ba << true;
        QTest::newRow("missing") << QByteArray() << true;
    }

    void versionLosesItsOwnKey()
    {
        QFETCH(QByteArray, version);
        QFETCH(bool, isEmpty);
        makeSource();
        if (version.isEmpty())
            std::filesystem::remove(m_folder->path("db/diagnostics/version.plist"));
        else
            m_folder->make("db/diagnostics/version.plist", version);
        create(true);
        QCOMPARE(m_archiver->theOutputText().contains(
                     u"version.plist\ntheImportDict is empty or missing.\n"
                     "building export dictionary\n"),
                 isEmpty);
        const QVariantMap ttl = info().value(u"SpecialMetadata"_s).toMap().value(u"TTL"_s).toMap();
        QCOMPARE(ttl.size(), version == versionList ? 2 : 0);
        QVERIFY(!ttl.contains(u"Version"_s));
        QVERIFY(info().value(u"SpecialMetadata"_s).toMap().contains(u"TTL"_s));
    }

    void existingDestinationIsKept()
    {
        makeSource();
        create();
        m_folder->make("db.logarchive/Persist/1.tracev3", "changed");
        m_folder->make("db.logarchive/Info.plist", "old");
        m_archiver->setTheOutputText({});
        create();
        const QString text = m_archiver->theOutputText();
        QCOMPARE(text.count(u"exists already."), 6);
        QVERIFY(text.endsWith(
            here(u"The folder “~/db.logarchive/Extra” could not be created: File exists."_s)));
        QCOMPARE(m_folder->bytes("db.logarchive/Persist/1.tracev3"), "changed"_ba);
        QCOMPARE(info().value(u"SpecialMetadata"_s).toMap().value(u"TTL"_s).toMap().size(), 2);
    }

    void linksAtTheTopAreFollowed()
    {
        makeSource();
        m_folder->make("elsewhere/Info.plist", "of the source");
        for (const char* name : {"uuidtext", "diagnostics/Persist"}) {
            const FilePath folder = m_folder->path("db" / FilePath(name));
            std::filesystem::rename(folder, m_folder->path("elsewhere" / folder.filename()));
            std::filesystem::create_symlink(m_folder->path("elsewhere" / folder.filename()),
                                            folder);
        }
        const FilePath strings = m_folder->path("elsewhere/uuidtext");
        std::filesystem::create_symlink("../elsewhere/Info.plist", strings / "Info.plist");
        std::filesystem::permissions(strings, std::filesystem::perms(0555));
        create();
        QCOMPARE(
            m_archiver->theOutputText(),
            here(u"Source: ~/db\nDestination:~/db.logarchive\nCouldn't save exported file."_s));
        QCOMPARE(m_folder->files("elsewhere"),
                 (QStringList{u"Info.plist"_s, u"Persist/1.tracev3"_s, u"uuidtext/00/AB"_s,
                              u"uuidtext/Info.plist"_s, u"uuidtext/dsc/CD"_s}));
        QCOMPARE(m_folder->bytes("elsewhere/Info.plist"), "of the source"_ba);
        QCOMPARE(m_folder->files("db.logarchive/Persist"), QStringList{u"1.tracev3"_s});
        const FilePath archive = m_folder->path("db.logarchive");
        QCOMPARE(std::filesystem::status(archive).permissions(), std::filesystem::perms(0555));
        std::filesystem::permissions(archive, std::filesystem::perms(0755));
        std::filesystem::permissions(strings, std::filesystem::perms(0755));
    }

    void failuresAreReportedInPlace_data()
    {
        QTest::addColumn<QByteArray>("failing");
        QTest::addColumn<QString>("text"); // after the first two lines
        QTest::newRow("a folder") << "Special"_ba << u"[Special failed]"_s;
        QTest::newRow("a loose file")
            << "logdata.statistics.0.txt"_ba << u"[logdata.statistics.0.txt failed]"_s;
        QTest::newRow("creating the folder") << "Extra"_ba << u"[Extra failed]"_s;
        QTest::newRow("listing") << "diagnostics"_ba << u"[diagnostics failed]"_s;
        QTest::newRow("the property list") << "Info.plist"_ba << u"Couldn't save exported file."_s;
        QTest::newRow("version") << "version.plist"_ba << u"[version.plist failed]"_s;
    }

    void failuresAreReportedInPlace()
    {
        QFETCH(QByteArray, failing);
        QFETCH(QString, text);
        makeSource();
        m_files.fails = [failing](const FilePath& path) {
            return path.filename() == failing.toStdString();
        };
        create();
        QCOMPARE(m_archiver->theOutputText(),
                 here(u"Source: ~/db\nDestination:~/db.logarchive\n"_s) + text);
        QCOMPARE(info().isEmpty(), failing == "Info.plist");
        const bool hasLooseFiles = failing != "Extra" && failing != "diagnostics";
        QCOMPARE(std::filesystem::exists(m_folder->path("db.logarchive/logdata.LiveData.tracev3")),
                 hasLooseFiles);
    }

    void archiveIsReadLikeItsSource()
    {
        makeSource();
        create();
        const auto diagnoser = Diagnoser::make(m_platform->platform, m_files);
        const auto below = [](const QString& text) { return text.sliced(text.indexOf(u'\n')); };
        diagnoser->analyse(false);
        m_platform->panels.confirm(m_folder->shownPath(u"db/diagnostics"_s));
        m_archiver->analyse(false);
        m_platform->panels.confirm(m_folder->shownPath(u"db.logarchive"_s));
        QVERIFY(m_archiver->theOutputText().startsWith(
            here(u"Analysis of ~/db.logarchive :\n\na 2024"_s)));
        QCOMPARE(below(m_archiver->theOutputText()), below(diagnoser->theOutputText()));
        QCOMPARE(m_archiver->theStatsDict(), diagnoser->theStatsDict());

        m_archiver->catalogue();
        m_platform->panels.confirm(m_folder->shownPath(u"db.logarchive"_s));
        QVERIFY(m_archiver->theOutputText().startsWith(
            here(u"Catalogue listing of ~/db.logarchive :\n\n/logdata.LiveData.tracev3\t"_s)));
        QStringList names;
        for (const QString& line : m_archiver->theFileArray())
            names.append(line.section(u'\t', 0, 0));
        QCOMPARE(names, (QStringList{u"/logdata.LiveData.tracev3"_s, u"Persist/1.tracev3"_s,
                                     u"Signpost/3.tracev3"_s, u"Special/2.tracev3"_s}));
    }

    void asksForArchives()
    {
        m_archiver->saveText();
        QCOMPARE(m_platform->panels.saveRequests.value(0).proposedName, u"ArchiveAnalysis.txt"_s);
        m_archiver->catalogue();
        m_archiver->analyse(true);
        for (const OpenPanelRequest& request : m_platform->panels.openRequests) {
            QCOMPARE(request.contentType, ContentType::LogArchive);
            QVERIFY(!request.showsHidden);
            QCOMPARE(request.startFolder, u""_s);
        }
    }

    void archiveWithoutExtraIsReported()
    {
        m_archiver->analyse(false);
        m_platform->panels.confirm(m_folder->shownPath());
        QCOMPARE(m_archiver->theOutputText(),
                 here(u"Analysis of ~ :\n\n"
                      "The folder “~/Extra” could not be listed: No such file or directory."_s));
    }

private:
    void makeSource()
    {
        for (const char* name :
             {"uuidtext/00/AB", "uuidtext/dsc/CD", "diagnostics/Persist/1.tracev3",
              "diagnostics/Special/2.tracev3", "diagnostics/Signpost/3.tracev3",
              "diagnostics/HighVolume/4.tracev3", "diagnostics/timesync/5.timesync",
              "diagnostics/logdata.LiveData.tracev3", "diagnostics/other/6"})
            m_folder->make("db" / FilePath(name), name);
        m_folder->make("db/diagnostics/logdata.statistics.0.txt",
                       rotationRecord("a", numberedRows(6)));
        m_folder->make("db/diagnostics/version.plist", versionList);
    }

    void create(bool debug = false)
    {
        m_archiver->createArchive(debug);
        m_platform->panels.confirm(m_folder->shownPath(u"db"_s));
        m_platform->panels.confirm(m_folder->shownPath(u"db.logarchive"_s));
    }
    QVariantMap info() const
    {
        return propertyListFrom(m_folder->bytes("db.logarchive/Info.plist"))
            .value_or(QVariantMap());
    }
    /// The text with the folder's path in place of "~".
    QString here(QString text) const { return text.replace(u'~', m_folder->shownPath()); }

    std::unique_ptr<LogFolder> m_folder;
    std::unique_ptr<FakePlatform> m_platform;
    FakeFileManager m_files;
    std::shared_ptr<Archiver> m_archiver;
};

TESSEL_TEST(TestArchiver)
#include "tst_archiver.moc"
