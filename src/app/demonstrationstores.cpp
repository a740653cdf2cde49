// SPDX-License-Identifier: MIT
#include "app/demonstrationstores.h"

#include "platform/clock.h"
#include "platform/demonstrationstore.h"

#include <QCoreApplication>
#include <QDir>
#include <QLockFile>
#include <QStandardPaths>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// The first seconds of the minute: a new window reads some seconds from its beginning. They are to
/// be there even in the first moments of a minute.
QDateTime firstSeconds(const QDateTime& now)
{
    constexpr int seconds = 6;
    const QTime time = now.time();
    return now.addMSecs((seconds - time.second()) * 1000 - time.msec());
}

QString lockOf(const QString& folder)
{
    return folder + u".lock"_s;
}

} // namespace

/// A folder that a process has to itself as long as this object lives; then it is removed. Its lock
/// lies beside it, and is there before the folder is.
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

DemonstrationStores::DemonstrationStores(QString parent, const Clock& clock)
    : m_parent(std::move(parent))
    , m_clock(clock)
{
}

DemonstrationStores::~DemonstrationStores() = default;

QString DemonstrationStores::defaultParent()
{
    return QStandardPaths::writableLocation(QStandardPaths::CacheLocation) + u"/Demonstration"_s;
}

void DemonstrationStores::expectPresentMinute()
{
    m_expected = firstSeconds(m_clock.now());
}

bool DemonstrationStores::isRecent() const
{
    constexpr qint64 longestAgo = 300; // seconds
    return m_end >= m_expected && std::abs(m_end.secsTo(m_clock.now())) <= longestAgo;
}

Result<QString> DemonstrationStores::folder()
{
    if (m_folders.empty() || !isRecent()) {
        const auto written = write();
        if (!written && m_folders.empty())
            return tl::unexpected(written.error());
    }
    return m_folders.back()->path();
}

Result<void> DemonstrationStores::write()
{
    constexpr std::int64_t nanosecondsPerMillisecond = 1'000'000;
    auto folder = makeFolder();
    if (!folder)
        return tl::unexpected(folder.error());
    const QDateTime end = std::max(m_clock.now(), firstSeconds(m_clock.now()));
    auto written = writeDemonstrationStore(QDir((*folder)->path()).filesystemAbsolutePath(),
                                           end.toMSecsSinceEpoch() * nanosecondsPerMillisecond);
    if (!written)
        return written;
    m_end = m_expected = end;
    if (m_folders.size() > 1)
        m_folders.erase(m_folders.begin());
    m_folders.push_back(std::move(*folder));
    return {};
}

Result<std::unique_ptr<DemonstrationStores::OwnFolder>> DemonstrationStores::makeFolder() const
{
    const auto cannot = [](const QString& folder) {
        return failure(
            QCoreApplication::translate(
                "Failures", "The folder “%1” for the demonstration store cannot be made.")
                .arg(folder)
                .toStdString());
    };
    const QDir parent(m_parent);
    if (!parent.mkpath(u"."_s))
        return cannot(m_parent);
    if (m_folders.empty())
        OwnFolder::removeAbandoned(parent);
    const QString name = m_clock.now().toString(u"yyyy-MM-dd HH.mm.ss"_s);
    for (int number = 1;; ++number) {
        const QString path =
            parent.filePath(number == 1 ? name : u"%1 (%2)"_s.arg(name).arg(number));
        if (QFileInfo::exists(path))
            continue;
        auto folder = std::make_unique<OwnFolder>(path);
        if (folder->isOwn() && parent.mkdir(path))
            return folder;
        if (!folder->isAnothers())
            return cannot(path);
    }
}
