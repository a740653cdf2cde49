// SPDX-License-Identifier: MIT
#include "app/appfixture.h"
#include "app/windowplace.h"
#include "support/testcase.h"

#include <QScreen>
#include <QTest>

using namespace Qt::StringLiterals;

class TestWindowPlace : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QApplication::setQuitOnLastWindowClosed(false); }

    void init()
    {
        TestCase::init();
        m_fixture = std::make_unique<AppFixture>();
    }

    void placeAndSizeAreKept()
    {
        const QRect place(120, 90, 431, 287);
        const auto first = shown(u"kind"_s);
        first->setGeometry(place);
        first->close();
        QCOMPARE(shown(u"kind"_s)->geometry(), place);
    }

    void kindsAreKeptApart()
    {
        const auto first = shown(u"one"_s);
        first->resize(431, 287);
        first->close();
        QVERIFY(shown(u"another"_s)->size() != QSize(431, 287));
    }

    void placeOffTheScreenIsNotTaken()
    {
        const auto first = shown(u"kind"_s);
        first->setGeometry(9000, 7000, 300, 200);
        first->close();
        const auto second = shown(u"kind"_s);
        QVERIFY(second->screen()->availableGeometry().intersects(second->geometry()));
    }

    void damagedPlaceIsIgnored()
    {
        m_fixture->state.setArrangement(u"window.kind"_s, "no geometry");
        QVERIFY(shown(u"kind"_s)->isVisible());
    }

    void windowsDoNotHideOneAnother()
    {
        const auto first = shown(u"kind"_s);
        first->setGeometry(50, 60, 300, 200);
        first->close();
        std::vector<std::unique_ptr<QWidget>> windows;
        for (int i = 0; i < 5; ++i) {
            windows.push_back(shown(u"kind"_s));
            QCOMPARE(windows.back()->size(), QSize(300, 200));
            for (int other = 0; other < i; ++other)
                QVERIFY(windows.at(other)->pos() != windows.back()->pos());
        }
    }

    void applicationKeepsEachKind_data()
    {
        QTest::addColumn<QString>("identifier");
        for (const char* identifier :
             {"main", "settings", "help", "diagtool", "logarchtool", "textView"})
            QTest::newRow(identifier) << QString::fromLatin1(identifier);
    }

    void applicationKeepsEachKind()
    {
        QFETCH(QString, identifier);
        m_fixture->start();
        QWidget* const first = &m_fixture->opened(identifier);
        const QSize size =
            first->minimumSizeHint().expandedTo(first->minimumSize()) + QSize(37, 53);
        first->resize(size);
        first->close();
        AppFixture::runDeletions();
        m_fixture->start();
        QCOMPARE(m_fixture->opened(identifier).size(), size);
    }

private:
    std::unique_ptr<QWidget> shown(const QString& kind)
    {
        auto window = std::make_unique<QWidget>();
        new WindowPlace(window.get(), m_fixture->state, kind);
        window->show();
        return window;
    }

    std::unique_ptr<AppFixture> m_fixture;
};

TESSEL_TEST(TestWindowPlace)
#include "tst_windowplace.moc"
