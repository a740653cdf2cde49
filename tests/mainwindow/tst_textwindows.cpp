// SPDX-License-Identifier: MIT
#include "mainwindow/textwindows.h"
#include "platform/userdefaults.h"
#include "support/testcase.h"

#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBlock>

using namespace Qt::StringLiterals;

namespace {

std::optional<QString> everyPredicateIsWrong(const QString&)
{
    return u"No such field."_s;
}

} // namespace

class TestTextWindows : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestCase::init();
        m_folder = std::make_unique<QTemporaryDir>();
        m_defaults = std::make_unique<UserDefaults>(m_folder->filePath(u"Tessel.conf"_s));
    }

    void predicateEditorHasItsSizes()
    {
        MiniPredView window(*m_defaults, everyPredicateIsWrong);
        window.show();
        QCOMPARE(window.size(), QSize(480, 240));
        QCOMPARE(window.minimumSize(), window.maximumSize());
        auto* editor = window.findChild<QTextEdit*>(u"specPred"_s);
        QCOMPARE(editor->size(), QSize(460, 200));
        QCOMPARE(editor->document()->begin().blockFormat().lineHeight(), 5.0);
        auto* save = window.findChild<QPushButton*>(u"save"_s);
        QCOMPARE(save->text(), u"Save"_s);
        QVERIFY(window.rect().contains(save->geometry()));
        QVERIFY(!save->geometry().intersects(editor->geometry()));
    }

    void saveStoresPlainQuotesAndCloses_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("stored");
        QTest::newRow("typographic quotes") << u"subsystem == “com.apple.TimeMachine”"_s
                                            << u"subsystem == \"com.apple.TimeMachine\""_s;
        QTest::newRow("single quotes and blanks stay")
            << u" process == ‘x’ "_s << u" process == ‘x’ "_s;
        QTest::newRow("nothing") << u""_s << u""_s;
    }

    void saveStoresPlainQuotesAndCloses()
    {
        QFETCH(QString, typed);
        MiniPredView window(*m_defaults, everyPredicateIsWrong);
        window.show();
        window.findChild<QTextEdit*>(u"specPred"_s)->insertPlainText(typed);
        QTest::mouseClick(window.findChild<QPushButton*>(u"save"_s), Qt::LeftButton);
        QVERIFY(!window.isVisible());
        QTEST(m_defaults->string(u"specPred"_s).value_or(u"absent"_s), "stored");
    }

    void closingKeepsWhatWasTyped()
    {
        {
            MiniPredView window(*m_defaults, everyPredicateIsWrong);
            window.show();
            window.findChild<QTextEdit*>(u"specPred"_s)->insertPlainText(u"“a”"_s);
            window.close();
        }
        QCOMPARE(m_defaults->string(u"specPred"_s), u"“a”"_s);
        const MiniPredView again(*m_defaults, everyPredicateIsWrong);
        QCOMPARE(again.findChild<QTextEdit*>(u"specPred"_s)->toPlainText(), u"“a”"_s);
    }

    void glossShowsAndStoresItsText()
    {
        m_defaults->set(u"selectText"_s, u"first\n\nthird"_s);
        TextView window(*m_defaults);
        window.show();
        QCOMPARE(window.toPlainText(), u"first\n\nthird"_s);
        window.moveCursor(QTextCursor::End);
        QTest::keyClicks(&window, u"!"_s);
        QCOMPARE(m_defaults->string(u"selectText"_s), u"first\n\nthird!"_s);
        m_defaults->set(u"selectText"_s, u"another"_s);
        QCOMPARE(window.toPlainText(), u"another"_s);
    }

    void manyMessagesOpenAtOnce()
    {
        QStringList messages;
        for (int index = 0; index < 20'000; ++index)
            messages.append(u"message %1 of a long list"_s.arg(index));
        m_defaults->set(u"selectText"_s, messages.join(u'\n'));
        TextView window(*m_defaults);
        window.show();
        QCOMPARE(window.document()->blockCount(), 20'000);
        QTest::keyClicks(&window, u"x"_s);
        QVERIFY(m_defaults->string(u"selectText"_s)->startsWith(u"xmessage 0"_s));
    }

private:
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<UserDefaults> m_defaults;
};

TESSEL_TEST(TestTextWindows)
#include "tst_textwindows.moc"
