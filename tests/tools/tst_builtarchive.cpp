// SPDX-License-Identifier: MIT
#include "model/logger.h"
#include "platform/demonstrationstore.h"
#include "support/fakeplatform.h"
#include "support/testcase.h"
#include "tools/archiver.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

/// All of an entry but its identity, which is another one for each fetch.
QString fields(const LogEntry& entry)
{
    QStringList texts{QString::number(entry.type)};
    for (const Text* text :
         {&entry.activityIdentifier, &entry.category, &entry.composedMessage, &entry.date,
          &entry.level, &entry.parentActivityIdentifier, &entry.process, &entry.processIdentifier,
          &entry.sender, &entry.signpostIdentifier, &entry.signpostName, &entry.signpostType,
          &entry.storeCategory, &entry.subsystem, &entry.threadIdentifier})
        texts.append(text->toString());
    return texts.join(u'|');
}

} // namespace

/// An archive that the tool has built, read by the log browser.
class TestBuiltArchive : public TestCase
{
    Q_OBJECT

private Q_SLOTS:

    void isReadEntryForEntryLikeItsSource()
    {
        const QString source = m_platform.folder.filePath(u"db"_s);
        const QString destination = m_platform.folder.filePath(u"db.logarchive"_s);
        const qint64 now = m_platform.clock.now().toMSecsSinceEpoch() * 1'000'000;
        QVERIFY(DemonstrationStore(source.toStdString()).writeUntil(now));
        m_platform.logStores.localPath = source;

        const auto archiver = Archiver::make(m_platform.platform, m_files);
        archiver->createArchive(false);
        m_platform.panels.confirm(source);
        m_platform.panels.confirm(destination);

        const auto logger = Logger::make(m_platform.platform);
        const QList<LogEntry> expected = fetched(*logger);
        QVERIFY(expected.size() > 1000);
        logger->useArchive(QUrl::fromLocalFile(destination));
        const QList<LogEntry> found = fetched(*logger);
        QCOMPARE(found.size(), expected.size());
        for (qsizetype row = 0; row < found.size(); ++row)
            QCOMPARE(fields(found[row]), fields(expected[row]));
    }

private:
    QList<LogEntry> fetched(Logger& logger) const
    {
        const QDateTime hourAgo = m_platform.clock.now().addSecs(-3600);
        if (!logger.getLog(hourAgo, u"00"_s, u"100000"_s, nullptr, true, 7200))
            return {};
        return logger.logList();
    }

    FakePlatform m_platform;
    SystemFileManager m_files;
};

TESSEL_TEST(TestBuiltArchive)
#include "tst_builtarchive.moc"
