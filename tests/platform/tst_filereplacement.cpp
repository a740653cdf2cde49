// SPDX-License-Identifier: MIT
#include "platform/filereplacement.h"

#include <QDir>
#include <QFile>
#include <QIODevice>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

class TestFileReplacement : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void writesANewFile();
    void replacesTheWholeFile();
    void followsALink();
    void givenUpLeavesTheOldFile();
    void failsWithThePath_data();
    void failsWithThePath();

private:
    QByteArray content(const QString& name) const;
    Result<void> write(const QString& name, const QByteArray& bytes) const;

    std::unique_ptr<QTemporaryDir> m_folder;
};

void TestFileReplacement::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
}

QByteArray TestFileReplacement::content(const QString& name) const
{
    QFile file(m_folder->filePath(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

Result<void> TestFileReplacement::write(const QString& name, const QByteArray& bytes) const
{
    return replaceFile(m_folder->filePath(name),
                       [&](QIODevice& file) { return file.write(bytes) == bytes.size(); });
}

void TestFileReplacement::writesANewFile()
{
    QVERIFY(write(u"new"_s, "content"));
    QCOMPARE(content(u"new"_s), "content"_ba);
}

void TestFileReplacement::replacesTheWholeFile()
{
    QVERIFY(write(u"file"_s, "a long content"));
    QVERIFY(write(u"file"_s, "short"));
    QCOMPARE(content(u"file"_s), "short"_ba);
    QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files | QDir::Hidden), QStringList(u"file"_s));
}

void TestFileReplacement::followsALink()
{
    QVERIFY(write(u"file"_s, "old"));
    QVERIFY(QFile::link(m_folder->filePath(u"file"_s), m_folder->filePath(u"link"_s)));
    QVERIFY(write(u"link"_s, "new"));
    QCOMPARE(content(u"file"_s), "new"_ba);
}

void TestFileReplacement::givenUpLeavesTheOldFile()
{
    QVERIFY(write(u"file"_s, "old"));
    const auto result = replaceFile(m_folder->filePath(u"file"_s), [](QIODevice& file) {
        file.write("half of the n");
        return false;
    });
    QVERIFY(!result);
    QCOMPARE(content(u"file"_s), "old"_ba);
    QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files | QDir::Hidden), QStringList(u"file"_s));
}

void TestFileReplacement::failsWithThePath_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("in a missing folder") << u"missing/file"_s;
    QTest::newRow("in place of a folder") << u"."_s;
}

void TestFileReplacement::failsWithThePath()
{
    QFETCH(QString, name);
    const auto result = write(name, "content");
    QVERIFY(!result);
    const QString description = QString::fromStdString(result.error().description);
    QVERIFY2(description.contains(m_folder->filePath(name)), qPrintable(description));
}

QTEST_GUILESS_MAIN(TestFileReplacement)
#include "tst_filereplacement.moc"
