// SPDX-License-Identifier: MIT
#include "settings/predicatelibrary.h"
#include "settings/preferences.h"
#include "support/testcase.h"

#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

class TestPredicateLibrary : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestCase::init();
        m_folder = std::make_unique<QTemporaryDir>();
        m_defaults = std::make_unique<UserDefaults>(m_folder->filePath(u"Tessel.conf"_s));
    }

    void newUserHasTheDefaultRows()
    {
        const PredicateLibrary library = PredicateLibrary::load(*m_defaults);
        QCOMPARE(
            library.predNames,
            (QStringList{u"none"_s, u"subsystem \u27a4\u27a4"_s, u"eventMessage \u27a4\u27a4"_s,
                         u"processImagePath \u27a4\u27a4"_s, u"senderImagePath \u27a4\u27a4"_s,
                         u"\u2b05\ufe0e [ \u2026 ]"_s, u"TimeMachineBasic"_s, u"TimeMachineFull"_s,
                         u"error"_s, u"kernel"_s, u"quillon"_s}));
        const QString basic = u"subsystem == \"com.apple.TimeMachine\""_s;
        const QStringList written{basic,
                                  basic
                                      + u" || eventMessage CONTAINS[c] \"backup\" || eventMessage "
                                        u"CONTAINS[c] \"Time Machine\" "
                                        "|| eventMessage CONTAINS[c] \"TimeMachine\""_s,
                                  u"eventMessage CONTAINS[c] \"error\""_s, u"processID = 0"_s,
                                  u"subsystem == \"org.tessel.quillon\""_s};
        QCOMPARE(library.predList, QStringList(6, QString()) + written);
    }

    void clearedTextsStayEmpty()
    {
        m_defaults->set(u"period"_s, u""_s);
        m_defaults->set(u"predNames"_s, QStringList());
        QCOMPARE(preferences::value(*m_defaults, preferences::period), u""_s);
        QCOMPARE(preferences::value(*m_defaults, preferences::predNames), QStringList());
    }

    void eachColumnFallsBackByItself()
    {
        m_defaults->set(u"predList"_s, QStringList{u"a"_s, u"b"_s});
        const PredicateLibrary library = PredicateLibrary::load(*m_defaults);
        QCOMPARE(library.predList, (QStringList{u"a"_s, u"b"_s}));
        QCOMPARE(library.predNames, defaultPredicateNames());
    }

    void appendNeedsAName()
    {
        m_defaults->set(u"PredicateText"_s, u"processID = 0"_s);
        QVERIFY(!appendPredicate(*m_defaults, u""_s));
        QCOMPARE(m_defaults->stringArray(u"predList"_s), std::nullopt);
        QCOMPARE(m_defaults->string(u"PredicateText"_s), u"processID = 0"_s);
    }

    void appendChangesNothingElseInTheText()
    {
        const QString odd = u"  no ‘predicate’ at\nall, «„really‟»  \n"_s;
        m_defaults->set(u"PredicateText"_s, odd);
        QVERIFY(appendPredicate(*m_defaults, u" "_s));
        const PredicateLibrary library = PredicateLibrary::load(*m_defaults);
        QCOMPARE(library.predList.last(), odd);
        QCOMPARE(library.predNames.last(), u" "_s);
    }

    void appendsInARowAllStay()
    {
        for (const QString& name : {u"first"_s, u"second"_s, u"first"_s}) {
            m_defaults->set(u"PredicateText"_s, u"category == \"%1\""_s.arg(name));
            QVERIFY(appendPredicate(*m_defaults, name));
        }
        const PredicateLibrary library = PredicateLibrary::load(*m_defaults);
        QCOMPARE(library.predNames.mid(11), (QStringList{u"first"_s, u"second"_s, u"first"_s}));
        QCOMPARE(library.predList.size(), 14);
    }

    void appendAfterResetKeepsTheReset()
    {
        m_defaults->set(u"PredicateText"_s, u"a == 1"_s);
        QVERIFY(appendPredicate(*m_defaults, u"old"_s));
        resetPredicateLibrary(*m_defaults);
        m_defaults->set(u"PredicateText"_s, u"b == 1"_s);
        QVERIFY(appendPredicate(*m_defaults, u"new"_s));
        QCOMPARE(PredicateLibrary::load(*m_defaults).predNames.mid(11), QStringList{u"new"_s});
    }

private:
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<UserDefaults> m_defaults;
};

TESSEL_TEST(TestPredicateLibrary)
#include "tst_predicatelibrary.moc"
