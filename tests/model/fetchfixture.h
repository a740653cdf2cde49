// SPDX-License-Identifier: MIT
#pragma once

#include "model/logger.h"
#include "support/fakeplatform.h"
#include "support/smallstore.h"
#include "support/testcase.h"

/// What tests of fetches share: a logger whose local store is written by the test.
class FetchFixture : public TestCase
{
    Q_OBJECT

protected:
    static constexpr qint64 second = 1'000'000'000;
    static constexpr qint64 startTime = 1709816700 * second; // 2024-03-07 14:05:00 in Berlin

    static QDateTime atMinute()
    {
        return QDateTime(QDate(2024, 3, 7), QTime(13, 5, 42, 7), QTimeZone::utc());
    }

    void write(SmallStore& store)
    {
        const QString path = m_fake->folder.filePath(QStringLiteral("local"));
        QVERIFY(store.write(path));
        m_fake->logStores.localPath = path;
    }

    bool fetch(const QString& seconds, const QString& maximum, double period, bool signposts = true)
    {
        return m_logger->getLog(atMinute(), seconds, maximum, nullptr, signposts, period);
    }

    /// A message named by its number every second from the start on.
    void writeSeconds(int count)
    {
        SmallStore store(startTime - 3600 * second);
        for (int i = 0; i < count; ++i)
            store.log(startTime + i * second, std::to_string(i));
        write(store);
    }

    std::unique_ptr<FakePlatform> m_fake;
    std::shared_ptr<Logger> m_logger;

private Q_SLOTS:
    void init()
    {
        TestCase::init();
        m_fake = std::make_unique<FakePlatform>();
        m_logger = Logger::make(m_fake->platform);
    }

    void cleanup()
    {
        m_logger.reset();
        m_fake.reset();
    }
};
