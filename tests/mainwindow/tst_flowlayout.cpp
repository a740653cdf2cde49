// SPDX-License-Identifier: MIT
#include "mainwindow/flowlayout.h"
#include "support/testcase.h"

#include <QTest>
#include <QWidget>

using namespace Qt::StringLiterals;

class TestFlowLayout : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestCase::init();
        m_parent = std::make_unique<QWidget>();
        m_layout = new FlowLayout(10, 5);
        m_layout->setContentsMargins({});
        m_parent->setLayout(m_layout);
        m_items.clear();
        for (const QSize& size : {QSize(100, 20), QSize(50, 30), QSize(80, 20)}) {
            auto* const item = new QWidget;
            item->setFixedSize(size);
            m_layout->addWidget(item);
            m_items.append(item);
        }
    }

    void wrapsWhereTheWidthEnds_data()
    {
        QTest::addColumn<int>("width");
        QTest::addColumn<QList<QPoint>>("places");
        QTest::addColumn<int>("height");
        // Items of unequal height are centred on their line.
        QTest::addRow("one line") << 250 << QList<QPoint>{{0, 5}, {110, 0}, {170, 5}} << 30;
        QTest::addRow("one pixel short") << 249 << QList<QPoint>{{0, 5}, {110, 0}, {0, 35}} << 55;
        QTest::addRow("one each") << 100 << QList<QPoint>{{0, 0}, {0, 25}, {0, 60}} << 80;
        QTest::addRow("narrower than an item")
            << 40 << QList<QPoint>{{0, 0}, {0, 25}, {0, 60}} << 80;
    }

    void wrapsWhereTheWidthEnds()
    {
        QFETCH(int, width);
        QFETCH(QList<QPoint>, places);
        QFETCH(int, height);
        QCOMPARE(m_layout->heightForWidth(width), height);
        m_layout->setGeometry(QRect(0, 0, width, 200));
        for (qsizetype i = 0; i < m_items.size(); ++i)
            QCOMPARE(m_items.at(i)->pos(), places.at(i));
    }

    void hiddenItemsTakeNoRoom()
    {
        m_items.first()->hide();
        m_layout->setGeometry(QRect(0, 0, 250, 200));
        QCOMPARE(m_items.at(1)->x(), 0);
        QCOMPARE(m_items.at(2)->x(), 60);
        QCOMPARE(m_layout->sizeHint(), QSize(140, 30));
    }

    void runsFromTheRightWhereReadingDoes()
    {
        m_parent->setLayoutDirection(Qt::RightToLeft);
        m_layout->setGeometry(QRect(0, 0, 300, 200));
        QCOMPARE(m_items.first()->x(), 200);
        QCOMPARE(m_items.at(1)->x(), 140);
    }

private:
    std::unique_ptr<QWidget> m_parent;
    FlowLayout* m_layout = nullptr;
    QList<QWidget*> m_items;
};

TESSEL_TEST(TestFlowLayout)
#include "tst_flowlayout.moc"
