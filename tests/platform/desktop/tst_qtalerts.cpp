// SPDX-License-Identifier: MIT
#include "platform/desktop/qtalerts.h"
#include "support/warnings.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;

class TestQtAlerts : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void criticalWaitsForItsButton();
};

void TestQtAlerts::criticalWaitsForItsButton()
{
    failOnWarnings();
    bool wasShown = false;
    QTimer::singleShot(0, this, [&wasShown] {
        auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        QVERIFY(box != nullptr);
        wasShown = true;
        QCOMPARE(box->text(), u"An error occurred:"_s);
        QCOMPARE(box->informativeText(), u"<b>markup</b> is text"_s);
        QCOMPARE(box->icon(), QMessageBox::Critical);
        QCOMPARE(box->buttons().size(), 1);
        QCOMPARE(box->buttons().first()->text().remove(u'&'), u"OK"_s);
        QTest::mouseClick(box->buttons().first(), Qt::LeftButton);
    });
    QtAlerts().critical(u"An error occurred:"_s, u"<b>markup</b> is text"_s);
    QVERIFY(wasShown);
}

QTEST_MAIN(TestQtAlerts)
#include "tst_qtalerts.moc"
