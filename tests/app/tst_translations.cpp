// SPDX-License-Identifier: MIT
#include "app/appfixture.h"
#include "support/testcase.h"

#include <QAbstractButton>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QTest>
#include <QToolBar>
#include <QTranslator>

using namespace Qt::StringLiterals;

namespace {

QStringList menuTitles(const QWidget& window)
{
    QStringList titles;
    for (const QAction* action : window.findChild<QMenuBar*>()->actions())
        titles.append(action->text().remove(u'&'));
    return titles;
}

QStringList actionTexts(const QList<QAction*>& actions)
{
    QStringList texts;
    for (const QAction* action : actions)
        texts.append(action->text());
    return texts;
}

/// What Alt and a letter reaches in a window: its menus and its controls.
QStringList reachableTexts(const QWidget& window)
{
    QStringList texts = actionTexts(window.findChild<QMenuBar*>()->actions());
    for (const auto* label : window.findChildren<QLabel*>()) {
        if (label->buddy())
            texts.append(label->text());
    }
    for (const auto* button : window.findChildren<QAbstractButton*>())
        texts.append(button->text());
    return texts;
}

/// The first text with a letter that another has as well.
QString ambiguous(const QStringList& texts)
{
    QList<QKeySequence> seen;
    for (const QString& text : texts) {
        const QKeySequence mnemonic = QKeySequence::mnemonic(text);
        if (mnemonic.isEmpty())
            continue;
        if (seen.contains(mnemonic))
            return text;
        seen.append(mnemonic);
    }
    return {};
}

} // namespace

class TestTranslations : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QApplication::setQuitOnLastWindowClosed(false); }

    void init()
    {
        TestCase::init();
        m_translator = std::make_unique<QTranslator>();
        m_fixture = std::make_unique<AppFixture>();
    }

    void cleanup()
    {
        m_fixture.reset();
        m_translator.reset();
    }

    void menusAreTranslated_data()
    {
        QTest::addColumn<QString>("language");
        QTest::addColumn<QStringList>("titles");
        QTest::newRow("English") << u"en"_s << QStringList{u"Tessel"_s, u"File"_s,   u"Edit"_s,
                                                           u"View"_s,   u"Window"_s, u"Help"_s};
        QTest::newRow("German") << u"de"_s
                                << QStringList{u"Tessel"_s,  u"Datei"_s,   u"Bearbeiten"_s,
                                               u"Ansicht"_s, u"Fenster"_s, u"Hilfe"_s};
    }

    void menusAreTranslated()
    {
        QFETCH(QString, language);
        QFETCH(QStringList, titles);
        const QWidget& window = startedIn(language);
        QVERIFY(!m_translator->isEmpty());
        QCOMPARE(menuTitles(window), titles);
    }

    void namesOfCommandsStay_data() { menusAreTranslated_data(); }

    /// The manual, and whoever helps, call them by these in every language.
    void namesOfCommandsStay()
    {
        QFETCH(QString, language);
        QStringList texts;
        for (const QAction* action : startedIn(language).findChild<QToolBar*>()->actions())
            texts.append(action->iconText());
        for (const QString& name :
             {u"Get Log"_s, u"Use Logarchive"_s, u"Read JSON"_s, u"Add Note"_s, u"Gloss"_s,
              u"Reduce"_s, u"Save JSON"_s, u"Save RTF"_s})
            QVERIFY2(texts.contains(name), qPrintable(texts.join(u'|')));
    }

    void lettersDiffer_data() { menusAreTranslated_data(); }

    void lettersDiffer()
    {
        QFETCH(QString, language);
        const QWidget& window = startedIn(language);
        QCOMPARE(ambiguous(reachableTexts(window)), QString());
        for (const QAction* menu : window.findChild<QMenuBar*>()->actions())
            QCOMPARE(ambiguous(actionTexts(menu->menu()->actions())), QString());
    }

private:
    /// The main window, with the texts of a language.
    QWidget& startedIn(const QString& language)
    {
        if (m_translator->load(u":/translations/tessel_"_s + language))
            QCoreApplication::installTranslator(m_translator.get());
        return m_fixture->start().newWindow();
    }

    std::unique_ptr<QTranslator> m_translator;
    std::unique_ptr<AppFixture> m_fixture;
};

TESSEL_TEST(TestTranslations)
#include "tst_translations.moc"
