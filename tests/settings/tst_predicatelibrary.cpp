// SPDX-License-Identifier: MIT
#include "settings/predicatelibrary.h"
#include "settings/preferences.h"

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

class tst_PredicateLibrary : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void newUserHasTheDefaultRows();
    void absentPreferencesHaveTheirValues();
    void clearedTextsStayEmpty();
    void eachColumnFallsBackByItself();
    void appendStoresPlainQuotes();
    void appendNeedsNameAndText_data();
    void appendNeedsNameAndText();
    void appendChangesNothingElseInTheText();
    void appendsInARowAllStay();
    void appendAfterResetKeepsTheReset();
    void resetStoresTheDefaultRows();
    void quotesAreMadePlain_data();
    void quotesAreMadePlain();

private:
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<UserDefaults> m_defaults;
};

void tst_PredicateLibrary::init()
{
    QTest::failOnWarning(QRegularExpression(u"."_s));
    m_folder = std::make_unique<QTemporaryDir>();
    m_defaults = std::make_unique<UserDefaults>(m_folder->filePath(u"Tessel.conf"_s));
}

void tst_PredicateLibrary::newUserHasTheDefaultRows()
{
    const PredicateLibrary library = PredicateLibrary::load(*m_defaults);
    QCOMPARE(library.predNames,
             (QStringList{u"none"_s, u"subsystem \u27a4\u27a4"_s, u"eventMessage \u27a4\u27a4"_s,
                          u"processImagePath \u27a4\u27a4"_s, u"senderImagePath \u27a4\u27a4"_s,
                          u"\u2b05\ufe0e [ \u2026 ]"_s, u"TimeMachineBasic"_s, u"TimeMachineFull"_s,
                          u"error"_s, u"kernel"_s, u"quillon"_s}));
    QCOMPARE(library.predList.size(), 11);
    QCOMPARE(library.predList.mid(0, 6), QStringList(6, QString()));
    QCOMPARE(
        library.predList[7],
        u"subsystem == \"com.apple.TimeMachine\" || eventMessage CONTAINS[c] \"backup\" || "
        "eventMessage CONTAINS[c] \"Time Machine\" || eventMessage CONTAINS[c] \"TimeMachine\""_s);
    QCOMPARE(library.predList[9], u"processID = 0"_s);
}

void tst_PredicateLibrary::absentPreferencesHaveTheirValues()
{
    using namespace preferences;
    QCOMPARE(value(*m_defaults, predicate), u""_s);
    QCOMPARE(value(*m_defaults, period), u"5.0"_s);
    QCOMPARE(value(*m_defaults, maxCount), u"1000"_s);
    QCOMPARE(value(*m_defaults, fullMode), false);
    QCOMPARE(value(*m_defaults, showSignposts), false);
    QCOMPARE(value(*m_defaults, lightMode), false);
    QCOMPARE(value(*m_defaults, specPred), u""_s);
}

void tst_PredicateLibrary::clearedTextsStayEmpty()
{
    m_defaults->set(u"period"_s, u""_s);
    m_defaults->set(u"predNames"_s, QStringList());
    QCOMPARE(preferences::value(*m_defaults, preferences::period), u""_s);
    QCOMPARE(preferences::value(*m_defaults, preferences::predNames), QStringList());
}

void tst_PredicateLibrary::eachColumnFallsBackByItself()
{
    m_defaults->set(u"predList"_s, QStringList{u"a"_s, u"b"_s});
    const PredicateLibrary library = PredicateLibrary::load(*m_defaults);
    QCOMPARE(library.predList, (QStringList{u"a"_s, u"b"_s}));
    QCOMPARE(library.predNames, defaultPredicateNames());
}

void tst_PredicateLibrary::appendStoresPlainQuotes()
{
    m_defaults->set(u"PredicateText"_s, u"subsystem == “com.apple.TimeMachine”"_s);
    QVERIFY(appendPredicate(*m_defaults, u"backups"_s));
    QCOMPARE(m_defaults->stringArray(u"predList"_s).value_or(QStringList()),
             defaultPredicateTexts() + QStringList{u"subsystem == \"com.apple.TimeMachine\""_s});
    QCOMPARE(m_defaults->stringArray(u"predNames"_s).value_or(QStringList()),
             defaultPredicateNames() + QStringList{u"backups"_s});
    QCOMPARE(m_defaults->string(u"PredicateText"_s), u""_s);
}

void tst_PredicateLibrary::appendNeedsNameAndText_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("text");
    QTest::newRow("no name") << u""_s << u"processID = 0"_s;
    QTest::newRow("no text") << u"kernel"_s << u""_s;
}

void tst_PredicateLibrary::appendNeedsNameAndText()
{
    QFETCH(QString, name);
    QFETCH(QString, text);
    m_defaults->set(u"PredicateText"_s, text);
    const QSignalSpy changed(m_defaults.get(), &UserDefaults::changed);
    QVERIFY(!appendPredicate(*m_defaults, name));
    QCOMPARE(changed.count(), 0);
    QCOMPARE(m_defaults->string(u"PredicateText"_s), text);
}

void tst_PredicateLibrary::appendChangesNothingElseInTheText()
{
    const QString odd = u"  no ‘predicate’ at\nall, «really»  \n"_s;
    m_defaults->set(u"PredicateText"_s, odd);
    QVERIFY(appendPredicate(*m_defaults, u" "_s));
    const PredicateLibrary library = PredicateLibrary::load(*m_defaults);
    QCOMPARE(library.predList.last(), odd);
    QCOMPARE(library.predNames.last(), u" "_s);
}

void tst_PredicateLibrary::appendsInARowAllStay()
{
    for (const QString& name : {u"first"_s, u"second"_s, u"first"_s}) {
        m_defaults->set(u"PredicateText"_s, u"category == \"%1\""_s.arg(name));
        QVERIFY(appendPredicate(*m_defaults, name));
    }
    const PredicateLibrary library = PredicateLibrary::load(*m_defaults);
    QCOMPARE(library.predNames.mid(11), (QStringList{u"first"_s, u"second"_s, u"first"_s}));
    QCOMPARE(library.predList.size(), 14);
}

void tst_PredicateLibrary::appendAfterResetKeepsTheReset()
{
    m_defaults->set(u"PredicateText"_s, u"a == 1"_s);
    QVERIFY(appendPredicate(*m_defaults, u"old"_s));
    resetPredicateLibrary(*m_defaults);
    m_defaults->set(u"PredicateText"_s, u"b == 1"_s);
    QVERIFY(appendPredicate(*m_defaults, u"new"_s));
    QCOMPARE(PredicateLibrary::load(*m_defaults).predNames.mid(11), QStringList{u"new"_s});
}

void tst_PredicateLibrary::resetStoresTheDefaultRows()
{
    m_defaults->set(u"predList"_s, QStringList{u"x"_s});
    m_defaults->set(u"predNames"_s, QStringList());
    m_defaults->set(u"PredicateText"_s, u"half written"_s);
    resetPredicateLibrary(*m_defaults);
    QCOMPARE(m_defaults->stringArray(u"predList"_s), defaultPredicateTexts());
    QCOMPARE(m_defaults->stringArray(u"predNames"_s), defaultPredicateNames());
    QCOMPARE(m_defaults->string(u"PredicateText"_s), u"half written"_s);
}

void tst_PredicateLibrary::quotesAreMadePlain_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("plain");
    QTest::newRow("double") << u"\u201ca\u201d"_s << u"\"a\""_s;
    QTest::newRow("single stay") << u"\u2018a\u2019"_s << u"\u2018a\u2019"_s;
    QTest::newRow("low and angle stay")
        << u"\u201ea\u201f \u00aba\u00bb"_s << u"\u201ea\u201f \u00aba\u00bb"_s;
    QTest::newRow("already plain") << u"\"a\" 'b'"_s << u"\"a\" 'b'"_s;
}

void tst_PredicateLibrary::quotesAreMadePlain()
{
    QFETCH(QString, text);
    QTEST(withPlainQuotes(text), "plain");
}

QTEST_GUILESS_MAIN(tst_PredicateLibrary)
#include "tst_predicatelibrary.moc"
