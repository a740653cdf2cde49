// SPDX-License-Identifier: MIT
#include "platform/desktop/statefile.h"
#include "support/testcase.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

class TestStateFile : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestCase::init();
        m_folder = std::make_unique<QTemporaryDir>();
    }

    void standsInTheStateFolder_data()
    {
        QTest::addColumn<QByteArray>("variable");
        QTest::addColumn<QString>("expected");
        const QString byDefault = QDir::homePath() + u"/.local/state/Tessel/state.ini"_s;
        QTest::addRow("set") << QByteArray("/var/me") << u"/var/me/Tessel/state.ini"_s;
        QTest::addRow("not set") << QByteArray() << byDefault;
        QTest::addRow("relative paths do not count") << QByteArray("state") << byDefault;
    }

    void standsInTheStateFolder()
    {
        QFETCH(QByteArray, variable);
        QFETCH(QString, expected);
        qputenv("XDG_STATE_HOME", variable);
        QCOMPARE(StateFile::defaultPath(), expected);
    }

    void remembersTheLastFolder()
    {
        StateFile(path()).setLastFolder(m_folder->path());
        QCOMPARE(StateFile(path()).lastFolder(), m_folder->path());
    }

    void vanishedFolderIsForgotten()
    {
        StateFile state(path());
        const QString before = state.lastFolder();
        state.setLastFolder(m_folder->filePath(u"gone"_s));
        QCOMPARE(state.lastFolder(), before);
    }

    void remembersArrangements()
    {
        const QByteArray arrangement("\0bytes\xff", 7);
        StateFile(path()).setArrangement(u"ContentView.toolbar"_s, arrangement);
        const StateFile state(path());
        QCOMPARE(state.arrangement(u"ContentView.toolbar"_s), arrangement);
        QCOMPARE(state.arrangement(u"another"_s), QByteArray());
    }

    void remembersRecentFiles()
    {
        QStringList paths;
        for (int i = 0; i < 12; ++i) {
            paths.prepend(m_folder->filePath(u"%1.tessel"_s.arg(i)));
            StateFile(path()).addRecentFile(paths.constFirst());
        }
        StateFile state(path());
        QCOMPARE(state.recentFiles(), paths.mid(0, 10));
        paths.move(5, 0);
        state.addRecentFile(paths.constFirst());
        QCOMPARE(state.recentFiles(), paths.mid(0, 10));
        state.clearRecentFiles();
        QCOMPARE(state.recentFiles(), QStringList());
    }

private:
    QString path() const { return m_folder->filePath(u"deep/state.ini"_s); }

    std::unique_ptr<QTemporaryDir> m_folder;
};

TESSEL_TEST(TestStateFile)
#include "tst_statefile.moc"
