// SPDX-License-Identifier: MIT
#include "model/entrylistfile.h"
#include "model/logger.h"
#include "support/fakeplatform.h"
#include "support/sampleentries.h"
#include "support/testcase.h"

#include <QFile>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

/// The log model without a store: its fields, its notes, its panels and files.
class TestLogger : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestCase::init();
        m_fake = std::make_unique<FakePlatform>();
        m_logger = Logger::make(m_fake->platform);
    }

    void cleanup()
    {
        m_logger.reset();
        m_fake.reset();
    }

    void startsEmpty()
    {
        QVERIFY(m_logger->logList().isEmpty());
        QCOMPARE(m_logger->theDate(), m_fake->clock.currentTime);
        QCOMPARE(m_logger->theDateSecs(), u"00"_s);
        QCOMPARE(m_logger->tzStr(), QString());
        QCOMPARE(m_logger->logDateStr(), u"Tessel"_s);
        QVERIFY(!m_logger->archURL());
        QVERIFY(!m_logger->usingArchive());
    }

    void archiveChoice_data()
    {
        QTest::addColumn<QString>("before"); // empty: the local store
        QTest::addColumn<bool>("confirms");
        QTest::addColumn<QString>("chosen"); // empty: no location
        QTest::addColumn<QString>("after");
        QTest::newRow("local to archive")
            << QString() << true << u"/a.logarchive"_s << u"/a.logarchive"_s;
        QTest::newRow("archive to archive")
            << u"/a.logarchive"_s << true << u"/b.logarchive"_s << u"/b.logarchive"_s;
        QTest::newRow("no location keeps the archive")
            << u"/a.logarchive"_s << true << QString() << u"/a.logarchive"_s;
        QTest::newRow("no location keeps the local store")
            << QString() << true << QString() << QString();
        QTest::newRow("cancel returns to the local store")
            << u"/a.logarchive"_s << false << QString() << QString();
        QTest::newRow("cancel at the local store") << QString() << false << QString() << QString();
    }

    void archiveChoice()
    {
        QFETCH(QString, before);
        QFETCH(bool, confirms);
        QFETCH(QString, chosen);
        QFETCH(QString, after);
        if (!before.isEmpty()) {
            m_logger->chooseArchive();
            m_fake->panels.confirm(before);
        }
        m_logger->chooseArchive();
        QCOMPARE(m_fake->panels.openRequests.last().contentType, ContentType::LogArchive);
        QCOMPARE(m_fake->panels.openRequests.last().confirmText, u"Open Logarchive"_s);
        if (!confirms)
            m_fake->panels.cancel();
        else if (chosen.isEmpty())
            m_fake->panels.confirmWithoutLocation();
        else
            m_fake->panels.confirm(chosen);
        QCOMPARE(m_logger->usingArchive(), !after.isEmpty());
        QCOMPARE(m_logger->archURL().value_or(QUrl()).toLocalFile(), after);
    }

    void sameArchiveAgainSignalsNothing()
    {
        m_logger->chooseArchive();
        m_fake->panels.confirm(u"/a.logarchive"_s);
        const QSignalSpy urlChanged(m_logger.get(), &Logger::archURLChanged);
        const QSignalSpy usingChanged(m_logger.get(), &Logger::usingArchiveChanged);
        m_logger->chooseArchive();
        m_fake->panels.confirm(u"/a.logarchive"_s);
        QCOMPARE(urlChanged.size() + usingChanged.size(), 0);
        m_logger->chooseArchive();
        m_fake->panels.confirm(u"/b.logarchive"_s);
        QCOMPARE(urlChanged.size(), 1);
        QCOMPARE(usingChanged.size(), 0);
    }

    void noteGoesToTheFirstOfEachIdentity()
    {
        QList<LogEntry> entries = sampleEntries();
        entries[3].id = entries[2].id;
        m_logger->setLogList(entries);
        const QSignalSpy changed(m_logger.get(), &Logger::logListChanged);
        m_logger->setNote({entries[0].id, entries[2].id, LogEntry::makeId()}, u"note"_s);
        QCOMPARE(changed.size(), 1);
        QCOMPARE(m_logger->logList().size(), 4);
        QCOMPARE(m_logger->logList().at(0).userNote, Text(u"note"_s));
        QCOMPARE(m_logger->logList().at(1).userNote, entries[1].userNote);
        QCOMPARE(m_logger->logList().at(2).userNote, Text(u"note"_s));
        QVERIFY(!m_logger->logList().at(3).userNote);
    }

    void noteReplacesAndMayBeEmpty()
    {
        setEntries();
        const QUuid noted = m_logger->logList().at(1).id;
        m_logger->setNote({noted}, QString());
        QVERIFY(m_logger->logList().at(1).userNote.has_value());
        QVERIFY(m_logger->logList().at(1).userNote->isEmpty());
    }

    void noteForNobodySignalsNothing()
    {
        setEntries();
        const QSignalSpy changed(m_logger.get(), &Logger::logListChanged);
        m_logger->setNote({}, u"note"_s);
        m_logger->setNote({LogEntry::makeId()}, u"note"_s);
        m_logger->setNote({m_logger->logList().at(1).id},
                          m_logger->logList().at(1).userNote->toString());
        QCOMPARE(changed.size(), 0);
    }

    void emptyListOpensNoSavePanel()
    {
        m_logger->saveJSON(QString());
        m_logger->saveRTF();
        QVERIFY(m_fake->panels.saveRequests.isEmpty());
    }

    void proposedNames_data()
    {
        QTest::addColumn<QString>("suffix");
        QTest::addColumn<QString>("json");
        QTest::newRow("no search") << QString() << u"Tessel2024_03_07_14-05-09.tessel"_s;
        QTest::newRow("with a search")
            << u" messages"_s << u"Tessel2024_03_07_14-05-09 messages.tessel"_s;
    }

    void proposedNames()
    {
        QFETCH(QString, suffix);
        // The list's date is in the user's zone, whatever zone it was given in.
        const QDateTime start(QDate(2024, 3, 7), QTime(13, 5), QTimeZone::utc());
        QVERIFY(!m_logger->getLog(start, u"09"_s, QString(), nullptr, true, 5));
        setEntries();
        m_logger->saveJSON(suffix);
        m_logger->saveRTF();
        QCOMPARE(m_fake->panels.saveRequests.size(), 2);
        QCOMPARE(m_fake->panels.saveRequests.at(0).contentType, ContentType::EntryList);
        QTEST(m_fake->panels.saveRequests.at(0).proposedName, "json");
        QCOMPARE(m_fake->panels.saveRequests.at(1).contentType, ContentType::RichText);
        QCOMPARE(m_fake->panels.saveRequests.at(1).proposedName,
                 u"Tessel2024_03_07_14-05-09.rtf"_s);
        m_fake->panels.cancel();
        m_fake->panels.cancel();
    }

    void savesTheListAsItIsAtTheConfirmation()
    {
        setEntries();
        m_logger->saveJSON(QString());
        m_logger->setNote({m_logger->logList().first().id}, u"after the command"_s);
        m_fake->panels.confirm(path(u"list.tessel"_s));
        QVERIFY(m_fake->alerts.shown.isEmpty());
        const auto saved = loadEntryList(path(u"list.tessel"_s));
        QVERIFY(saved);
        QCOMPARE(saved->size(), 4);
        for (int i = 0; i < 4; ++i)
            QCOMPARE(firstDifference(saved->at(i), m_logger->logList().at(i)), QString());
    }

    void richTextHoldsTheListOfTheCommand()
    {
        setEntries();
        m_logger->saveRTF();
        m_logger->setNote({m_logger->logList().first().id}, u"after the command"_s);
        m_fake->panels.confirm(path(u"list.rtf"_s));
        QVERIFY(m_fake->alerts.shown.isEmpty());
        QFile file(path(u"list.rtf"_s));
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray document = file.readAll();
        QVERIFY(document.contains("look here"));
        QVERIFY(!document.contains("after the command"));
    }

    void failedSaveIsAnAlert_data()
    {
        QTest::addColumn<bool>("isJson");
        QTest::newRow("entry list") << true;
        QTest::newRow("rich text") << false;
    }

    void failedSaveIsAnAlert()
    {
        QFETCH(bool, isJson);
        setEntries();
        if (isJson)
            m_logger->saveJSON(QString());
        else
            m_logger->saveRTF();
        const QString nowhere = path(u"missing/list"_s);
        m_fake->panels.confirm(nowhere);
        QCOMPARE(m_fake->alerts.shown.size(), 1);
        QCOMPARE(m_fake->alerts.shown.first().message, u"An error occurred in your last action:"_s);
        QVERIFY(m_fake->alerts.shown.first().informativeText.contains(nowhere));
        QCOMPARE(m_logger->logList().size(), 4);
    }

    void readingReplacesListAndTitle()
    {
        const QList<LogEntry> entries{sampleLogMessage(), sampleBoundary()};
        setEntries();
        const QSignalSpy listChanged(m_logger.get(), &Logger::logListChanged);
        const QSignalSpy titleChanged(m_logger.get(), &Logger::logDateStrChanged);
        m_logger->readJSON();
        QCOMPARE(m_fake->panels.openRequests.last().contentType, ContentType::EntryList);
        QCOMPARE(m_fake->panels.openRequests.last().confirmText, u"Open"_s);
        m_fake->panels.confirm(savedList(entries));
        QCOMPARE(listChanged.size(), 1);
        QCOMPARE(titleChanged.size(), 1);
        QCOMPARE(m_logger->logList().size(), 2);
        QCOMPARE(m_logger->logList().first().id, entries.first().id);
        QCOMPARE(m_logger->theDate(),
                 QDateTime(QDate(2024, 3, 7), QTime(13, 5, 9, 31), QTimeZone::utc()));
        QCOMPARE(m_logger->theDateSecs(), u"09"_s);
        QCOMPARE(m_logger->logDateStr(), u"Tessel 2024_03_07_14-05-09"_s);
        QCOMPARE(m_logger->tzStr(), QString());
    }

    void readingInAnotherZone()
    {
        m_fake->clock.zone = QTimeZone("America/St_Johns");
        QVERIFY(m_logger->openEntryList(savedList({sampleLogMessage()})));
        QCOMPARE(m_logger->logDateStr(), u"Tessel 2024_03_07_09-35-09"_s);
    }

    void readingAnEmptyListKeepsTheTitle()
    {
        QVERIFY(m_logger->openEntryList(savedList({sampleLogMessage()})));
        const QDateTime date = m_logger->theDate();
        QVERIFY(m_logger->openEntryList(savedList({})));
        QVERIFY(m_logger->logList().isEmpty());
        QCOMPARE(m_logger->theDate(), date);
        QCOMPARE(m_logger->logDateStr(), u"Tessel 2024_03_07_14-05-09"_s);
        QVERIFY(m_fake->alerts.shown.isEmpty());
    }

    void unreadableFirstDateMeansNow()
    {
        LogEntry entry = sampleLogMessage();
        entry.date = u"some day"_s;
        m_fake->clock.currentTime = QDateTime(QDate(2025, 1, 2), QTime(3, 4, 5), QTimeZone::utc());
        QVERIFY(m_logger->openEntryList(savedList({entry, sampleLogMessage()})));
        QCOMPARE(m_logger->theDate(), m_fake->clock.currentTime);
        QCOMPARE(m_logger->logDateStr(), u"Tessel 2025_01_02_04-04-05"_s);
        QVERIFY(m_fake->alerts.shown.isEmpty());
    }

    void noLocationIsSilent_data()
    {
        QTest::addColumn<bool>("confirms");
        QTest::newRow("cancelled") << false;
        QTest::newRow("no location") << true;
    }

    void noLocationIsSilent()
    {
        QFETCH(bool, confirms);
        setEntries();
        m_logger->saveJSON(QString());
        m_logger->saveRTF();
        m_logger->readJSON();
        while (m_fake->panels.isOpen()) {
            if (confirms)
                m_fake->panels.confirmWithoutLocation();
            else
                m_fake->panels.cancel();
        }
        m_logger->readJSON();
        m_fake->panels.confirm(QUrl(u"https://example.org/list.tessel"_s)); // not a local file
        QVERIFY(m_fake->alerts.shown.isEmpty());
        QCOMPARE(m_logger->logList().size(), 4);
    }

    void failedReadIsAnAlertAndChangesNothing()
    {
        setEntries();
        const QString bad = path(u"bad.tessel"_s);
        QFile file(bad);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(R"([{"id": 7}])");
        file.close();
        const QSignalSpy changed(m_logger.get(), &Logger::logListChanged);
        m_logger->readJSON();
        m_fake->panels.confirm(bad);
        QCOMPARE(m_fake->alerts.shown.size(), 1);
        QCOMPARE(m_fake->alerts.shown.first().message, u"An error occurred in your last action:"_s);
        QCOMPARE(
            m_fake->alerts.shown.first().informativeText,
            u"The entry list “%1” could not be read. In entry 1 the member “id” is not a UUID."_s
                .arg(bad));
        QCOMPARE(changed.size(), 0);
        QCOMPARE(m_logger->logList().size(), 4);
        QCOMPARE(m_logger->logDateStr(), u"Tessel"_s);
    }

    void panelsOutliveTheWindow()
    {
        setEntries();
        const std::weak_ptr<Logger> watched = m_logger;
        m_logger->saveJSON(QString());
        m_logger.reset();
        QVERIFY(!watched.expired());
        m_fake->panels.confirm(path(u"list.tessel"_s));
        QVERIFY(watched.expired());
        const auto saved = loadEntryList(path(u"list.tessel"_s));
        QVERIFY(saved);
        QCOMPARE(saved->size(), 4);
    }

private:
    QString path(const QString& name) const { return m_fake->folder.filePath(name); }

    QString savedList(const QList<LogEntry>& entries) const
    {
        const QString file = path(u"saved.tessel"_s);
        return saveEntryList(entries, file) ? file : QString();
    }

    void setEntries() { m_logger->setLogList(sampleEntries()); }

    std::unique_ptr<FakePlatform> m_fake;
    std::shared_ptr<Logger> m_logger;
};

TESSEL_TEST(TestLogger)
#include "tst_logger.moc"
