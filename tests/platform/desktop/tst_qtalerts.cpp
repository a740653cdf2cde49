// SPDX-License-Identifier: MIT
#include "platform/desktop/qtalerts.h"
#include "support/testcase.h"

#include <QAbstractTextDocumentLayout>
#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QScopeGuard>
#include <QTest>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextLayout>
#include <QTimer>

using namespace Qt::StringLiterals;

class TestQtAlerts : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void criticalWaitsForItsButton()
    {
        TestCase::init();
        bool wasShown = false;
        QTimer::singleShot(0, this, [&wasShown] {
            auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            QVERIFY(box != nullptr);
            wasShown = true;
            QCOMPARE(box->text(), u"An error occurred:"_s);
            QCOMPARE(box->informativeText(), u"<b>markup</b> is \uFFFDtext"_s);
            for (const QString& label : {u"qt_msgbox_label"_s, u"qt_msgbox_informativelabel"_s})
                QCOMPARE(box->findChild<QLabel*>(label)->textFormat(), Qt::PlainText);
            QCOMPARE(box->icon(), QMessageBox::Critical);
            QCOMPARE(box->buttons().size(), 1);
            QCOMPARE(box->buttons().first()->text().remove(u'&'), u"OK"_s);
            QTest::mouseClick(box->buttons().first(), Qt::LeftButton);
        });
        QtAlerts().critical(u"An error occurred:"_s, u"<b>markup</b> is \u202Etext"_s);
        QVERIFY(wasShown);
    }

    void offerIsTakenByItsButtonOnly()
    {
        TestCase::init();
        for (const QString& pressed : {u"Use It"_s, u"Cancel"_s}) {
            QTimer::singleShot(0, this, [pressed] {
                auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
                QVERIFY(box != nullptr);
                for (QAbstractButton* button : box->buttons())
                    if (button->text().remove(u'&') == pressed)
                        return button->click();
                box->reject();
                QFAIL("no such button");
            });
            QCOMPARE(QtAlerts().offer(u"message"_s, u"text"_s, u"Use It"_s),
                     pressed != u"Cancel"_s);
        }
    }

    void excerptStaysAsItIs()
    {
        TestCase::init();
        const QString sentence = u"“<” can't be used here."_s;
        const QString excerpt =
            u"subsystem == \"a rather long one\" AND NOT process CONTAINS \"another\" AND  x <\n"
            "                                                                        ^"_s;
        bool wasShown = false;
        QTimer::singleShot(0, this, [&] {
            auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            QVERIFY(box != nullptr);
            wasShown = true;
            const auto answer = qScopeGuard([box] { box->accept(); });
            auto* const label = box->findChild<QLabel*>(u"qt_msgbox_informativelabel"_s);
            QTextDocument shown;
            shown.setDefaultFont(label->font());
            shown.setDocumentMargin(0);
            shown.setHtml(label->text());
            QCOMPARE(shown.toPlainText(), sentence + u'\n' + excerpt);
            // The mark stands below its place.
            const QTextBlock mark = shown.lastBlock();
            const auto column = static_cast<int>(mark.text().indexOf(u'^'));
            shown.documentLayout()->documentSize();
            QCOMPARE(mark.layout()->lineAt(0).cursorToX(column),
                     mark.previous().layout()->lineAt(0).cursorToX(column));
            QVERIFY2(label->width() >= shown.idealWidth(), "the excerpt is cut");
        });
        QtAlerts().critical(u"An error occurred:"_s, sentence + u"\n\n"_s + excerpt);
        QVERIFY(wasShown);
    }
};

TESSEL_TEST(TestQtAlerts)
#include "tst_qtalerts.moc"
