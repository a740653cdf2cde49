// SPDX-License-Identifier: MIT
#include "platform/filemanager.h"
#include "support/testcase.h"

#include <QFile>
#include <QScopeGuard>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <fcntl.h>
#include <fstream>
#include <sys/resource.h>
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
        QVERIFY(copy(path("\xff\xfe.tracev3"), path("copy")));
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
        QCOMPARE(file->modified.time_since_epoch().count(), 1'000'000'000'123'456'789);
        QVERIFY(file->created.time_since_epoch() > std::chrono::hours(24 * 365 * 50));
        QVERIFY(m_files.createFolder(path("folder")));
        QVERIFY(!attributes("folder")->isRegularFile);
        ::symlink("file", path("link").c_str());
        QVERIFY(!attributes("link")->isRegularFile);
    }

    void farTimesAreCut_data()
    {
        QTest::addColumn<qint64>("seconds");
        QTest::newRow("far ahead") << qint64{15'000'000'000};
        QTest::newRow("far back") << qint64{-15'000'000'000};
    }

    void farTimesAreCut()
    {
        QFETCH(qint64, seconds);
        makeFile(path("file"), "");
        setModified(path("file"), seconds, 0);
        const auto file = attributes("file");
        QCOMPARE(file->modified > FileTime(), seconds > 0);
        const auto opposite = -file->modified.time_since_epoch();
        QCOMPARE(file->modified > FileTime(opposite),
                 seconds > 0); // so far from each other they can be
        QCOMPARE((file->modified - FileTime(opposite)).count() > 0, seconds > 0);
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
        QVERIFY(copy(path("file"), path("copy")));
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
        QVERIFY(copy(path("from"), path("to")));
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
        QVERIFY(m_files.copyItem(path("from"), path("to"), observer));
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
        QVERIFY(copy(path("from"), path("to")));
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
        QVERIFY(copy(path("from"), path("to")));
        QCOMPARE(std::filesystem::read_symlink(path("to/up")), FilePath(".."));
        QCOMPARE(std::filesystem::read_symlink(path("to/loop")), FilePath("loop"));
        QCOMPARE(std::filesystem::read_symlink(path("to/broken")), FilePath("/nowhere"));
        QVERIFY(copy(path("top"), path("top copy")));
        QCOMPARE(std::filesystem::read_symlink(path("top copy")), FilePath("from"));
    }

    void copiesWhatTheKernelCannot()
    {
        QVERIFY(copy("/proc/self/cmdline", path("copy")));
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

        const auto copied = copy(path("from"), m_root / target.toStdString());
        QVERIFY(!copied);
        QCOMPARE(
            QString::fromStdString(copied.error().description),
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
        QTest::addColumn<QString>("description");
        QTest::newRow("missing") << u"missing"_s << u"to"_s
                                 << u"The item “%1/missing” could not be copied to “%1/to”: "
                                    "No such file or directory."_s;
        QTest::newRow("no such place")
            << u"good"_s << u"missing/to"_s
            << u"The item “%1/good” could not be copied to “%1/missing/to”: "
               "No such file or directory."_s;
        QTest::newRow("a pipe inside") << u"bad"_s << u"to"_s
                                       << u"The item “%1/bad/locked/pipe” could not be copied to "
                                          "“%1/to/locked/pipe”: Operation not supported."_s;
    }

    void copyFailuresLeaveNothing()
    {
        QFETCH(QString, from);
        QFETCH(QString, to);
        QFETCH(QString, description);
        makeFile(path("good"), "");
        makeFile(path("bad/a/file"), "");
        makeFile(path("bad/locked/file"), "");
        QCOMPARE(::mkfifo(path("bad/locked/pipe").c_str(), 0600), 0);
        std::filesystem::permissions(path("bad/a"), std::filesystem::perms(0555));
        std::filesystem::permissions(path("bad/locked"), std::filesystem::perms(0555));

        const auto copied = copy(m_root / from.toStdString(), m_root / to.toStdString());
        QVERIFY(!copied);
        QCOMPARE(QString::fromStdString(copied.error().description),
                 description.arg(m_folder->path()));
        QCOMPARE(names(m_root), (std::vector<std::string>{"bad", "good"}));
    }

    void noRoomLeavesNothing()
    {
        makeFile(path("from/1 small"), "fits");
        makeFile(path("from/2 large"), std::string(1'000'000, 'x'));
        rlimit before = {};
        ::getrlimit(RLIMIT_FSIZE, &before);
        rlimit small = before;
        small.rlim_cur = 100'000;
        const auto handler = std::signal(SIGXFSZ, SIG_IGN);
        ::setrlimit(RLIMIT_FSIZE, &small);
        const auto restore = qScopeGuard([&] {
            ::setrlimit(RLIMIT_FSIZE, &before);
            std::signal(SIGXFSZ, handler);
        });

        const auto copied = copy(path("from"), path("to"));
        QVERIFY(!copied);
        QCOMPARE(
            QString::fromStdString(copied.error().description),
            u"The item “%1/from/2 large” could not be copied to “%1/to/2 large”: File too large."_s
                .arg(m_folder->path()));
        QCOMPARE(names(m_root), std::vector<std::string>{"from"});
    }

    void aFolderIsNotCopiedIntoItself()
    {
        makeFile(path("from/below/file"), "");
        ::symlink("from/below", path("way in").c_str());
        QVERIFY(!copy(path("from"), path("from/to")));
        QVERIFY(!copy(path("from"), path("from/below/to")));
        QVERIFY(!copy(path("from"), path("way in/to")));
        QCOMPARE(names(path("from/below")), std::vector<std::string>{"file"});
        QVERIFY(copy(path("from"), path("from too"))); // beside it, although it begins so
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

    Result<void> copy(const FilePath& from, const FilePath& to)
    {
        return m_files.copyItem(from, to, nullptr);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    FilePath m_root;
    SystemFileManager m_files;
};

TESSEL_TEST(TestFileManager)
#include "tst_filemanager.moc"
