// SPDX-License-Identifier: MIT
#include "platform/filereplacement.h"
#include "support/testcase.h"

#include <QDir>
#include <QFile>
#include <QIODevice>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

class TestFileReplacement : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }

    void writesANewFile()
    {
        QVERIFY(write(u"new"_s, "content"));
        QCOMPARE(content(u"new"_s), "content"_ba);
    }

    void replacesTheWholeFile()
    {
        QVERIFY(write(u"file"_s, "a long content"));
        QVERIFY(write(u"file"_s, "short"));
        QCOMPARE(content(u"file"_s), "short"_ba);
        QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files | QDir::Hidden),
                 QStringList(u"file"_s));
    }

    void followsALink()
    {
        QVERIFY(write(u"file"_s, "old"));
        QVERIFY(QFile::link(m_folder->filePath(u"file"_s), m_folder->filePath(u"link"_s)));
        QVERIFY(write(u"link"_s, "new"));
        QCOMPARE(content(u"file"_s), "new"_ba);
    }

    void givenUpLeavesTheOldFile()
    {
        QVERIFY(write(u"file"_s, "old"));
        const auto result = replaceFile(path(u"file"_s), [](QIODevice& file) {
            file.write("half of the n");
            return false;
        });
        QVERIFY(!result);
        QCOMPARE(content(u"file"_s), "old"_ba);
        QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files | QDir::Hidden),
                 QStringList(u"file"_s));
    }

    void keepsOwnerGroupPermissions()
    {
        QVERIFY(write(u"file"_s, "old"));
        QCOMPARE(::chmod(path(u"file"_s).c_str(), 0640), 0);
        const bool isRoot = ::chown(path(u"file"_s).c_str(), 12, 34) == 0;
        QVERIFY(write(u"file"_s, "new"));
        struct stat item = {};
        QCOMPARE(::stat(path(u"file"_s).c_str(), &item), 0);
        QCOMPARE(item.st_mode & 07777U, 0640U);
        QCOMPARE(item.st_uid, isRoot ? 12U : ::geteuid());
        QCOMPARE(item.st_gid, isRoot ? 34U : ::getegid());
    }

    void whatAKilledProcessLeftIsRemoved()
    {
        QVERIFY(write(u".tessel-copy-1"_s, "half"));
        QVERIFY(write(u"file"_s, "new"));
        QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files | QDir::Hidden),
                 QStringList(u"file"_s));
    }

    void refusalsSayWhy_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("reason");
        QTest::newRow("missing folder")
            << u"missing/file"_s
            << u"No file can be created in the folder “%1/missing”: No such file or directory"_s;
        QTest::newRow("folder") << u"folder"_s << u"Is a directory"_s;
        const QString noFile = u"A device or pipe is not replaced by a file"_s;
        QTest::newRow("pipe") << u"pipe"_s << noFile;
        QTest::newRow("device") << u"device"_s << noFile;
        if (::geteuid() == 0) // who may write to what is read-only
            return;
        QTest::newRow("read-only file") << u"locked/read-only"_s << u"Permission denied"_s;
        QTest::newRow("read-only folder")
            << u"locked/file"_s
            << u"No file can be created in the folder “%1/locked”: Permission denied"_s;
    }

    void refusalsSayWhy()
    {
        QFETCH(QString, name);
        QFETCH(QString, reason);
        QVERIFY(QDir(m_folder->path()).mkpath(u"folder"_s));
        QVERIFY(QDir(m_folder->path()).mkpath(u"locked"_s));
        QVERIFY(write(u"locked/read-only"_s, "old"));
        QVERIFY(write(u"locked/file"_s, "old"));
        QCOMPARE(::chmod(path(u"locked/read-only"_s).c_str(), 0400), 0);
        QCOMPARE(::chmod(path(u"locked"_s).c_str(), 0500), 0);
        QCOMPARE(::mkfifo(path(u"pipe"_s).c_str(), 0600), 0);
        QVERIFY(QFile::link(u"/dev/null"_s, m_folder->filePath(u"device"_s)));

        const auto result = write(name, "content");
        ::chmod(path(u"locked"_s).c_str(), 0700);
        QVERIFY(!result);
        if (name == u"device")
            name = u"/dev/null"_s; // at the end of the link
        else
            name.prepend(m_folder->path() + u'/');
        QCOMPARE(QString::fromStdString(result.error().description),
                 u"The file “%1” could not be written: "_s.arg(name)
                     + (reason.contains(u'%') ? reason.arg(m_folder->path()) : reason) + u'.');
        QVERIFY(content(u"locked/file"_s) == "old");
    }

private:
    std::filesystem::path path(const QString& name) const
    {
        return m_folder->filePath(name).toStdString();
    }

    QByteArray content(const QString& name) const
    {
        QFile file(m_folder->filePath(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    Result<void> write(const QString& name, const QByteArray& bytes) const
    {
        return replaceFile(path(name), bytes);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

TESSEL_TEST(TestFileReplacement)
#include "tst_filereplacement.moc"
