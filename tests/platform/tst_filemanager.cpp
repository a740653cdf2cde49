// SPDX-License-Identifier: MIT
#include "platform/filemanager.h"
#include "support/systemfault.h"
#include "support/testcase.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <fcntl.h>
#include <fstream>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

std::string bytesOf(const FilePath& file)
{
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

struct stat statusOf(const FilePath& path)
{
    struct stat item = {};
    ::lstat(path.c_str(), &item);
    return item;
}

void setModified(const FilePath& path, time_t seconds, long nanoseconds)
{
    const timespec times[2] = {{seconds, nanoseconds}, {seconds, nanoseconds}};
    ::utimensat(AT_FDCWD, path.c_str(), times, AT_SYMLINK_NOFOLLOW);
}

} // namespace

class TestFileManager : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestCase::init();
        m_folder = std::make_unique<QTemporaryDir>();
        m_folder->setAutoRemove(false); // it cannot remove names that are not UTF-8
        m_root = QFile::encodeName(m_folder->path()).toStdString();
    }

    void cleanup()
    {
        using namespace std::filesystem;
        for (const directory_entry& entry : recursive_directory_iterator(m_root)) {
            if (is_directory(entry.symlink_status()))
                permissions(entry.path(), perms::owner_all);
        }
        remove_all(m_root);
    }

    void locationsBecomePaths_data()
    {
        QTest::addColumn<QUrl>("location");
        QTest::addColumn<QByteArray>("path");
        QTest::newRow("plain") << QUrl::fromLocalFile(u"/var/db"_s) << "/var/db"_ba;
        QTest::newRow("separator last") << QUrl::fromLocalFile(u"/var/db/"_s) << "/var/db"_ba;
        QTest::newRow("root") << QUrl(u"file:///"_s) << "/"_ba;
        QTest::newRow("blanks and per cent")
            << QUrl::fromLocalFile(u"/a b/100%20"_s) << "/a b/100%20"_ba;
        QTest::newRow("hash and question mark") << QUrl::fromLocalFile(u"/#1?"_s) << "/#1?"_ba;
        QTest::newRow("any writing") << QUrl::fromLocalFile(u"/é/🥎"_s) << "/é/🥎"_ba;
        QTest::newRow("no text") << QUrl(u"file:///a/%FF%FE"_s) << "/a/\xff\xfe"_ba;
    }

    void locationsBecomePaths()
    {
        QFETCH(QUrl, location);
        QFETCH(QByteArray, path);
        QCOMPARE(QByteArray::fromStdString(filePath(location).native()), path);
    }

    void listsEveryEntryInOrder()
    {
        makeFile(path("b"), "");
        makeFile(path(".hidden"), "");
        makeFile(path("a/below"), "");
        ::symlink("nowhere", path("link").c_str());
        QCOMPARE(names(m_root), (std::vector<std::string>{".hidden", "a", "b", "link"}));
    }

    void namesNeedNotBeText()
    {
        makeFile(path("\xff\xfe.tracev3"), "x");
        QCOMPARE(names(m_root), std::vector<std::string>{"\xff\xfe.tracev3"});
        QCOMPARE(attributes("\xff\xfe.tracev3")->size, 1U);
        QCOMPARE(copy(path("\xff\xfe.tracev3"), path("copy")), u""_s);
        QCOMPARE(bytesOf(path("copy")), "x");
        const auto failed = m_files.contentsOfFile(path("\xff"));
        QVERIFY(!failed);
        QVERIFY(QString::fromStdString(failed.error().description)
                    .contains(u"“%1/\ufffd”"_s.arg(m_folder->path())));
    }

    void listingFailuresNameTheFolder_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("reason");
        QTest::newRow("missing") << u"missing"_s << u"No such file or directory"_s;
        QTest::newRow("a file") << u"file"_s << u"Not a directory"_s;
        QTest::newRow("link to itself") << u"loop"_s << u"Too many levels of symbolic links"_s;
    }

    void listingFailuresNameTheFolder()
    {
        QFETCH(QString, name);
        QFETCH(QString, reason);
        makeFile(path("file"), "");
        ::symlink("loop", path("loop").c_str());
        const auto listed = m_files.contentsOfFolder(m_root / name.toStdString());
        QVERIFY(!listed);
        QCOMPARE(
            QString::fromStdString(listed.error().description),
            u"The folder “%1/%2” could not be listed: %3."_s.arg(m_folder->path(), name, reason));
    }

    void attributesAreThoseOfTheItem()
    {
        makeFile(path("file"), "12345");
        setModified(path("file"), 1'000'000'000, 123'456'789);
        const auto file = attributes("file");
        QVERIFY(file);
        QVERIFY(file->isRegularFile);
        QCOMPARE(file->size, 5U);
        QCOMPARE(file->modified.time_since_epoch().count(), 1'000'000'000'123'456);
        QCOMPARE(file->firstWritten(), file->modified); // as in a copy, which is younger
        QVERIFY(file->created.time_since_epoch() > std::chrono::hours(24 * 365 * 50));
        QVERIFY(m_files.createFolder(path("folder")));
        QVERIFY(!attributes("folder")->isRegularFile);
        ::symlink("file", path("link").c_str());
        QVERIFY(!attributes("link")->isRegularFile);
    }

    void farTimesComeThrough_data()
    {
        QTest::addColumn<qint64>("seconds");
        QTest::newRow("year 2445") << qint64{15'000'000'000};
        QTest::newRow("year 1494") << qint64{-15'000'000'000};
    }

    void farTimesComeThrough()
    {
        QFETCH(qint64, seconds);
        makeFile(path("file"), "");
        setModified(path("file"), seconds, 0);
        if (statusOf(path("file")).st_mtim.tv_sec != seconds)
            QSKIP("This file system has no such times.");
        QCOMPARE(attributes("file")->modified, FileTime(std::chrono::seconds(seconds)));
    }

    void foldersAreFoundThroughLinks()
    {
        makeFile(path("folder/file"), "");
        ::symlink("folder", path("link").c_str());
        ::symlink("nowhere", path("broken").c_str());
        QVERIFY(m_files.isFolder(path("folder")));
        QVERIFY(m_files.isFolder(path("link")));
        QVERIFY(!m_files.isFolder(path("broken")));
        QVERIFY(!m_files.isFolder(path("folder/file")));
    }

    void createFolderNeedsItsParent()
    {
        QVERIFY(m_files.createFolder(path("new")));
        QVERIFY(m_files.isFolder(path("new")));
        QVERIFY(!m_files.createFolder(path("new")));
        QVERIFY(!m_files.createFolder(path("missing/new")));
    }

    void readsWholeFiles()
    {
        const std::string bytes(100'000, '\xff');
        makeFile(path("file"), bytes);
        makeFile(path("empty"), "");
        QCOMPARE(m_files.contentsOfFile(path("file"))->toStdString(), bytes);
        QCOMPARE(m_files.contentsOfFile(path("empty")), QByteArray());
        // Made by the kernel while it is read: its size is not known beforehand.
        QVERIFY(m_files.contentsOfFile("/proc/self/status")->contains("Pid:"));
    }

    void whatIsNoFileIsNotRead_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("reason");
        QTest::newRow("missing") << u"missing"_s << u"No such file or directory"_s;
        QTest::newRow("folder") << u"folder"_s << u"Is a directory"_s;
        QTest::newRow("pipe") << u"pipe"_s << u"Operation not supported"_s;
        QTest::newRow("endless device") << u"zero"_s << u"Operation not supported"_s;
        QTest::newRow("too large") << u"large"_s << u"File too large"_s;
    }

    void whatIsNoFileIsNotRead()
    {
        QFETCH(QString, name);
        QFETCH(QString, reason);
        QVERIFY(m_files.createFolder(path("folder")));
        QCOMPARE(::mkfifo(path("pipe").c_str(), 0600), 0);
        ::symlink("/dev/zero", path("zero").c_str());
        makeFile(path("large"), "");
        std::filesystem::resize_file(path("large"), std::uintmax_t{1} << 40U);

        const auto read = m_files.contentsOfFile(m_root / name.toStdString());
        QVERIFY(!read);
        QCOMPARE(QString::fromStdString(read.error().description),
                 u"The file “%1/%2” could not be read: %3."_s.arg(m_folder->path(), name, reason));
    }

    void copiesBytesPermissionsAndTimes()
    {
        const std::string bytes = std::string(300'000, 'x') + '\0' + "end";
        makeFile(path("file"), bytes);
        std::filesystem::permissions(path("file"), std::filesystem::perms(0440));
        setModified(path("file"), 1'000'000'000, 5);
        QCOMPARE(copy(path("file"), path("copy")), u""_s);
        QCOMPARE(bytesOf(path("copy")), bytes);
        const struct stat copy = statusOf(path("copy"));
        QCOMPARE(copy.st_mode & 07777U, 0440U);
        QCOMPARE(copy.st_mtim.tv_sec, 1'000'000'000);
        QCOMPARE(copy.st_mtim.tv_nsec, 5);
    }

    void copiesExtendedAttributes()
    {
        makeFile(path("from/file"), "");
        for (const char* name : {"from", "from/file"}) {
            if (::setxattr(path(name).c_str(), "user.a", "value", 5, 0) < 0 && errno == EOPNOTSUPP)
                QSKIP("This file system has no extended attributes.");
        }
        std::filesystem::permissions(path("from/file"), std::filesystem::perms(0440));
        QCOMPARE(copy(path("from"), path("to")), u""_s);
        for (const char* name : {"to", "to/file"}) {
            std::string value(10, '\0');
            const auto size = ::getxattr(path(name).c_str(), "user.a", value.data(), value.size());
            QCOMPARE(value.substr(0, std::max<ssize_t>(size, 0)), "value");
        }
        QCOMPARE(statusOf(path("to/file")).st_mode & 07777U, 0440U);
    }

    void copyTellsHowFarItIs()
    {
        makeFile(path("from/a/1"), "four");
        makeFile(path("from/2"), std::string(300'000, 'x'));
        ::symlink("2", path("from/link").c_str());
        CopyProgress last;
        const auto observer = [&last](const CopyProgress& progress) {
            QVERIFY(progress.items >= last.items && progress.bytes >= last.bytes);
            last = progress;
            errno = EIO; // as it may be after running events
        };
        QVERIFY(m_files.copyItem(path("from"), path("to"), CopiedTop::AsItIs, observer).empty());
        QCOMPARE(last.items, 5U);
        QCOMPARE(last.bytes, 300'004U);
    }

    void copiesFoldersWithAllTheyHold()
    {
        makeFile(path("from/a/b/c"), "deep");
        makeFile(path("from/.hidden"), "");
        makeFile(path("from/read-only/file"), "x");
        std::filesystem::permissions(path("from/read-only"), std::filesystem::perms(0555));
        setModified(path("from/a"), 1'111'111'111, 0);
        QCOMPARE(copy(path("from"), path("to")), u""_s);
        QCOMPARE(names(path("to")), (std::vector<std::string>{".hidden", "a", "read-only"}));
        QCOMPARE(bytesOf(path("to/a/b/c")), "deep");
        QCOMPARE(bytesOf(path("to/read-only/file")), "x");
        QCOMPARE(statusOf(path("to/read-only")).st_mode & 07777U, 0555U);
        QCOMPARE(statusOf(path("to/a")).st_mtim.tv_sec, 1'111'111'111);
        QCOMPARE(names(m_root), (std::vector<std::string>{"from", "to"}));
    }

    void copiesLinksAsLinks()
    {
        makeFile(path("from/file"), "");
        ::symlink("..", path("from/up").c_str());
        ::symlink("loop", path("from/loop").c_str());
        ::symlink("/nowhere", path("from/broken").c_str());
        ::symlink("from", path("top").c_str());
        QCOMPARE(copy(path("from"), path("to")), u""_s);
        QCOMPARE(std::filesystem::read_symlink(path("to/up")), FilePath(".."));
        QCOMPARE(std::filesystem::read_symlink(path("to/loop")), FilePath("loop"));
        QCOMPARE(std::filesystem::read_symlink(path("to/broken")), FilePath("/nowhere"));
        QCOMPARE(copy(path("top"), path("top copy")), u""_s);
        QCOMPARE(std::filesystem::read_symlink(path("top copy")), FilePath("from"));
    }

    void copiesWhatTheKernelCannot()
    {
        QCOMPARE(copy("/proc/self/cmdline", path("copy")), u""_s);
        QVERIFY(bytesOf(path("copy")).find("tests_platform") != std::string::npos);
    }

    void neverOverwrites_data()
    {
        QTest::addColumn<QString>("target");
        QTest::newRow("file") << u"old"_s;
        QTest::newRow("empty folder") << u"folder"_s;
        QTest::newRow("broken link") << u"broken"_s;
        QTest::newRow("itself") << u"from"_s;
    }

    void neverOverwrites()
    {
        QFETCH(QString, target);
        makeFile(path("from/file"), "new");
        makeFile(path("old"), "old");
        QVERIFY(m_files.createFolder(path("folder")));
        ::symlink("nowhere", path("broken").c_str());
        const std::vector<std::string> before = names(m_root);

        QCOMPARE(
            copy(path("from"), m_root / target.toStdString()),
            u"The item “%1/from” could not be copied to “%1/%2”: An item of that name exists already."_s
                .arg(m_folder->path(), target));
        QCOMPARE(bytesOf(path("old")), "old");
        QCOMPARE(names(path("folder")), std::vector<std::string>());
        QCOMPARE(names(m_root), before);
    }

    void copyFailuresLeaveNothing_data()
    {
        QTest::addColumn<QString>("from");
        QTest::addColumn<QString>("to");
        QTest::newRow("missing") << u"missing"_s << u"to"_s;
        QTest::newRow("no such place") << u"good"_s << u"missing/to"_s;
    }

    void copyFailuresLeaveNothing()
    {
        QFETCH(QString, from);
        QFETCH(QString, to);
        makeFile(path("good"), "");
        QCOMPARE(
            copy(m_root / from.toStdString(), m_root / to.toStdString()),
            u"The item “%1/%2” could not be copied to “%1/%3”: No such file or directory."_s.arg(
                m_folder->path(), from, to));
        QCOMPARE(names(m_root), std::vector<std::string>{"good"});
    }

    void whatCannotBeReadIsLeftOut()
    {
        makeFile(path("from/a/file"), "x");
        makeFile(path("from/b"), "x");
        QCOMPARE(::mkfifo(path("from/a/pipe").c_str(), 0600), 0);
        std::filesystem::permissions(path("from/a"), std::filesystem::perms(0555));
        QCOMPARE(copy(path("from"), path("to")),
                 u"The item “%1/from/a/pipe” could not be copied to “%1/to/a/pipe”: "
                 "Operation not supported."_s.arg(m_folder->path()));
        QCOMPARE(names(path("to/a")), std::vector<std::string>{"file"});
        QCOMPARE(bytesOf(path("to/b")), "x");
        QCOMPARE(statusOf(path("to/a")).st_mode & 07777U, 0555U);
    }

    void manyFailuresAreCounted()
    {
        for (int i = 0; i < 103; ++i) {
            QVERIFY(m_files.createFolder(path("from")) || i > 0);
            QCOMPARE(::mkfifo((path("from") / std::to_string(i)).c_str(), 0600), 0);
        }
        const auto failures = m_files.copyItem(path("from"), path("to"), CopiedTop::AsItIs, {});
        QCOMPARE(failures.size(), 101U);
        QCOMPARE(failures.back().description, "3 more items could not be copied.");
    }

    void aFullDiskLeavesNothing()
    {
        makeFile(path("from/1 small"), "fits");
        makeFile(path("from/2 large"), std::string(1'000'000, 'x'));
        makeFile(path("from/3 small"), "fits");
        const SystemFault full({SystemCall::Write, ENOSPC, 300'000});
        const QString failures = copy(path("from"), path("to"));
        QCOMPARE(failures.count(u"No space left on device."_s), 1);
        QCOMPARE(names(m_root), std::vector<std::string>{"from"});
    }

    void holesStayHoles()
    {
        makeFile(path("file"), "begin");
        std::filesystem::resize_file(path("file"), 4U << 20U);
        std::ofstream(path("file"), std::ios::binary | std::ios::app) << "end";
        std::filesystem::resize_file(path("file"), (4U << 20U) + 70'000);
        CopyProgress last;
        QVERIFY(m_files
                    .copyItem(path("file"), path("copy"), CopiedTop::AsItIs,
                              [&last](const CopyProgress& progress) { last = progress; })
                    .empty());
        QVERIFY(statusOf(path("copy")).st_blocks <= statusOf(path("file")).st_blocks + 16);
        QVERIFY(bytesOf(path("copy")) == bytesOf(path("file")));
        QCOMPARE(last.bytes, (4U << 20U) + 70'000);
    }

    void tooDeepFoldersAreLeftOut()
    {
        FilePath deep = path("from");
        for (int level = 0; level < 250; ++level)
            deep /= "a";
        std::filesystem::create_directories(deep);
        makeFile(path("from/file"), "");
        QVERIFY(copy(path("from"), path("to")).endsWith(u"/a”: It is nested too deeply."_s));
        QCOMPARE(names(path("to")), (std::vector<std::string>{"a", "file"}));
    }

    void linksAtTheTopAreFollowedWhereAsked()
    {
        makeFile(path("folder/file"), "x");
        std::filesystem::permissions(path("folder"), std::filesystem::perms(0555));
        ::symlink("folder", path("link").c_str());
        ::symlink("file", path("folder link").c_str());
        QVERIFY(
            m_files.copyItem(path("link"), path("copy"), CopiedTop::ToBeFilled, nullptr).empty());
        QVERIFY((statusOf(path("copy")).st_mode & S_IWUSR) != 0);
        QVERIFY(m_files.finishFolder(path("link"), path("copy")));
        QCOMPARE(statusOf(path("copy")).st_mode & 07777U, 0555U);
        QCOMPARE(bytesOf(path("copy/file")), "x");
    }

    void whatKilledProcessesLeftIsRemoved()
    {
        makeFile(path("from/file"), "");
        makeFile(path(".tessel-copy-1/a/b"), "");
        makeFile(path(".tessel-copy-2-34"), ""); // as another version named them
        makeFile(path(".tessel-copy-notes"), "");
        makeFile(path(".tessel-copy-3/a"), "");
        const int owned = ::open(path(".tessel-copy-3").c_str(), O_RDONLY | O_CLOEXEC);
        QCOMPARE(::flock(owned, LOCK_EX), 0);
        QCOMPARE(copy(path("from"), path("to")), u""_s);
        ::close(owned);
        QCOMPARE(names(m_root),
                 (std::vector<std::string>{".tessel-copy-3", ".tessel-copy-notes", "from", "to"}));
    }

    void aCopyInTheMakingIsOwned()
    {
        makeFile(path("from/file"), "x");
        const auto otherCopy = [this](const CopyProgress& progress) {
            if (progress.items == 0)
                QCOMPARE(copy(path("from"), path("other")), u""_s);
        };
        QVERIFY(m_files.copyItem(path("from"), path("to"), CopiedTop::AsItIs, otherCopy).empty());
        QCOMPARE(bytesOf(path("to/file")), "x");
    }

    void aFolderIsNotCopiedIntoItself()
    {
        makeFile(path("from/below/file"), "");
        ::symlink("from/below", path("way in").c_str());
        for (const char* to : {"from/to", "from/below/to", "way in/to"})
            QVERIFY(copy(path("from"), path(to))
                        .endsWith(u": A folder cannot be copied into itself."_s));
        QCOMPARE(names(path("from/below")), std::vector<std::string>{"file"});
        QCOMPARE(copy(path("from"), path("from too")), u""_s); // beside it, although it begins so
    }

private:
    FilePath path(const char* name) const { return m_root / name; }

    void makeFile(const FilePath& file, std::string_view bytes) const
    {
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary) << bytes;
    }

    std::vector<std::string> names(const FilePath& folder)
    {
        return m_files.contentsOfFolder(folder).value_or(
            std::vector<std::string>{"cannot be listed"});
    }

    Result<FileAttributes> attributes(const char* name)
    {
        const auto items =
            m_files.itemsOfFolder(m_root, [name](auto found) { return found == name; });
        if (!items)
            return tl::unexpected(items.error());
        return items->size() == 1 ? items->front().attributes : failure("not found");
    }

    /// The descriptions of what failed.
    QString copy(const FilePath& from, const FilePath& to)
    {
        std::string failures;
        for (const Failure& failure : m_files.copyItem(from, to, CopiedTop::AsItIs, nullptr))
            failures += failure.description;
        return QString::fromStdString(failures);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    FilePath m_root;
    SystemFileManager m_files;
};

TESSEL_TEST(TestFileManager)
#include "tst_filemanager.moc"
