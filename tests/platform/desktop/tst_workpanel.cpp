// SPDX-License-Identifier: MIT
#include "platform/desktop/workpanel.h"
#include "support/testcase.h"

#include <QApplication>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

class TestWorkPanel : public TestCase
{
    Q_OBJECT

private Q_SLOTS:

    void shortWorkShowsNoPanel()
    {
        {
            WorkPanel panel(&m_window, u"Work"_s, WorkPanel::Cancel::Button, 1h);
            QCOMPARE(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
            QVERIFY(panel.update(u"text"_s, 0.5));
            QVERIFY(dialog() == nullptr);
        }
        QVERIFY(QApplication::overrideCursor() == nullptr);
    }

    void longWorkShowsItsProgress()
    {
        WorkPanel panel(&m_window, u"Reading"_s, WorkPanel::Cancel::Button, 0ms);
        QVERIFY(panel.update(u"340 entries"_s, 0.25));
        QVERIFY(dialog() != nullptr);
        QCOMPARE(dialog()->windowTitle(), u"Reading"_s);
        QCOMPARE(dialog()->value() * 4, dialog()->maximum());
        QCOMPARE(dialog()->labelText(), u"340 entries"_s);
        QVERIFY(panel.update(u"all"_s, 1.0));
        QVERIFY(dialog() != nullptr); // until the work says that it is done
    }

    void cancelEndsTheWork()
    {
        WorkPanel panel(&m_window, u"Work"_s, WorkPanel::Cancel::Button, 0ms);
        QVERIFY(panel.update({}, 0.0));
        QTest::mouseClick(dialog()->findChild<QPushButton*>(), Qt::LeftButton);
        QVERIFY(!panel.update({}, 0.0));
    }

    void withoutCancelItStays()
    {
        WorkPanel panel(&m_window, u"Work"_s, WorkPanel::Cancel::None, 0ms);
        QVERIFY(panel.update(u"text"_s));
        QCOMPARE(dialog()->findChildren<QPushButton*>().size(), 0);
        QCOMPARE(dialog()->maximum(), 0); // a bar that says no more than that it goes on
        QTest::keyClick(dialog(), Qt::Key_Escape);
        QVERIFY(dialog() != nullptr);
        dialog()->close();
        QVERIFY(dialog() != nullptr);
        QVERIFY(panel.update(u"more"_s));
    }

    void drawsNowAndThen()
    {
        WorkPanel panel(&m_window, u"Work"_s, WorkPanel::Cancel::None, 0ms);
        panel.update(u"0"_s);
        QElapsedTimer running;
        running.start();
        int shown = 0;
        for (int number = 1; running.elapsed() < 200; ++number) {
            panel.update(QString::number(number));
            shown += dialog()->labelText() == QString::number(number) ? 1 : 0;
        }
        QVERIFY2(shown >= 1 && shown <= 4, qPrintable(QString::number(shown)));
    }

private:
    static QProgressDialog* dialog()
    {
        return qobject_cast<QProgressDialog*>(QApplication::activeModalWidget());
    }

    QWidget m_window;
};

TESSEL_TEST(TestWorkPanel)
#include "tst_workpanel.moc"
