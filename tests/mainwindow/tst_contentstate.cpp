// SPDX-License-Identifier: MIT
#include "mainwindow/contentstate.h"
#include "model/entrylistfile.h"
#include "platform/demonstrationstore.h"
#include "platform/logstore/entry.h"
#include "platform/logstore/entryfilter.h"
#include "settings/predicatelibrary.h"
#include "support/fakeplatform.h"
#include "support/sampleentries.h"
#include "support/testcase.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

/// Lets only the kernel's entries through.
class KernelFilter final : public logstore::EntryFilter
{
public:
    bool matches(const logstore::Entry& entry) const override
    {
        return entry.process() == "kernel";
    }
};

LogEntry entryWithMessage(const QString& message)
{
    LogEntry entry = sampleLogMessage();
    entry.composedMessage = message;
    return entry;
}

QStringList messagesOf(const QList<LogEntry>& entries)
{
    QStringList messages;
    for (const LogEntry& entry : entries)
        messages.append(entry.composedMessage.toString());
    return messages;
}

} // namespace

/// The main window's fields and commands, without a window.
class TestContentState : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { qRegisterMetaType<QSet<QUuid>>(); }

    void init()
    {
        TestCase::init();
        m_fake = std::make_unique<FakePlatform>();
        m_openedWindows.clear();
        m_builtPredicates.clear();
        m_predicateError.reset();
        m_filter.reset();
        makeState();
    }

    void cleanup()
    {
        m_state.reset();
        m_fake.reset();
    }

    void freshWindow()
    {
        QCOMPARE(state().predicate.value(), QString());
        QCOMPARE(state().period.value(), u"5.0"_s);
        QCOMPARE(state().maxCount.value(), u"1000"_s);
        QVERIFY(!state().fullMode);
        QVERIFY(!state().showSignposts);
        QCOMPARE(state().predList.value(), defaultPredicateTexts());
        QCOMPARE(state().predNames.value(), defaultPredicateNames());
        QCOMPARE(state().predIndex.value(), 0);
        QCOMPARE(state().theSecs.value(), u"00"_s);
        QCOMPARE(state().theFontSize.value(), 12.0);
        QCOMPARE(state().theStartDate.value(), m_fake->clock.currentTime);
        QCOMPARE(state().searchTypeIndex.value(), 0);
        QVERIFY(!state().isSearching());
        QCOMPARE(state().windowTitle(), u"Tessel"_s);
        QCOMPARE(state().countText(), u"0 entries"_s);
    }

    void storedPreferencesAreTaken()
    {
        UserDefaults& defaults = m_fake->defaults;
        defaults.set(u"predicate"_s, u"text"_s);
        defaults.set(u"period"_s, QString());
        defaults.set(u"maxCount"_s, u"20"_s);
        defaults.set(u"fullMode"_s, true);
        defaults.set(u"showSignposts"_s, true);
        defaults.set(u"predNames"_s, QStringList{u"one"_s});
        defaults.set(u"specPred"_s, u"special"_s);
        defaults.set(u"selectText"_s, u"gloss"_s);
        makeState();
        QCOMPARE(state().predicate.value(), u"text"_s);
        QCOMPARE(state().period.value(), QString());
        QCOMPARE(state().maxCount.value(), u"20"_s);
        QVERIFY(state().fullMode);
        QVERIFY(state().showSignposts);
        QCOMPARE(state().predNames.value(), QStringList{u"one"_s});
        QCOMPARE(state().predList.value(), defaultPredicateTexts());
        QCOMPARE(state().specPred.value(), u"special"_s);
        QCOMPARE(state().selectText.value(), u"gloss"_s);
    }

    void laterWritesStayUnseen()
    {
        m_fake->defaults.set(u"period"_s, u"60"_s);
        QCOMPARE(state().period.value(), u"5.0"_s);
        state().period = u"7"_s;
        QCOMPARE(m_fake->defaults.string(u"period"_s), u"60"_s);
    }

    void fetchPassesWhatWasTyped()
    {
        useDemonstration();
        m_filter = std::make_shared<KernelFilter>();
        state().maxCount = u"7"_s;
        state().predIndex = 1;
        state().predicate = u"com.apple.kernel"_s;
        state().theSecs = u"33"_s;
        state().getLog();
        QCOMPARE(m_builtPredicates.size(), 1);
        QCOMPARE(m_builtPredicates.first().arguments, QStringList{u"com.apple.kernel"_s});
        QCOMPARE(state().logger().logList().size(), 7);
        for (const LogEntry& entry : state().logger().logList())
            QCOMPARE(entry.process.toString(), u"kernel"_s);
        QCOMPARE(state().countText(), u"7 entries"_s);
        QCOMPARE(state().windowTitle(), u"Tessel 2024_03_07_13-05-33"_s);
    }

    void fetchReadsTheSpecialPredicateAfresh()
    {
        state().predIndex = 5;
        state().getLog();
        QVERIFY(m_builtPredicates.isEmpty());
        m_fake->defaults.set(u"specPred"_s, u"subsystem == “a.b”"_s);
        state().getLog();
        QCOMPARE(m_builtPredicates.size(), 1);
        QCOMPARE(m_builtPredicates.first().format, u"subsystem == \"a.b\""_s);
    }

    void wrongPredicateIsAnAlertAndNoFetch()
    {
        const QList<LogEntry> before = shownSample();
        m_predicateError = u"No such field: colour."_s;
        state().predIndex = 8;
        state().getLog();
        QCOMPARE(m_fake->alerts.shown.size(), 1);
        QCOMPARE(m_fake->alerts.shown.first().message, u"An error occurred in your last action:"_s);
        QCOMPARE(m_fake->alerts.shown.first().informativeText, u"No such field: colour."_s);
        QVERIFY(m_fake->logStores.opened.isEmpty());
        QCOMPARE(state().logger().logList().size(), before.size());
        QCOMPARE(state().windowTitle(), u"Tessel"_s);
    }

    void fetchKeepsSearchAndSelection()
    {
        useDemonstration();
        const QList<LogEntry> before = shownSample();
        state().readJSON();
        state().selection = QSet<QUuid>{before.first().id};
        state().searchQuery = u"disk"_s;
        state().runSearch(u"disk"_s);
        state().getLog();
        QVERIFY(state().logger().logList().size() > 100);
        QVERIFY(state().isSearching());
        QCOMPARE(messagesOf(state().shownEntries()),
                 (QStringList{u"Disk full"_s, u"disk ejected"_s}));
        QVERIFY(state().windowTitle().endsWith(u" - disk"_s));
        QCOMPARE(state().selection.value(), QSet<QUuid>{before.first().id});
        QCOMPARE(state().countText(), u"%1 entries"_s.arg(state().logger().logList().size()));
    }

    void failedFetchIsQuiet()
    {
        shownSample();
        state().getLog();
        QVERIFY(m_fake->alerts.shown.isEmpty());
        QCOMPARE(state().countText(), u"0 entries"_s);
        QVERIFY(state().shownEntries().isEmpty());
    }

    void fetchShowsItsListOnce()
    {
        useDemonstration();
        shownSample();
        QList<qsizetype> shown;
        connect(&state(), &ContentState::shownEntriesChanged, this,
                [&] { shown.append(state().shownEntries().size()); });
        state().getLog();
        QCOMPARE(shown, (QList<qsizetype>{0, state().logger().logList().size()}));
    }

    void archiveInAChosenFolderIsOffered_data()
    {
        QTest::addColumn<bool>("byPanel");
        QTest::addColumn<bool>("takes");
        QTest::newRow("panel, taken") << true << true;
        QTest::newRow("panel, declined") << true << false;
        QTest::newRow("dropped, taken") << false << true;
        QTest::newRow("dropped, declined") << false << false;
    }
    void archiveInAChosenFolderIsOffered()
    {
        QFETCH(bool, byPanel);
        QFETCH(bool, takes);
        const QString chosen = m_fake->folder.filePath(u"sent.logarchive"_s);
        const QString archive = chosen + u"/mac.logarchive"_s;
        QVERIFY(QDir(archive).mkpath(u"Persist"_s));
        m_fake->alerts.takesOffers = takes;
        const QSignalSpy opened(&state(), &ContentState::documentOpened);
        if (byPanel) {
            state().chooseArchive();
            m_fake->panels.confirm(chosen);
        } else {
            QCOMPARE(state().openDocument(chosen), takes);
            QCOMPARE(opened.value(0).value(0).toString(), takes ? archive : QString());
        }
        QCOMPARE(m_fake->alerts.shown.size(), 1);
        QVERIFY(m_fake->alerts.shown.first().informativeText.contains(u"“mac.logarchive”"_s));
        QCOMPARE(state().logger().archURL().value_or(QUrl()).toLocalFile(),
                 takes ? archive : QString());
    }

    void nothingDisturbsAFetch()
    {
        useDemonstration();
        const QList<LogEntry> before = shownSample();
        const QString path = m_fake->folder.filePath(u"list.tessel"_s);
        QVERIFY(saveEntryList(before, path));
        state().readJSON();
        state().selection = QSet<QUuid>{before.first().id};
        state().searchQuery = u"disk"_s;
        state().runSearch(u"disk"_s);
        state().userNoteText = u"note"_s;

        QSignalSpy begins(&state(), &ContentState::fetchBegins);
        const auto disturb = [this, &path] {
            state().getLog();
            state().chooseArchive();
            state().readJSON();
            state().addNote();
            state().reduce();
            state().runSearch(u"network"_s);
            state().endSearch();
            state().openDocument(path);
        };
        connect(&state(), &ContentState::fetchBegins, this, disturb);
        connect(
            &state().logger(), &Logger::logListChanged, this,
            [&] {
                disturb();
                m_fake->panels.confirm(path); // of the panel that is open since before the fetch
            },
            Qt::SingleShotConnection);
        state().getLog();
        QCOMPARE(begins.size(), 1);
        QCOMPARE(state().logger().logList().size(), 1000);
        QCOMPARE(state().windowTitle().right(7), u" - disk"_s);
        QCOMPARE(messagesOf(state().shownEntries()),
                 (QStringList{u"Disk full"_s, u"disk ejected"_s}));
        QVERIFY(!state().shownEntries().first().userNote);
        QCOMPARE(m_fake->panels.openRequests.size(), 1);
        QCOMPARE(m_fake->alerts.shown.size(), 3);
    }

    void searchNarrowsAndNamesItself()
    {
        shownSample();
        QSignalSpy titles(&state(), &ContentState::windowTitleChanged);
        state().runSearch(u"DISK"_s);
        QVERIFY(state().isSearching());
        QCOMPARE(messagesOf(state().shownEntries()),
                 (QStringList{u"Disk full"_s, u"disk ejected"_s}));
        QCOMPARE(state().windowTitle(), u"Tessel - DISK"_s);
        QVERIFY(!titles.isEmpty());
        QCOMPARE(state().countText(), u"4 entries"_s);

        state().runSearch(u"network"_s); // looks through all entries, not through those found
        QCOMPARE(messagesOf(state().shownEntries()), QStringList{u"network up"_s});
        state().searchTypeIndex = 4;
        state().runSearch(u"odd"_s);
        QCOMPARE(messagesOf(state().shownEntries()), QStringList{u"network up"_s});

        state().runSearch(QString());
        QVERIFY(!state().isSearching());
        QCOMPARE(state().windowTitle(), u"Tessel"_s);
        QCOMPARE(state().shownEntries().size(), 4);
    }

    void searchOverNothingChangesNothing()
    {
        state().runSearch(u"disk"_s);
        QVERIFY(!state().isSearching());
        QCOMPARE(state().windowTitle(), u"Tessel"_s);

        shownSample();
        state().runSearch(u"disk"_s);
        setEntries({});
        state().runSearch(QString());
        QVERIFY(state().isSearching());
        state().endSearch(); // which Escape does
        QVERIFY(!state().isSearching());
        QCOMPARE(state().windowTitle(), u"Tessel"_s);
    }

    void nothingFoundIsSaidInWords()
    {
        shownSample();
        QVERIFY(!state().foundNothing());
        state().searchQuery = u"%1 disk"_s;
        state().searchTypeIndex = 2;
        state().runSearch(u"%1 disk"_s);
        QVERIFY(state().foundNothing());
        QCOMPARE(state().nothingFoundText(), u"No results found for \"%1 disk\" in Senders"_s);
    }

    void reduce_data()
    {
        QTest::addColumn<QString>("query");
        QTest::addColumn<int>("count");
        QTest::addRow("to the results") << u"disk"_s << 2;
        QTest::addRow("not to nothing") << u"xyzzy"_s << 4;
        QTest::addRow("not without a search") << QString() << 4;
    }

    void reduce()
    {
        QFETCH(QString, query);
        QFETCH(int, count);
        shownSample();
        state().runSearch(query);
        const bool wasSearching = state().isSearching();
        const QString title = state().windowTitle();
        state().reduce();
        QCOMPARE(state().logger().logList().size(), count);
        QCOMPARE(state().isSearching(), wasSearching);
        QCOMPARE(state().windowTitle(), title);
    }

    void noteGoesToTheSelection()
    {
        const QList<LogEntry> before = shownSample();
        state().selection = QSet<QUuid>{before.at(0).id, before.at(1).id, QUuid::createUuid()};
        state().userNoteText = u"check"_s;
        QSignalSpy edited(&state(), &ContentState::shownNotesChanged);
        QSignalSpy replaced(&state(), &ContentState::shownEntriesChanged);
        state().addNote();
        QCOMPARE(state().logger().logList().at(0).userNote->toString(), u"check"_s);
        QCOMPARE(state().logger().logList().at(1).userNote->toString(), u"check"_s);
        QVERIFY(!state().logger().logList().at(2).userNote);
        QCOMPARE(state().userNoteText.value(), u"check"_s);
        QCOMPARE(edited.size(), 1);
        QCOMPARE(replaced.size(), 0);
    }

    void noteWhileSearchingSearchesAgain()
    {
        const QList<LogEntry> before = shownSample();
        state().searchTypeIndex = 4;
        state().searchQuery = u"odd"_s;
        state().runSearch(u"odd"_s);
        QCOMPARE(state().shownEntries().size(), 1);
        state().selection = QSet<QUuid>{before.at(1).id};
        state().userNoteText = QString();
        state().addNote();
        QVERIFY(state().shownEntries().isEmpty());
        QVERIFY(state().logger().logList().at(1).userNote);
        QVERIFY(state().logger().logList().at(1).userNote->isEmpty());
    }

    void noteOnNothingDoesNothing_data()
    {
        QTest::addColumn<bool>("hasEntries");
        QTest::addColumn<bool>("hasSelection");
        QTest::addRow("no entries") << false << true;
        QTest::addRow("no selection") << true << false;
    }

    void noteOnNothingDoesNothing()
    {
        QFETCH(bool, hasEntries);
        QFETCH(bool, hasSelection);
        if (hasEntries)
            shownSample();
        if (hasSelection)
            state().selection = QSet<QUuid>{QUuid::createUuid()};
        m_fake->defaults.set(u"selectText"_s, u"before"_s);
        QSignalSpy changed(&state().logger(), &Logger::logListChanged);
        state().addNote();
        state().gloss();
        QCOMPARE(changed.size(), 0);
        QCOMPARE(m_fake->defaults.string(u"selectText"_s), u"before"_s);
        QVERIFY(m_openedWindows.isEmpty());
    }

    void glossGathersShownSelection()
    {
        QList<LogEntry> before = shownSample();
        state().selection = QSet<QUuid>{before.at(3).id, before.at(1).id, before.at(0).id};
        state().gloss();
        QCOMPARE(state().selectText.value(), u"Disk full\nnetwork up\n"_s);
        QCOMPARE(m_fake->defaults.string(u"selectText"_s), u"Disk full\nnetwork up\n"_s);
        QCOMPARE(m_openedWindows, QStringList{u"textView"_s});
        state().runSearch(u"disk"_s);
        state().gloss();
        QCOMPARE(state().selectText.value(), u"Disk full"_s);
        m_openedWindows.clear();
        setEntries({entryWithMessage(u"of another fetch"_s)});
        state().endSearch();
        state().gloss();
        QCOMPARE(m_fake->defaults.string(u"selectText"_s), u"Disk full"_s);
        QVERIFY(m_openedWindows.isEmpty());
    }

    void copyGivesLinesInListOrder()
    {
        const QList<LogEntry> before = shownSample();
        QCOMPARE(state().copyText(), QString());
        state().selection = QSet<QUuid>{before.at(2).id, before.at(0).id};
        QCOMPARE(state().copyText(),
                 before.at(0).plainTextLine() + u'\n' + before.at(2).plainTextLine());
        state().runSearch(u"ejected"_s);
        QCOMPARE(state().copyText(), before.at(2).plainTextLine());
    }

    void readingEndsTheSearch()
    {
        const QString path = m_fake->folder.filePath(u"list.tessel"_s);
        QVERIFY(saveEntryList(sampleEntries(), path));
        shownSample();
        state().searchQuery = u"disk"_s;
        state().runSearch(u"disk"_s);
        state().readJSON();
        QVERIFY(!state().isSearching());
        QCOMPARE(state().searchQuery.value(), QString());
        QCOMPARE(state().windowTitle(), u"Tessel"_s);
        QCOMPARE(state().shownEntries().size(), 4);
        m_fake->panels.confirm(path);
        QCOMPARE(messagesOf(state().shownEntries()), messagesOf(sampleEntries()));
    }

private:
    ContentState& state() { return *m_state; }

    void makeState()
    {
        const auto build = [this](const PredicateFormat& format)
            -> Result<std::shared_ptr<const logstore::EntryFilter>> {
            m_builtPredicates.append(format);
            if (m_predicateError)
                return failure(m_predicateError->toStdString());
            return m_filter;
        };
        m_state = std::make_unique<ContentState>(
            m_fake->platform, [this](const QString& id) { m_openedWindows.append(id); }, build);
    }

    void setEntries(const QList<LogEntry>& entries) { m_state->logger().setLogList(entries); }

    /// Four messages, set as the window's list.
    QList<LogEntry> shownSample()
    {
        QList<LogEntry> entries{entryWithMessage(u"Disk full"_s), entryWithMessage(u"network up"_s),
                                entryWithMessage(u"disk ejected"_s), entryWithMessage(QString())};
        entries[1].userNote = u"odd"_s;
        setEntries(entries);
        return entries;
    }

    /// Makes a written store the local one, the last of its entries a moment ago.
    void useDemonstration()
    {
        const QString root = m_fake->folder.filePath(u"store"_s);
        const qint64 now = m_fake->clock.currentTime.toMSecsSinceEpoch() * 1'000'000;
        QVERIFY(DemonstrationStore(root.toStdString()).writeUntil(now));
        m_fake->logStores.localPath = root;
        state().theStartDate = m_fake->clock.currentTime.addSecs(-3600);
        state().period = u"4000"_s;
    }

    std::unique_ptr<FakePlatform> m_fake;
    std::unique_ptr<ContentState> m_state;
    QStringList m_openedWindows;
    QList<PredicateFormat> m_builtPredicates;
    std::optional<QString> m_predicateError;
    std::shared_ptr<const logstore::EntryFilter> m_filter;
};

TESSEL_TEST(TestContentState)
#include "tst_contentstate.moc"
