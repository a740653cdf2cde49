// SPDX-License-Identifier: MIT
#include "mainwindow/fetchpanel.h"
#include "support/warnings.h"

#include <QApplication>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

class TestFetchPanel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void shortFetchShowsNoPanel();
    void longFetchShowsItsProgress();
    void cancelEndsTheFetch();

private:
    QWidget m_window;
};

void TestFetchPanel::init()
{
    failOnWarnings();
}

void TestFetchPanel::shortFetchShowsNoPanel()
{
    {
        FetchPanel panel(&m_window, 1h);
        QCOMPARE(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
        QVERIFY(panel.update({}));
        QVERIFY(QApplication::activeModalWidget() == nullptr);
    }
    QVERIFY(QApplication::overrideCursor() == nullptr);
}

void TestFetchPanel::longFetchShowsItsProgress()
{
    FetchPanel panel(&m_window, 0ms);
    QVERIFY(panel.update({12'000, 340, {}, 0.25}));
    auto* const dialog = qobject_cast<QProgressDialog*>(QApplication::activeModalWidget());
    QVERIFY(dialog != nullptr);
    QCOMPARE(dialog->value() * 4, dialog->maximum());
    QVERIFY(dialog->labelText().contains(u"340"_s));
    QVERIFY(panel.update({20'000, 500, {}, 1.0}));
    QVERIFY(dialog->isVisible());
}

void TestFetchPanel::cancelEndsTheFetch()
{
    FetchPanel panel(&m_window, 0ms);
    QVERIFY(panel.update({}));
    QTest::mouseClick(QApplication::activeModalWidget()->findChild<QPushButton*>(), Qt::LeftButton);
    QVERIFY(!panel.update({}));
}

QTEST_MAIN(TestFetchPanel)
#include "tst_fetchpanel.moc"
