// SPDX-License-Identifier: MIT
#include "app/helpview.h"
#include "app/pdfkitview.h"
#include "support/testcase.h"

#include <QAction>
#include <QFile>
#include <QImage>
#include <QLabel>
#include <QPainter>
#include <QPdfWriter>
#include <QScreen>
#include <QTemporaryDir>
#include <QTest>
#include <QWheelEvent>

using namespace Qt::StringLiterals;

namespace {

const QColor pageColours[] = {Qt::red, Qt::green, Qt::blue};

/// A document of three pages, each in one colour.
void writeDocument(const QString& path)
{
    QPdfWriter writer(path);
    writer.setPageSize(QPageSize(QSizeF(200, 100), QPageSize::Millimeter));
    writer.setPageMargins({});
    QPainter painter(&writer);
    for (const QColor& colour : pageColours) {
        if (colour != pageColours[0])
            writer.newPage();
        painter.fillRect(QRect(0, 0, writer.width(), writer.height()), colour);
    }
}

/// How much of the picture has the colour, in hundredths.
int share(const QImage& picture, const QColor& colour)
{
    const QImage pixels = picture.convertToFormat(QImage::Format_RGB32);
    qsizetype found = 0;
    for (int y = 0; y < pixels.height(); ++y) {
        const auto* const line = reinterpret_cast<const QRgb*>(pixels.constScanLine(y));
        found += std::count(line, line + pixels.width(), colour.rgb());
    }
    return static_cast<int>(found * 100 / (qsizetype(pixels.width()) * pixels.height()));
}

/// The smallest rectangle that holds all of the colour.
QRect rectOf(const QImage& picture, const QColor& colour)
{
    QRegion found;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (picture.pixelColor(x, y) == colour)
                found += QRect(x, y, 1, 1);
        }
    }
    return found.boundingRect();
}

} // namespace

class TestHelpView : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestCase::init();
        writeDocument(m_folder.filePath(u"three.pdf"_s));
    }

    void showsTheManual()
    {
        HelpView view(helpDocument());
        view.show();
        const int count = pages(view).pageCount();
        QVERIFY2(count >= 6 && count <= 12, qPrintable(QString::number(count)));
        QCOMPARE(place(view), u"Page 1 of %1"_s.arg(count));
        QVERIFY(view.screen()->availableGeometry().contains(QRect({}, view.size())));
    }

    void showsOnePageAtATime()
    {
        HelpView view(document());
        view.show();
        for (int page = 0; page < 3; ++page) {
            pages(view).setPage(page);
            QTRY_VERIFY(share(pages(view).grab().toImage(), pageColours[page]) > 30);
            for (int other = 0; other < 3; ++other) {
                if (other != page)
                    QCOMPARE(share(pages(view).grab().toImage(), pageColours[other]), 0);
            }
        }
    }

    void pageFitsTheWindow()
    {
        HelpView view(document());
        for (const QSize& size : {QSize(1200, 500), QSize(500, 900), QSize(700, 420)}) {
            view.resize(size);
            view.show();
            // All of it can be seen, and it is as wide or as high as the view but for its margins.
            QTRY_VERIFY(share(pages(view).grab().toImage(), pageColours[0]) > 20);
            const QImage picture = pages(view).grab().toImage();
            const QRect page = rectOf(picture, pageColours[0]);
            const QMargins margins = pages(view).documentMargins();
            const QSize room = picture.rect().marginsRemoved(margins).size() - QSize(4, 4);
            QVERIFY(picture.rect().adjusted(1, 1, -1, -1).contains(page));
            QVERIFY(page.width() >= room.width() || page.height() >= room.height());
        }
    }

    void keysTurnPages_data()
    {
        QTest::addColumn<int>("from");
        QTest::addColumn<Qt::Key>("key");
        QTest::addColumn<int>("to");
        QTest::newRow("page down") << 0 << Qt::Key_PageDown << 1;
        QTest::newRow("page up") << 2 << Qt::Key_PageUp << 1;
        QTest::newRow("right") << 0 << Qt::Key_Right << 1;
        QTest::newRow("left") << 1 << Qt::Key_Left << 0;
        QTest::newRow("down") << 1 << Qt::Key_Down << 2;
        QTest::newRow("up") << 1 << Qt::Key_Up << 0;
        QTest::newRow("space") << 0 << Qt::Key_Space << 1;
        QTest::newRow("backspace") << 2 << Qt::Key_Backspace << 1;
        QTest::newRow("home") << 2 << Qt::Key_Home << 0;
        QTest::newRow("end") << 0 << Qt::Key_End << 2;
        QTest::newRow("beyond the end") << 2 << Qt::Key_PageDown << 2;
        QTest::newRow("before the beginning") << 0 << Qt::Key_PageUp << 0;
        QTest::newRow("another key") << 1 << Qt::Key_X << 1;
    }

    void keysTurnPages()
    {
        QFETCH(int, from);
        QFETCH(Qt::Key, key);
        QFETCH(int, to);
        HelpView view(document());
        view.show();
        pages(view).setPage(from);
        QTest::keyClick(&pages(view), key);
        QCOMPARE(pages(view).page(), to);
        QCOMPARE(place(view), u"Page %1 of 3"_s.arg(to + 1));
    }

    void wheelTurnsPages()
    {
        HelpView view(document());
        view.show();
        const auto turn = [&view](int angle) {
            const QPointF middle = pages(view).viewport()->rect().center();
            QWheelEvent event(middle, pages(view).viewport()->mapToGlobal(middle), {}, {0, angle},
                              Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
            QApplication::sendEvent(pages(view).viewport(), &event);
        };
        turn(-120);
        QCOMPARE(pages(view).page(), 1);
        turn(-60);
        QCOMPARE(pages(view).page(), 1);
        turn(-60);
        QCOMPARE(pages(view).page(), 2);
        turn(240);
        QCOMPARE(pages(view).page(), 1);
    }

    void buttonsTurnPages()
    {
        HelpView view(document());
        view.show();
        auto* const previous = view.findChild<QAction*>(u"previousPage"_s);
        auto* const next = view.findChild<QAction*>(u"nextPage"_s);
        QVERIFY(!previous->isEnabled());
        next->trigger();
        QVERIFY(previous->isEnabled());
        next->trigger();
        QVERIFY(!next->isEnabled());
        QCOMPARE(place(view), u"Page 3 of 3"_s);
        previous->trigger();
        QCOMPARE(place(view), u"Page 2 of 3"_s);
    }

    void unreadableDocumentsShowNothing_data()
    {
        QTest::addColumn<QUrl>("url");
        QFile broken(m_folder.filePath(u"broken.pdf"_s));
        QVERIFY(broken.open(QFile::WriteOnly));
        broken.write("%PDF-1.4\nnothing of the kind");
        QTest::newRow("missing") << QUrl::fromLocalFile(m_folder.filePath(u"nowhere.pdf"_s));
        QTest::newRow("broken") << QUrl::fromLocalFile(broken.fileName());
        QTest::newRow("a folder") << QUrl::fromLocalFile(m_folder.path());
        QTest::newRow("no location") << QUrl();
        QTest::newRow("a missing resource") << QUrl(u"qrc:/nowhere.pdf"_s);
    }

    void unreadableDocumentsShowNothing()
    {
        QFETCH(QUrl, url);
        HelpView view(url);
        view.show();
        QCOMPARE(pages(view).pageCount(), 0);
        for (const Qt::Key key : {Qt::Key_PageDown, Qt::Key_End, Qt::Key_PageUp})
            QTest::keyClick(&pages(view), key);
        QVERIFY(!pages(view).grab().isNull());
        QCOMPARE(place(view), QString());
        QVERIFY(!view.findChild<QAction*>(u"nextPage"_s)->isEnabled());
    }

private:
    static PDFKitView& pages(const HelpView& view) { return *view.findChild<PDFKitView*>(); }
    static QString place(const HelpView& view)
    {
        return view.findChild<QLabel*>(u"place"_s)->text();
    }
    QUrl document() const { return QUrl::fromLocalFile(m_folder.filePath(u"three.pdf"_s)); }

    QTemporaryDir m_folder;
};

TESSEL_TEST(TestHelpView)
#include "tst_helpview.moc"
