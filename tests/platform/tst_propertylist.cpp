// SPDX-License-Identifier: MIT
#include "platform/propertylist.h"
#include "support/testcase.h"

#include <QDateTime>
#include <QTest>
#include <QTimeZone>

#include <limits>

using namespace Qt::StringLiterals;

namespace {

/// A binary list from its objects, the first of which is the outermost. References are one byte.
QByteArray binaryOf(const QList<QByteArray>& objects)
{
    QByteArray bytes = "bplist00";
    QByteArray offsets;
    for (const QByteArray& object : objects) {
        offsets.append(static_cast<char>(bytes.size() >> 8))
            .append(static_cast<char>(bytes.size()));
        bytes.append(object);
    }
    const auto table = static_cast<quint16>(bytes.size());
    bytes.append(offsets).append(6, '\0').append('\2').append('\1');
    bytes.append(7, '\0').append(static_cast<char>(objects.size()));
    bytes.append(8, '\0');
    bytes.append(6, '\0').append(static_cast<char>(table >> 8)).append(static_cast<char>(table));
    return bytes;
}

/// {"name": "Tessel", "sizes": [1, -1], "on": true}
QByteArray goodBinary()
{
    return binaryOf({QByteArray("\xD3\x01\x02\x03\x04\x05\x06"), "\x54name", "\x55sizes", "\x52on",
                     "\x56Tessel", QByteArray("\xA2\x07\x08"), "\x09", QByteArray("\x10\x01", 2),
                     "\x13\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"});
}

} // namespace

class TestPropertyList : public TestCase
{
    Q_OBJECT

private Q_SLOTS:

    void valuesComeThroughExactly_data()
    {
        QTest::addColumn<QVariant>("value");
        const auto row = [](const char* name, const QVariant& value) {
            QTest::newRow(name) << value;
        };
        row("true", true);
        row("false", false);
        row("zero", qint64{0});
        row("negative", qint64{-5});
        row("smallest", std::numeric_limits<qint64>::min());
        row("largest signed", std::numeric_limits<qint64>::max());
        row("unsigned only", quint64{std::numeric_limits<qint64>::max()} + 1);
        row("largest unsigned", std::numeric_limits<quint64>::max());
        row("real", 1147.8);
        row("whole real", 2.0);
        row("tiny real", 1e-300);
        row("third", 1.0 / 3);
        row("infinite", std::numeric_limits<double>::infinity());
        row("infinite below zero", -std::numeric_limits<double>::infinity());
        row("empty text", u""_s);
        row("text", u" a <b> & \"c\" ]]> 📍 é\r\n\t "_s);
        row("data", QByteArray("\0\1\xff", 3));
        row("long data", QByteArray(1000, 'x'));
        row("date", QDateTime(QDate(2024, 3, 7), QTime(14, 5, 9), QTimeZone::utc()));
        for (const int year : {-400, -1, 1, 1899, 1999, 2100, 4001, 12'000})
            row(qPrintable(QStringLiteral("date of %1").arg(year)),
                QDateTime(QDate(year, 12, 31), QTime(23, 59, 59), QTimeZone::utc()));
        row("empty array", QVariantList());
        row("array", QVariantList{qint64{1}, u"two"_s, 3.0});
        row("dictionary", QVariantMap{{u"a"_s, QVariantMap{{u"b & c"_s, QVariantList{true}}}}});
    }

    void valuesComeThroughExactly()
    {
        QFETCH(QVariant, value);
        const auto xml = propertyListXml({{u"key"_s, value}});
        QVERIFY(xml.has_value());
        const auto read = propertyListFrom(*xml);
        QVERIFY(read.has_value());
        QCOMPARE(read->size(), 1);
        QCOMPARE(read->value(u"key"_s).typeId(), value.typeId());
        QCOMPARE(read->value(u"key"_s), value);
    }

    void writesPlainXml()
    {
        const auto xml = propertyListXml({{u"Real"_s, 1147.8}, {u"Version"_s, 4}});
        QVERIFY(xml.has_value());
        QVERIFY(xml->startsWith("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!DOCTYPE plist"));
        QVERIFY(xml->contains("<key>Real</key>\n\t\t<real>1147.8</real>\n"));
        QVERIFY(xml->contains("<key>Version</key>\n\t\t<integer>4</integer>\n"));
    }

    void readsTheBinaryForm()
    {
        const auto read = propertyListFrom(goodBinary());
        QVERIFY(read.has_value());
        QCOMPARE(*read, (QVariantMap{{u"name"_s, u"Tessel"_s},
                                     {u"sizes"_s, QVariantList{qint64{1}, qint64{-1}}},
                                     {u"on"_s, true}}));
    }

    void keepsReferencesAndLeavesOutNull()
    {
        // {"reference": UID 1, "list": [null, true]}
        const auto read = propertyListFrom(binaryOf(
            {QByteArray("\xD2\x01\x02\x03\x04"), "\x59reference", "\x54list",
             QByteArray("\x80\x01"), QByteArray("\xA2\x05\x06"), QByteArray("\0", 1), "\x09"}));
        QVERIFY(read.has_value());
        QCOMPARE(*read, (QVariantMap{{u"reference"_s, QVariantMap{{u"CF$UID"_s, qint64{1}}}},
                                     {u"list"_s, QVariantList{true}}}));
    }

    void replacesCharactersThatXmlCannotHold()
    {
        const auto read = propertyListFrom(
            binaryOf({QByteArray("\xD1\x01\x02"), QByteArray("\x53k\0y", 4), "\x52\x1F!"}));
        QVERIFY(read.has_value());
        QCOMPARE(*read, (QVariantMap{{u"k\0y"_s, u"\u001f!"_s}}));
        const auto xml = propertyListXml(*read);
        QVERIFY(xml.has_value());
        QCOMPARE(propertyListFrom(*xml).value(), (QVariantMap{{u"k\uFFFDy"_s, u"\uFFFD!"_s}}));
    }

    void damagedListsFail_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("nothing") << QByteArray();
        QTest::newRow("text") << QByteArray("no property list");
        QTest::newRow("cut XML") << QByteArray("<plist><dict><key>a</key><string>b");
        QTest::newRow("impossible date") << QByteArray(
            "<plist><dict><key>a</key><date>2023-02-29T00:00:00Z</date></dict></plist>");
        QTest::newRow("year beyond the calendar") << QByteArray(
            "<plist><dict><key>a</key><date>99999-01-01T00:00:00Z</date></dict></plist>");
        QTest::newRow("wrong end tag") << QByteArray("<plist><dict></array></plist>");
        QTest::newRow("array outside") << QByteArray("<plist><array/></plist>");
        QTest::newRow("text outside") << QByteArray("<plist><string>a</string></plist>");
        QTest::newRow("only the magic number") << QByteArray("bplist00");
        QTest::newRow("reference past the end") << binaryOf({QByteArray("\xD1\x01\x7F"), "\x51k"});
        QTest::newRow("count past the end") << binaryOf({QByteArray("\xDF\x12\x7F\xFF\xFF\xFF")});
        QTest::newRow("count too wide")
            << binaryOf({QByteArray("\xDF\x1F") + QByteArray(40, '\x01')});
        QTest::newRow("dictionary holds itself")
            << binaryOf({QByteArray("\xD1\x01\x00", 3), "\x51k"});
    }

    void damagedListsFail()
    {
        QFETCH(QByteArray, bytes);
        const auto read = propertyListFrom(bytes);
        QVERIFY(!read.has_value());
        QVERIFY(!read.error().description.empty());
    }

    void everyShorterBinaryFormFails()
    {
        const QByteArray good = goodBinary();
        for (qsizetype length = 0; length < good.size(); ++length)
            QVERIFY2(!propertyListFrom(good.first(length)), qPrintable(QString::number(length)));
    }

    void everyFlippedBitIsSurvived()
    {
        const QByteArray good = goodBinary();
        for (qsizetype bit = 0; bit < good.size() * 8; ++bit) {
            QByteArray bad = good;
            bad[bit / 8] = static_cast<char>(bad[bit / 8] ^ (1 << (bit % 8)));
            if (const auto read = propertyListFrom(bad))
                QVERIFY2(propertyListXml(*read), qPrintable(QString::number(bit)));
        }
    }

    void deepNestingFails()
    {
        const QByteArray front = "<plist><dict><key>a</key>";
        QVERIFY(!propertyListFrom(front + QByteArray("<array>").repeated(500'000)));
        QVERIFY(!propertyListFrom(front + QByteArray("<array>").repeated(200'000)
                                  + QByteArray("</array>").repeated(200'000) + "</dict></plist>"));
    }

    void sharedContainersFail()
    {
        // Each array holds the next one twice: two to the fortieth values from some hundred bytes.
        QList<QByteArray> objects{QByteArray("\xD1\x01\x02"), "\x51k"};
        for (char next = 3; next < 42; ++next)
            objects.append(QByteArray("\xA2").append(next).append(next));
        objects.append("\xA0");
        QVERIFY(!propertyListFrom(binaryOf(objects)));

        // One long text held by many: small in the file, large in memory.
        const QByteArray text = QByteArray("\x5F\x11\x70\x00", 4) + QByteArray(0x7000, 'x');
        const QByteArray array = QByteArray("\xAF\x11\x04\x00", 4) + QByteArray(0x400, '\x03');
        QVERIFY(!propertyListFrom(binaryOf({QByteArray("\xD1\x01\x02"), "\x51k", array, text})));
    }

    void unknownTypesFail()
    {
        QVERIFY(!propertyListXml({{u"a"_s, QVariantList{QVariant()}}}));
        QVERIFY(!propertyListXml({{u"a"_s, QVariant::fromValue(QTime())}}));
    }
};

TESSEL_TEST(TestPropertyList)
#include "tst_propertylist.moc"
