// SPDX-License-Identifier: MIT
#include "platform/desktop/documenttext.h"
#include "settings/bindings.h"
#include "support/testcase.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

class TestBindings : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestCase::init();
        m_folder = std::make_unique<QTemporaryDir>();
        m_defaults = std::make_unique<UserDefaults>(m_folder->filePath(u"Tessel.conf"_s));
    }

    void fieldWritesEachKeystroke()
    {
        QLineEdit field;
        bind(&field, *m_defaults, preferences::period);
        QCOMPARE(field.text(), u""_s); // and not what a new main window starts with
        const QSignalSpy changed(m_defaults.get(), &UserDefaults::changed);
        QTest::keyClicks(&field, u"12s"_s);
        QCOMPARE(changed.count(), 3);
        QCOMPARE(m_defaults->string(u"period"_s), u"12s"_s);
        field.clear();
        QCOMPARE(m_defaults->string(u"period"_s), u""_s);
    }

    void fieldFollowsWithoutMovingItsCursor()
    {
        QLineEdit field;
        m_defaults->set(u"predicate"_s, u"backup"_s);
        bind(&field, *m_defaults, preferences::predicate);
        field.setCursorPosition(2);
        m_defaults->set(u"predicate"_s, u"backups"_s);
        QCOMPARE(field.text(), u"backups"_s);
        QCOMPARE(field.cursorPosition(), 2);
        m_defaults->set(u"predicate"_s, u"b"_s);
        QCOMPARE(field.cursorPosition(), 1);
        m_defaults->set(u"period"_s, u"9"_s);
        QCOMPARE(field.text(), u"b"_s);
    }

    void switchWritesAndFollows()
    {
        QCheckBox first;
        QCheckBox second;
        bind(&first, *m_defaults, preferences::fullMode);
        bind(&second, *m_defaults, preferences::fullMode);
        QVERIFY(first.isChecked()); // shown on while absent
        QCOMPARE(m_defaults->boolean(u"fullMode"_s), std::nullopt);
        QTest::keyClick(&first, Qt::Key_Space);
        QCOMPARE(m_defaults->boolean(u"fullMode"_s), false);
        QVERIFY(!second.isChecked());
    }

    void editorWritesEachKeystroke()
    {
        QPlainTextEdit editor;
        bind(editor.document(), *m_defaults, preferences::specPred);
        const QSignalSpy changed(m_defaults.get(), &UserDefaults::changed);
        QTest::keyClicks(&editor, u"a\u00a0b"_s);
        QTest::keyClick(&editor, Qt::Key_Return);
        QCOMPARE(changed.count(), 4);
        QCOMPARE(m_defaults->string(u"specPred"_s), u"a\u00a0b\n"_s);
    }

    void editorFollowsOtherEditors()
    {
        QPlainTextEdit first;
        QPlainTextEdit second;
        bind(first.document(), *m_defaults, preferences::specPred);
        bind(second.document(), *m_defaults, preferences::specPred);
        QTest::keyClicks(&first, u"one"_s);
        QCOMPARE(second.toPlainText(), u"one"_s);
        second.selectAll();
        QTest::keyClick(&second, Qt::Key_Delete);
        QCOMPARE(first.toPlainText(), u""_s);
    }

    void editorKeepsCursorInUnchangedText_data()
    {
        QTest::addColumn<QString>("before");
        QTest::addColumn<int>("cursor");
        QTest::addColumn<QString>("after");
        QTest::addColumn<int>("cursorAfter");
        QTest::newRow("change behind the cursor") << u"one two"_s << 2 << u"one three"_s << 2;
        QTest::newRow("change before the cursor") << u"one two"_s << 5 << u"zero one two"_s << 10;
        QTest::newRow("repeated letters") << u"aaa"_s << 1 << u"aaaa"_s << 1;
        QTest::newRow("fewer repeated letters") << u"aaaa"_s << 1 << u"aa"_s << 1;
        QTest::newRow("emptied") << u"one"_s << 2 << u""_s << 0;
        QTest::newRow("half of an astral character differs") << u"x🥎"_s << 1 << u"x🥏"_s << 1;
    }

    void editorKeepsCursorInUnchangedText()
    {
        QFETCH(QString, before);
        QFETCH(int, cursor);
        QFETCH(QString, after);
        m_defaults->set(u"specPred"_s, before);
        QPlainTextEdit editor;
        bind(editor.document(), *m_defaults, preferences::specPred);
        QTextCursor place = editor.textCursor();
        place.setPosition(cursor);
        editor.setTextCursor(place);

        m_defaults->set(u"specPred"_s, after);
        QCOMPARE(editor.toPlainText(), after);
        QTEST(editor.textCursor().position(), "cursorAfter");
    }

    void editorShowsAnyText_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("line feed last") << u"a\n"_s;
        QTest::newRow("empty lines") << u"\n\na\n\n"_s;
        QTest::newRow("carriage returns") << u"a\r\nb\rc"_s;
        QTest::newRow("separators") << u"a\u2028b\u2029c"_s;
        QTest::newRow("the toolkit's own separators") << u"a\ufdd0b\ufdd1c"_s;
        QTest::newRow("no-break space") << u"a\u00a0b"_s;
        QTest::newRow("controls") << u"a\tb\u0001\u007f"_s;
        QTest::newRow("markers") << u"📍🥎▶\ufe0f"_s;
    }

    void editorShowsAnyText()
    {
        QFETCH(QString, text);
        m_defaults->set(u"selectText"_s, text);
        QPlainTextEdit editor;
        bind(editor.document(), *m_defaults, preferences::selectText);
        QVERIFY(!editor.document()->isUndoAvailable()); // undoing the load would lose the text
        // Only showing a text, or another one after it, changes nothing of what is stored.
        QCOMPARE(m_defaults->string(u"selectText"_s), text);
        m_defaults->set(u"selectText"_s, u"x"_s + text);
        QCOMPARE(m_defaults->string(u"selectText"_s), u"x"_s + text);
        QVERIFY(editor.toPlainText().startsWith(u'x'));
        QCOMPARE(exactText(editor.document()).size(), text.size() + 1 - text.count(u"\r\n"_s));
    }

    void followingCanBeUndone()
    {
        QPlainTextEdit editor;
        bind(editor.document(), *m_defaults, preferences::selectText);
        m_defaults->set(u"selectText"_s, u"one"_s);
        m_defaults->set(u"selectText"_s, u"two"_s);
        editor.undo();
        QCOMPARE(m_defaults->string(u"selectText"_s), u"one"_s);
    }

    void showingWritesNothing()
    {
        const QSignalSpy changed(m_defaults.get(), &UserDefaults::changed);
        QLineEdit field;
        QCheckBox control;
        QPlainTextEdit editor;
        bind(&field, *m_defaults, preferences::maxCount);
        bind(&control, *m_defaults, preferences::fullMode);
        bind(editor.document(), *m_defaults, preferences::specPred);
        editor.document()->setDefaultFont(QFont(u"monospace"_s, 30));
        QCOMPARE(changed.count(), 0);
    }

    void controlsMayDieFirst()
    {
        auto field = std::make_unique<QLineEdit>();
        auto editor = std::make_unique<QPlainTextEdit>();
        bind(field.get(), *m_defaults, preferences::period);
        bind(editor->document(), *m_defaults, preferences::specPred);
        field.reset();
        editor.reset();
        m_defaults->set(u"period"_s, u"1"_s);
        m_defaults->set(u"specPred"_s, u"1"_s);
        QCOMPARE(m_defaults->string(u"specPred"_s), u"1"_s);
    }

private:
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<UserDefaults> m_defaults;
};

TESSEL_TEST(TestBindings)
#include "tst_bindings.moc"
