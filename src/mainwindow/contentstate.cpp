// SPDX-License-Identifier: MIT
#include "mainwindow/contentstate.h"

#include "mainwindow/textsearch.h"
#include "platform/clock.h"
#include "platform/userdefaults.h"
#include "settings/preferences.h"

#include <QDir>
#include <QFileInfo>
#include <QScopedValueRollback>

#include <algorithm>
#include <clocale>
#include <cstdlib>
#include <cstring>

using namespace Qt::StringLiterals;

namespace {

constexpr double smallestFontSize = 6;
constexpr double largestFontSize = 36;

bool hasSuffix(const QString& path, QLatin1StringView suffix)
{
    return QDir::cleanPath(path).endsWith(suffix, Qt::CaseInsensitive);
}

bool isNamedArchive(const QString& path)
{
    return hasSuffix(path, ".logarchive"_L1);
}

constexpr double defaultPeriod = 5.0;

// Uses the C library in the POSIX locale: std::from_chars accepts neither "+" nor "0x", and
// QString::toDouble no hexadecimal numbers.
double convert(const char* text, char** end)
{
    static const locale_t posix = newlocale(LC_ALL_MASK, "POSIX", nullptr);
    return strtod_l(text, end, posix);
}

} // namespace

double periodSeconds(const QString& text)
{
    const QByteArray bytes = text.toUtf8();
    if (bytes.isEmpty() || std::strchr(" \t\n\v\f\r", bytes.front()) != nullptr)
        return defaultPeriod;
    char* end = nullptr;
    const double seconds = convert(bytes.constData(), &end);
    return end == bytes.constData() + bytes.size() ? seconds : defaultPeriod;
}

ContentState::ContentState(const Platform& platform,
                           OpenWindow openWindow,
                           PredicateBuilder buildPredicate)
    : m_platform(platform)
    , m_openWindow(std::move(openWindow))
    , m_buildPredicate(std::move(buildPredicate))
    , m_logger(Logger::make(platform))
{
    theStartDate = platform.clock.now();
    readPreferences();
    connect(m_logger.get(), &Logger::logListChanged, this, &ContentState::followLogList);
    connect(m_logger.get(), &Logger::logDateStrChanged, this, &ContentState::windowTitleChanged);
    connect(m_logger.get(), &Logger::fetchBegins, this, &ContentState::fetchBegins);
    connect(m_logger.get(), &Logger::fetchEnds, this, &ContentState::fetchEnds);
}

void ContentState::readPreferences()
{
    const UserDefaults& defaults = m_platform.defaults;
    predicate = preferences::value(defaults, preferences::predicate);
    period = preferences::value(defaults, preferences::period);
    maxCount = preferences::value(defaults, preferences::maxCount);
    fullMode = preferences::value(defaults, preferences::fullMode);
    showSignposts = preferences::value(defaults, preferences::showSignposts);
    predList = preferences::value(defaults, preferences::predList);
    predNames = preferences::value(defaults, preferences::predNames);
    specPred = preferences::value(defaults, preferences::specPred);
    selectText = preferences::value(defaults, preferences::selectText);
}

QStringList ContentState::searchTypes()
{
    return {tr("Messages"), tr("Processes"), tr("Senders"), tr("Subsystems"), tr("Notes")};
}

const QList<LogEntry>& ContentState::shownEntries() const
{
    return m_isSearching ? m_searchList : m_logger->logList();
}

QList<LogEntry> ContentState::selectedEntries(const QList<LogEntry>& entries) const
{
    const QSet<QUuid> ids = selection;
    QList<LogEntry> selected;
    if (ids.isEmpty())
        return selected;
    for (const LogEntry& entry : entries) {
        if (ids.contains(entry.id))
            selected.append(entry);
    }
    return selected;
}

QString ContentState::windowTitle() const
{
    return m_logger->logDateStr() + thePostTitle;
}

QString ContentState::countText() const
{
    return tr("%1 entries").arg(m_logger->logList().size());
}

bool ContentState::foundNothing() const
{
    return m_isSearching && m_searchList.isEmpty();
}

QString ContentState::nothingFoundText() const
{
    return tr("No results found for \"%1\" in %2")
        .arg(searchQuery, searchTypes().value(searchTypeIndex));
}

/// During a fetch, signals only that the list was emptied. The new list is shown after the fetch.
void ContentState::followLogList()
{
    if (isFetching() && !m_logger->logList().isEmpty())
        return;
    Q_EMIT countTextChanged();
    if (m_isSearching)
        return;
    if (m_isNoting)
        Q_EMIT shownNotesChanged();
    else
        Q_EMIT shownEntriesChanged();
}

Result<std::shared_ptr<const logstore::EntryFilter>> ContentState::fetchPredicate() const
{
    const auto stored = m_platform.defaults.string(preferences::specPred.key);
    const auto chosen = chosenPredicate(predIndex, predicate, stored, predList);
    if (!chosen)
        return nullptr;
    return m_buildPredicate(*chosen);
}

void ContentState::getLog()
{
    if (isFetching())
        return;
    const auto filter = fetchPredicate();
    if (!filter)
        return m_logger->errorAlert(filter.error());
    m_logger->getLog(theStartDate, theSecs, maxCount, *filter, showSignposts,
                     periodSeconds(period));
    followLogList();
}

void ContentState::chooseArchive()
{
    if (!isFetching())
        m_logger->chooseArchive();
}

void ContentState::readJSON()
{
    if (isFetching())
        return;
    m_logger->readJSON();
    endSearch();
}

bool ContentState::openDocument(const QString& path)
{
    if (isFetching()) {
        m_logger->tellOfRunningFetch();
        return false;
    }
    if (!QDir::isAbsolutePath(path))
        return refuse(tr("“%1” is not a file of this computer.").arg(path));
    const bool isArchive = isNamedArchive(path) || QFileInfo(path).isDir();
    QString document = path;
    if (isArchive) {
        const auto archive = m_logger->archiveMeant(QUrl::fromLocalFile(QDir::cleanPath(path)));
        if (!archive)
            return false;
        document = archive->toLocalFile();
    }
    const bool isOpen = isArchive ? useArchive(document) : openEntryList(document);
    if (isOpen)
        Q_EMIT documentOpened(document);
    return isOpen;
}

bool ContentState::isDocument(const QString& path)
{
    return isNamedArchive(path) || hasSuffix(path, ".tessel"_L1);
}

bool ContentState::openEntryList(const QString& path)
{
    const bool isRead = m_logger->openEntryList(path);
    endSearch();
    return isRead;
}

bool ContentState::useArchive(const QString& path)
{
    if (!QFileInfo(path).isDir())
        return refuse(
            tr("The log archive “%1” cannot be used: there is no such folder.").arg(path));
    if (!isNamedArchive(path) && !OSLogStore::isStore(path))
        return refuse(tr("The folder “%1” is not a log archive: it holds no log files.").arg(path));
    m_logger->useArchive(QUrl::fromLocalFile(QDir::cleanPath(path)));
    return true;
}

bool ContentState::refuse(const QString& why)
{
    m_logger->errorAlert({why.toStdString()});
    return false;
}

void ContentState::endSearch()
{
    if (isFetching())
        return;
    searchQuery = QString();
    thePostTitle = QString();
    if (!m_isSearching)
        return;
    Q_EMIT shownEntriesAboutToChange();
    m_isSearching = false;
    m_searchList.clear();
    Q_EMIT shownEntriesChanged();
    Q_EMIT searchStateChanged();
}

void ContentState::addNote()
{
    const QSet<QUuid> ids = selection;
    if (isFetching() || m_logger->logList().isEmpty() || ids.isEmpty())
        return;
    {
        const QScopedValueRollback noting(m_isNoting, true);
        m_logger->setNote(ids, userNoteText);
    }
    if (m_isSearching)
        runSearch(searchQuery);
}

void ContentState::gloss()
{
    const QList<LogEntry> selected = selectedEntries(shownEntries());
    if (selected.isEmpty())
        return;
    QStringList messages;
    for (const LogEntry& entry : selected)
        messages.append(entry.composedMessage.toString());
    selectText = messages.join(u'\n');
    m_platform.defaults.set(preferences::selectText.key, selectText);
    m_openWindow(u"textView"_s);
}

void ContentState::reduce()
{
    if (!isFetching() && m_isSearching && !m_searchList.isEmpty())
        m_logger->setLogList(m_searchList);
}

void ContentState::saveJSON()
{
    m_logger->saveJSON(thePostTitle);
}

void ContentState::saveRTF()
{
    m_logger->saveRTF();
}

void ContentState::setPredicate()
{
    m_openWindow(u"miniPredView"_s);
}

void ContentState::enlargeText()
{
    theFontSize = std::min(theFontSize + 1, largestFontSize);
}

void ContentState::shrinkText()
{
    theFontSize = std::max(theFontSize - 1, smallestFontSize);
}

void ContentState::resetText()
{
    theFontSize = normalFontSize;
}

void ContentState::runSearch(const QString& query)
{
    if (isFetching() || m_logger->logList().isEmpty())
        return;
    if (query.isEmpty() && !m_isSearching)
        return;
    Q_EMIT shownEntriesAboutToChange();
    m_isSearching = !query.isEmpty();
    m_searchList.clear();
    if (m_isSearching)
        m_searchList = entriesFound(m_logger->logList(), searchTypeIndex, query);
    thePostTitle = m_isSearching ? u" - "_s + query : QString();
    Q_EMIT shownEntriesChanged();
    Q_EMIT searchStateChanged();
}

QString ContentState::copyText() const
{
    QStringList lines;
    for (const LogEntry& entry : selectedEntries(shownEntries()))
        lines.append(entry.plainTextLine());
    return lines.join(u'\n');
}
