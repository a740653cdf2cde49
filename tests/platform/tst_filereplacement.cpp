// SPDX-License-Identifier: MIT
#include "platform/filereplacement.h"
#include "support/testcase.h"

#include <QDir>
#include <QFile>
#include <QIODevice>
#include <QTemporaryDir>
#include <QTest>

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
        const auto result = replaceFile(m_folder->filePath(u"file"_s), [](QIODevice& file) {
            file.write("half of the n");
            return false;
        });
        QVERIFY(!result);
        QCOMPARE(content(u"file"_s), "old"_ba);
        QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files | QDir::Hidden),
                 QStringList(u"file"_s));
    }

    void failsWithThePath_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("in a missing folder") << u"missing/file"_s;
        QTest::newRow("in place of a folder") << u"."_s;
    }

    void failsWithThePath()
    {
        QFETCH(QString, name);
        const auto result = write(name, "content");
        QVERIFY(!result);
        const QString description = QString::fromStdString(result.error().description);
        QVERIFY2(description.contains(m_folder->filePath(name)), qPrintable(description));
    }

private:
    QByteArray content(const QString& name) const
    {
        QFile file(m_folder->filePath(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    Result<void> write(const QString& name, const QByteArray& bytes) const
    {
        return replaceFile(m_folder->filePath(name),
                           [&](QIODevice& file) { return file.write(bytes) == bytes.size(); });
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

TESSEL_TEST(TestFileReplacement)
#include "tst_filereplacement.moc"
