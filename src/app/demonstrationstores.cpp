// SPDX-License-Identifier: MIT
#include "app/demonstrationstores.h"

#include "platform/base/timeunits.h"
#include "platform/clock.h"
#include "platform/demonstrationstore.h"

#include <QCoreApplication>
#include <QDir>
#include <QLockFile>
#include <QStandardPaths>

#include <algorithm>
#include <cerrno>
#include <filesystem>

using namespace Qt::StringLiterals;

namespace {

/// The end of the first seconds of the minute, which a new window reads. The store contains them
/// even if the minute has just begun.
QDateTime firstSeconds(const QDateTime& now)
{
    constexpr int seconds = 6;
    const QTime time = now.time();
    return now.addMSecs((seconds - time.second()) * 1000 - time.msec());
}

std::int64_t nanoseconds(const QDateTime& time)
{
    return time.toMSecsSinceEpoch() * nanosecondsPerMillisecond;
}

QString lockOf(const QString& folder)
{
    return folder + u".lock"_s;
}

} // namespace

/// A folder that belongs to this process while the object exists, and is removed with it. The lock
/// file is next to the folder and created first.
class DemonstrationStores::OwnFolder
{
public:
    explicit OwnFolder(QString path) : m_path(std::move(path)), m_lock(lockOf(m_path))
    {
        m_lock.setStaleLockTime(0); // only the end of its process frees it
        m_isOwn = m_lock.tryLock(0);
    }
    ~OwnFolder()
    {
        if (m_isOwn)
            QDir(m_path).removeRecursively();
    }
    Q_DISABLE_COPY_MOVE(OwnFolder)

    const QString& path() const { return m_path; }
    bool isOwn() const { return m_isOwn; }
    bool isAnothers() const { return m_lock.error() == QLockFile::LockFailedError; }

    /// Removes the folders whose processes are gone.
    static void removeAbandoned(const QDir& parent)
    {
        for (const QString& lock : parent.entryList({lockOf(u"*"_s)}, QDir::Files))
            OwnFolder(parent.filePath(lock.chopped(lockOf({}).size())));
    }

private:
    QString m_path;
    QLockFile m_lock;
    bool m_isOwn = false;
};

struct DemonstrationStores::Kept
{
    std::unique_ptr<OwnFolder> folder;
    DemonstrationStore store;
};

DemonstrationStores::DemonstrationStores(QStringList parents, const Clock& clock)
    : m_parents(std::move(parents))
    , m_clock(clock)
{
}

DemonstrationStores::~DemonstrationStores() = default;

QStringList DemonstrationStores::defaultParents()
{
    QStringList parents{QStandardPaths::writableLocation(QStandardPaths::CacheLocation)};
    const QString session = qEnvironmentVariable("XDG_RUNTIME_DIR");
    if (QDir::isAbsolutePath(session))
        parents.append(session + u"/Tessel"_s);
    for (QString& parent : parents)
        parent += u"/Demonstration"_s;
    return parents;
}

void DemonstrationStores::expectPresentMinute()
{
    m_expected = firstSeconds(m_clock.now());
}

Result<QString> DemonstrationStores::folder()
{
    constexpr qint64 longestAgo = 300; // seconds
    const qint64 age = m_end.secsTo(m_clock.now());
    if (m_stores.empty() || age < -longestAgo) {
        const auto begun = begin();
        if (!begun && m_stores.empty())
            return tl::unexpected(begun.error());
    } else if (m_end < m_expected || age > longestAgo) {
        goOn();
    }
    return m_stores.back()->folder->path();
}

Result<void> DemonstrationStores::begin()
{
    Result<void> first;
    for (const QString& parent : std::as_const(m_parents)) {
        auto begun = beginIn(parent);
        if (begun)
            return begun;
        if (first)
            first = std::move(begun);
    }
    m_temporary = std::make_unique<QTemporaryDir>(QDir::tempPath() + u"/tessel-XXXXXX"_s);
    if (m_temporary->isValid() && beginIn(m_temporary->path()))
        return {};
    return first;
}

Result<void> DemonstrationStores::beginIn(const QString& parent)
{
    auto folder = makeFolder(parent);
    if (!folder)
        return tl::unexpected(folder.error());
    DemonstrationStore store(QDir((*folder)->path()).filesystemAbsolutePath());
    const QDateTime end = endToWrite();
    auto written = store.writeUntil(nanoseconds(end));
    if (!written)
        return written;
    m_end = end;
    if (m_stores.size() > 1)
        m_stores.erase(m_stores.begin());
    m_stores.push_back(std::make_unique<Kept>(Kept{std::move(*folder), std::move(store)}));
    return {};
}

/// Extends the newest store. If that fails, the next call tries again.
void DemonstrationStores::goOn()
{
    const QDateTime end = std::max(endToWrite(), m_end);
    if (m_stores.back()->store.writeUntil(nanoseconds(end)))
        m_end = end;
}

QDateTime DemonstrationStores::endToWrite() const
{
    return std::max(m_clock.now(), firstSeconds(m_clock.now()));
}

Result<std::unique_ptr<DemonstrationStores::OwnFolder>>
DemonstrationStores::makeFolder(const QString& parent) const
{
    const auto cannot = [](const QString& folder, const QString& reason) {
        return failure(
            QCoreApplication::translate(
                "Failures", "The folder “%1” for the demonstration store cannot be made: %2.")
                .arg(folder, reason)
                .toStdString());
    };
    const QDir folder(parent);
    std::error_code error;
    std::filesystem::create_directories(folder.filesystemAbsolutePath(), error);
    if (error)
        return cannot(parent, QString::fromLocal8Bit(error.message()));
    if (m_stores.empty())
        OwnFolder::removeAbandoned(folder);
    const QString name = m_clock.now().toString(u"yyyy-MM-dd HH.mm.ss"_s);
    for (int number = 1;; ++number) {
        const QString path =
            folder.filePath(number == 1 ? name : u"%1 (%2)"_s.arg(name).arg(number));
        if (QFileInfo::exists(path))
            continue;
        auto own = std::make_unique<OwnFolder>(path);
        if (own->isOwn() && folder.mkdir(path))
            return own;
        if (!own->isAnothers())
            return cannot(path, qt_error_string(errno));
    }
}
