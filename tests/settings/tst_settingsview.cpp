// SPDX-License-Identifier: MIT
#include "platform/userdefaults.h"
#include "settings/predicatelibrary.h"
#include "settings/settingsview.h"
#include "support/testcase.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBlock>

using namespace Qt::StringLiterals;

namespace {

std::optional<QString> needsAnEqualsSign(const QString& predicate)
{
    if (predicate.contains(u'=') && !predicate.contains(u'\u201c'))
        return std::nullopt;
    return u"Character %1: <b> is no comparison."_s.arg(predicate.size());
}

} // namespace

class TestSettingsView : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestCase::init();
        m_window.reset();
        m_folder = std::make_unique<QTemporaryDir>();
        m_defaults = std::make_unique<UserDefaults>(m_folder->filePath(u"Tessel.conf"_s));
        m_window = newWindow();
    }

    void opensOnTheGeneralTab()
    {
        QCOMPARE(m_window->currentIndex(), 0);
        QCOMPARE(m_window->tabText(0), u"General"_s);
        QCOMPARE(m_window->tabText(1), u"Predicate"_s);
        for (int tab = 0; tab < 2; ++tab)
            QVERIFY(!m_window->tabIcon(tab).isNull());
        QVERIFY(qobject_cast<GenTab*>(m_window->widget(0)));
        QVERIFY(qobject_cast<PredTab*>(m_window->widget(1)));
    }

    void newUserSeesTheDefaults()
    {
        QCOMPARE(find<QLineEdit>(u"predicate"_s)->text(), u""_s);
        QCOMPARE(find<QLineEdit>(u"period"_s)->text(), u""_s);
        QCOMPARE(find<QLineEdit>(u"maxCount"_s)->text(), u""_s);
        QVERIFY(find<QCheckBox>(u"fullMode"_s)->isChecked());
        QVERIFY(!find<QCheckBox>(u"showSignposts"_s)->isChecked());
        QVERIFY(!find<QCheckBox>(u"lightMode"_s)->isChecked());
        QVERIFY(!QFile::exists(m_folder->filePath(u"Tessel.conf"_s)));
    }

    void controlsHaveTheirWidths()
    {
        QCOMPARE(find<QLineEdit>(u"predicate"_s)->width(), 400);
        QCOMPARE(find<QLineEdit>(u"period"_s)->width(), 200);
        QCOMPARE(find<QLineEdit>(u"maxCount"_s)->width(), 150);
        QCOMPARE(find<QLineEdit>(u"predicateName"_s)->width(), 250);
        m_window->setCurrentIndex(1);
        QCOMPARE(find<QTextEdit>(u"predicateText"_s)->size(), QSize(460, 200));
        for (int tab = 0; tab < 2; ++tab)
            QCOMPARE(m_window->widget(tab)->minimumSize(), QSize(600, 320));
        m_window->resize(1, 1);
        QCOMPARE(m_window->currentWidget()->width(), 600);
        QVERIFY(m_window->currentWidget()->height() >= 320);
    }

    void settingsAreStoredAsTyped()
    {
        QTest::keyClicks(find<QLineEdit>(u"maxCount"_s), u"many"_s);
        QTest::keyClick(find<QCheckBox>(u"lightMode"_s), Qt::Key_Space);
        QCOMPARE(m_defaults->string(u"maxCount"_s), u"many"_s);
        QCOMPARE(m_defaults->boolean(u"lightMode"_s), true);
        QCOMPARE(m_defaults->boolean(u"fullMode"_s), std::nullopt);
    }

    void appendClearsBothControls()
    {
        m_window->setCurrentIndex(1);
        QTest::keyClicks(find<QLineEdit>(u"predicateName"_s), u"backups"_s);
        find<QTextEdit>(u"predicateText"_s)
            ->insertPlainText(u"subsystem == “com.apple.TimeMachine”"_s);
        QTest::mouseClick(find<QPushButton>(u"append"_s), Qt::LeftButton);

        QCOMPARE(find<QLineEdit>(u"predicateName"_s)->text(), u""_s);
        QCOMPARE(find<QTextEdit>(u"predicateText"_s)->toPlainText(), u""_s);
        const PredicateLibrary library = PredicateLibrary::load(*m_defaults);
        QCOMPARE(library.predList.mid(11),
                 QStringList{u"subsystem == \"com.apple.TimeMachine\""_s});
        QCOMPARE(library.predNames.mid(11), QStringList{u"backups"_s});
    }

    void appendWithoutTextKeepsTheName()
    {
        m_window->setCurrentIndex(1);
        QTest::keyClicks(find<QLineEdit>(u"predicateName"_s), u"backups"_s);
        QTest::mouseClick(find<QPushButton>(u"append"_s), Qt::LeftButton);
        QCOMPARE(find<QLineEdit>(u"predicateName"_s)->text(), u"backups"_s);
        QCOMPARE(m_defaults->stringArray(u"predList"_s), std::nullopt);
    }

    void resetRestoresTheLibrary()
    {
        m_defaults->set(u"predNames"_s, QStringList{u"mine"_s});
        m_defaults->set(u"PredicateText"_s, u"half"_s);
        QTest::mouseClick(find<QPushButton>(u"resetPredicates"_s), Qt::LeftButton);
        QCOMPARE(m_defaults->stringArray(u"predNames"_s), defaultPredicateNames());
        QCOMPARE(m_defaults->stringArray(u"predList"_s), defaultPredicateTexts());
        QCOMPARE(find<QTextEdit>(u"predicateText"_s)->toPlainText(), u"half"_s);
    }

    void halfWrittenPredicateSurvives()
    {
        m_window->setCurrentIndex(1);
        QTest::keyClicks(find<QTextEdit>(u"predicateText"_s), u"process =="_s);
        QTest::keyClicks(find<QLineEdit>(u"predicateName"_s), u"name"_s);
        m_window = newWindow();
        QCOMPARE(m_window->currentIndex(), 0);
        QCOMPARE(find<QTextEdit>(u"predicateText"_s)->toPlainText(), u"process =="_s);
        QCOMPARE(find<QLineEdit>(u"predicateName"_s)->text(), u""_s);
    }

    void statusSaysWhetherThePredicateIsRight()
    {
        m_window->setCurrentIndex(1);
        auto* editor = find<QTextEdit>(u"predicateText"_s);
        const auto* status = editor->findChild<QLabel*>(u"predicateStatus"_s);
        QCOMPARE(status->text(), u""_s);
        QTest::keyClicks(editor, u"pid"_s);
        QCOMPARE(status->text(), u"Character 3: <b> is no comparison."_s);
        QCOMPARE(editor->accessibleDescription(), status->text());
        QVERIFY(status->toolTip().contains(u"&lt;b&gt;"_s));
        // Typographic quotation marks are no error: they are made plain before the predicate is
        // used.
        editor->insertPlainText(u" = “1”"_s);
        QCOMPARE(status->text(), u"This predicate is valid."_s);
        m_defaults->set(u"PredicateText"_s, u"from elsewhere"_s);
        QCOMPARE(status->text(), u"Character 14: <b> is no comparison."_s);
        QVERIFY(status->geometry().bottom() < editor->height());
        QVERIFY(status->geometry().top() > editor->viewport()->geometry().bottom());
    }

    void statusNeverBlocksAppend()
    {
        m_window->setCurrentIndex(1);
        QTest::keyClicks(find<QTextEdit>(u"predicateText"_s), u"wrong"_s);
        QTest::keyClicks(find<QLineEdit>(u"predicateName"_s), u"name"_s);
        QTest::mouseClick(find<QPushButton>(u"append"_s), Qt::LeftButton);
        QCOMPARE(PredicateLibrary::load(*m_defaults).predList.last(), u"wrong"_s);
    }

    void linesKeepTheirSpacing()
    {
        auto* editor = find<QTextEdit>(u"predicateText"_s);
        m_defaults->set(u"PredicateText"_s, u"a\nb\n\nc"_s);
        QTest::keyClick(editor, Qt::Key_Return);
        for (QTextBlock line = editor->document()->begin(); line.isValid(); line = line.next())
            QCOMPARE(line.blockFormat().lineHeight(), 5.0);
    }

private:
    std::unique_ptr<SettingsView> newWindow()
    {
        auto window = std::make_unique<SettingsView>(*m_defaults, needsAnEqualsSign);
        window->show();
        return window;
    }

    template <typename Widget>
    Widget* find(const QString& name)
    {
        return m_window->findChild<Widget*>(name);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<UserDefaults> m_defaults;
    std::unique_ptr<SettingsView> m_window;
};

TESSEL_TEST(TestSettingsView)
#include "tst_settingsview.moc"
