// SPDX-License-Identifier: MIT
#include "platform/logstore/trace/record.h"
#include "support/testcase.h"

#include <QTest>

using logstore::RecordFields;
using logstore::RecordHead;
using logstore::RecordKind;

namespace {

/// A text of so many bytes, its closing zero byte counted.
QByteArray textOf(int size)
{
    return QByteArray(size - 1, 'x').toHex() + "00";
}

// As published, but for some of the numbers and the texts, which were not.
const QByteArray withIdentifier =
    QByteArray("c8000000 48055b00 0600 2206 00081094400101000000 220400000b00")
    + "000401000000 22040b003600 000402000000 000403000000" + textOf(11) + textOf(54);
const QByteArray withoutIdentifier =
    QByteArray("e557010000000080 34c44c0d 3200 07 230e 0004ffffffff 220400000a00 22040a000a00")
    + "000407020000" + QByteArray("000403000000").repeated(9) + "00080500000000000000" + textOf(10)
    + textOf(10) + " 00000000";

} // namespace

/// Records that name a persona hold its identifier, or they do not.
class TestPersonas : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void formThatFits_data()
    {
        QTest::addColumn<RecordHead>("head");
        QTest::addColumn<QByteArray>("data");
        QTest::addColumn<quint32>("inProcessWithout"); // the address, which tells the form
        QTest::addColumn<quint32>("inProcessWithPersona");
        const auto row = [](const char* name, RecordKind kind, std::uint16_t flags,
                            const QByteArray& data, quint32 without, quint32 with) {
            QTest::newRow(name) << RecordHead{kind, 1, flags, 0, 0, 0, 0} << data << without
                                << with;
        };
        constexpr auto log = RecordKind::Log;
        constexpr auto activity = RecordKind::Activity;
        row("published, with", log, 0x0244, withIdentifier, 0x5b0548, 0x5b0548);
        row("published, without", log, 0x0645, withoutIdentifier, 0xd4cc434, 0xd4cc434);
        row("without, no byte over", log, 0x0645, withoutIdentifier.chopped(9), 0xd4cc434,
            0xd4cc434);
        row("no arguments", log, 0x0044, "63000000 11000000 0000", 0x11, 0x63);
        row("no room for an identifier", log, 0x0044, "11000000 0000", 0x11, 0x11);
        row("neither fits", log, 0x0044, "63000000 11ff0000 00ff 0000", 0xff11, 0x63);
        row("items in oversize chunk", log, 0x0844, "63000000 11000000 01000000", 0x11, 0x63);
        row("the same, no byte over", log, 0x0844, "11000000 01000000", 0x11, 0x11);
        row("more than items in oversize chunk", log, 0x0844, "63000000 11000000 01000000 00", 0x11,
            0x63);
        row("range outside", log, 0x0044, "63000000 11000000 2202 22040000 0100 0004 63000000",
            0x63, 0x63);
        row("activity with", activity, 0x0042, "63000000 0100000000000080 11000000", 0x11, 0x11);
        row("activity without", activity, 0x0042, "0100000000000080 11000000 00000000", 0x11, 0x11);
        row("activities that may be either", activity, 0x0042,
            "63000000 00000080 00000080 11000000", 0x11, 0x80000000);
        row("signpost with", RecordKind::Signpost, 0x0044,
            "63000000 11000000 4d00000000000000 0001 000406000000", 0x11, 0x11);
        row("trace: adds nothing", RecordKind::Trace, 0x0042, "11000000 00", 0x11, 0x11);
    }
    void formThatFits()
    {
        QFETCH(RecordHead, head);
        QFETCH(QByteArray, data);
        QFETCH(quint32, inProcessWithout);
        QFETCH(quint32, inProcessWithPersona);
        const QByteArray raw = QByteArray::fromHex(data);
        const std::vector<std::uint8_t> bytes(raw.begin(), raw.end());
        const auto without = RecordFields::read(head, bytes, false);
        const auto with = RecordFields::read(head, bytes, true);
        QVERIFY(without && with);
        QCOMPARE(without->addressLow, inProcessWithout);
        QCOMPARE(with->addressLow, inProcessWithPersona);
    }
};

TESSEL_TEST(TestPersonas)
#include "tst_personas.moc"
