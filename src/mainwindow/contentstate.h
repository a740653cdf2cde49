// SPDX-License-Identifier: MIT
#pragma once

#include "mainwindow/predicatechoice.h"
#include "model/logger.h"

#include <QDateTime>
#include <QObject>
#include <QObjectBindableProperty>
#include <QSet>
#include <QStringList>

#include <functional>
#include <memory>

class UserDefaults;

/// Opens the window with this identifier, or brings it to the front.
using OpenWindow = std::function<void(const QString& id)>;

/// The seconds of a typed period, in the same form in every locale: decimal or hexadecimal,
/// including infinity and not-a-number. A text that is not a number as a whole gives 5 seconds.
double periodSeconds(const QString& text);

/// The fields and commands of a main window, without the window. Fields hold what the user has set
/// or typed. Each field emits its signal when its value changes.
class ContentState final : public QObject
{
    Q_OBJECT

Q_SIGNALS:
    void predicateChanged();
    void periodChanged();
    void maxCountChanged();
    void fullModeChanged();
    void showSignpostsChanged();
    void predListChanged();
    void predNamesChanged();
    void specPredChanged();
    void selectTextChanged();
    void predIndexChanged();
    void theStartDateChanged();
    void windowTitleChanged();
    void theSecsChanged();
    void theFontSizeChanged();
    void selectionChanged();
    void searchTypeIndexChanged();
    void searchQueryChanged();
    void userNoteTextChanged();

    /// A search is about to begin or end.
    void shownEntriesAboutToChange();
    void shownEntriesChanged();
    /// Notes of the shown entries have changed; the rows are the same.
    void shownNotesChanged();
    void countTextChanged();
    void fetchBegins();
    void fetchEnds();
    void searchStateChanged();
    void documentOpened(const QString& path);

public:
    ContentState(const Platform& platform, OpenWindow openWindow, PredicateBuilder buildPredicate);

    static constexpr double normalFontSize = 12;

    /// The names of the fields that a search can look in.
    static QStringList searchTypes();

    // clang-format off
    Q_OBJECT_BINDABLE_PROPERTY(ContentState, QString, predicate, &ContentState::predicateChanged)
    Q_OBJECT_BINDABLE_PROPERTY(ContentState, QString, period, &ContentState::periodChanged)
    Q_OBJECT_BINDABLE_PROPERTY(ContentState, QString, maxCount, &ContentState::maxCountChanged)
    Q_OBJECT_BINDABLE_PROPERTY(ContentState, bool, fullMode, &ContentState::fullModeChanged)
    Q_OBJECT_BINDABLE_PROPERTY(ContentState, bool, showSignposts, &ContentState::showSignpostsChanged)
    Q_OBJECT_BINDABLE_PROPERTY(ContentState, QStringList, predList, &ContentState::predListChanged)
    Q_OBJECT_BINDABLE_PROPERTY(ContentState, QStringList, predNames, &ContentState::predNamesChanged)
    Q_OBJECT_BINDABLE_PROPERTY(ContentState, QString, specPred, &ContentState::specPredChanged)
    Q_OBJECT_BINDABLE_PROPERTY(ContentState, QString, selectText, &ContentState::selectTextChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(ContentState, int, predIndex, 0, &ContentState::predIndexChanged)
    Q_OBJECT_BINDABLE_PROPERTY(ContentState, QDateTime, theStartDate, &ContentState::theStartDateChanged)
    Q_OBJECT_BINDABLE_PROPERTY(ContentState, QString, thePostTitle, &ContentState::windowTitleChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(ContentState, QString, theSecs, QStringLiteral("00"), &ContentState::theSecsChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(ContentState, double, theFontSize, normalFontSize, &ContentState::theFontSizeChanged)
    Q_OBJECT_BINDABLE_PROPERTY(ContentState, QSet<QUuid>, selection, &ContentState::selectionChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(ContentState, int, searchTypeIndex, 0, &ContentState::searchTypeIndexChanged)
    Q_OBJECT_BINDABLE_PROPERTY(ContentState, QString, searchQuery, &ContentState::searchQueryChanged)
    Q_OBJECT_BINDABLE_PROPERTY(ContentState, QString, userNoteText, &ContentState::userNoteTextChanged)
    // clang-format on

    Logger& logger() const { return *m_logger; }
    const QList<LogEntry>& searchList() const { return m_searchList; }
    bool isSearching() const { return m_isSearching; }
    /// While a fetch runs, commands that change the list, the search or the source do nothing.
    bool isFetching() const { return m_logger->isFetching(); }

    /// The entries in the list: the results of the search, or without a search the logger's list.
    const QList<LogEntry>& shownEntries() const;
    /// The selected ones among the entries, in the order of the entries.
    QList<LogEntry> selectedEntries(const QList<LogEntry>& entries) const;

    QString windowTitle() const;
    QString countText() const;
    /// Whether the search has no results, and the sentence that says so.
    bool foundNothing() const;
    QString nothingFoundText() const;

    void getLog();
    void chooseArchive();
    void readJSON();
    /// Opens an entry list file or uses a log archive, whatever its name. If it is neither, shows
    /// an alert and returns false. `path` is absolute, or the URL of something on another computer.
    bool openDocument(const QString& path);
    /// Whether the file name has the suffix of an entry list or a log archive.
    static bool isDocument(const QString& path);
    void addNote();
    void gloss();
    void reduce();
    void saveJSON();
    void saveRTF();
    void setPredicate();
    void enlargeText();
    void shrinkText();
    void resetText();
    void runSearch(const QString& query);
    /// Shows all entries again, with an empty search field.
    void endSearch();
    /// The text of the Copy command; empty if nothing is selected.
    QString copyText() const;

private:
    void readPreferences();
    bool openEntryList(const QString& path);
    bool useArchive(const QString& path);
    bool refuse(const QString& why);
    void followLogList();
    Result<std::shared_ptr<const logstore::EntryFilter>> fetchPredicate() const;

    Platform m_platform;
    OpenWindow m_openWindow;
    PredicateBuilder m_buildPredicate;
    std::shared_ptr<Logger> m_logger;
    QList<LogEntry> m_searchList;
    bool m_isSearching = false;
    bool m_isNoting = false;
};
