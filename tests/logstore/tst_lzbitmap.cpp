// SPDX-License-Identifier: MIT
#include "platform/logstore/trace/unpack.h"
#include "platform/logstore/writer/chunk.h"
#include "support/testcase.h"

#include <QTest>

#include <set>

using namespace logstore::writer;
using logstore::unpackChunkSet;
using logstore::Unpacked;

namespace {

/// Lines that are much alike, with numbers that are not, and now and then a row of zeros.
Bytes manyLines(std::size_t size)
{
    ByteBuilder out;
    std::uint32_t number = 1;
    while (out.size() < size) {
        number = number * 1664525 + 1013904223;
        out.text("com.example.").text(number % 3 == 0 ? "alpha" : "beta").text(": state ");
        out.u32(number).text(std::string(number >> 28, 'x'));
        if (number % 50 == 0)
            out.zeros(number >> 22);
    }
    Bytes bytes = out.take();
    bytes.resize(size);
    return bytes;
}

/// The half bytes between the bitmaps and the table of a stream's first chunk.
std::set<unsigned> tokensOf(const Bytes& stream)
{
    const auto load24 = [&stream](std::size_t at) {
        return std::size_t{stream.at(at)} | std::size_t{stream.at(at + 1)} << 8
               | std::size_t{stream.at(at + 2)} << 16;
    };
    constexpr std::size_t chunk = 4;
    std::set<unsigned> tokens;
    for (std::size_t at = load24(chunk + 12); at < load24(chunk) - 17; ++at) {
        tokens.insert(stream.at(chunk + at) & 15U);
        tokens.insert(stream.at(chunk + at) >> 4U);
    }
    return tokens;
}

Bytes fromHex(const QByteArray& hex)
{
    const QByteArray bytes = QByteArray::fromHex(hex);
    return {bytes.begin(), bytes.end()};
}

} // namespace

class TestLzbitmap : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void packedAndUnpacked_data()
    {
        QTest::addColumn<LzbitmapFormat>("format");
        QTest::newRow("16 KiB") << LzbitmapFormat{false, false};
        QTest::newRow("16 KiB, runs") << LzbitmapFormat{false, true};
        QTest::newRow("32 KiB") << LzbitmapFormat{true, false};
        QTest::newRow("32 KiB, runs") << LzbitmapFormat{true, true};
    }
    void packedAndUnpacked()
    {
        QFETCH(LzbitmapFormat, format);
        for (const std::size_t size : {0, 1, 7, 8, 9, 100, 5003, 0x8000, 100'001}) {
            const Bytes content = manyLines(size);
            const Bytes stream = lzbitmapStream(content, format);
            Bytes unpacked;
            QCOMPARE(unpackChunkSet(stream, unpacked), Unpacked::Whole);
            QVERIFY2(unpacked == content, qPrintable(QString::number(size)));
            if (size > 0x8000) {
                QVERIFY(stream.size() < size / 2);
                QCOMPARE(tokensOf(stream).size(), std::size_t(16));
            }
        }
    }

    void outcome_data()
    {
        QTest::addColumn<Bytes>("body");
        QTest::addColumn<Unpacked>("outcome");
        QTest::addColumn<QByteArray>("output");

        const QByteArray lines = "com.example.alpha: state 1\ncom.example.alpha: state 2\n"
                                 "com.example.gamma: idle"
                                 + QByteArray(60, '.');
        constexpr auto areas = "636f6d2e6578616d706c65616c706861 3a20737461746520310a636f6d2e3267"
                               "616d6d69646c652e2e2e 1b01 64743538a935";
        constexpr auto table = "00fc03d03d7f40c0833f00000000000000 060000000000";
        const auto chunk = [&](const char* head, const char* lastTokens, const char* end) {
            return fromHex(QByteArray(head) + areas + lastTokens + end);
        };
        constexpr auto withRuns = "5a424d09 530000890000 3900003b00003b0000";
        constexpr auto withoutRuns = "5a424d0c 550000890000 3900003b00003b0000";
        QTest::newRow("with a run") << chunk(withRuns, "3f", table) << Unpacked::Whole << lines;
        QTest::newRow("without") << chunk(withoutRuns, "333333", table) << Unpacked::Whole << lines;
        QTest::newRow("a run without length")
            << chunk(withRuns, "f3", table) << Unpacked::Damaged << QByteArray();
        QTest::newRow("unknown flags")
            << chunk("5a424d19 530000890000 3900003b00003b0000", "3f", table)
            << Unpacked::UnknownCompression << QByteArray();
        QTest::newRow("no end") << chunk(withRuns, "3f", "00fc03d03d7f40c0833f00000000000000")
                                << Unpacked::Damaged << lines;
        QTest::newRow("LZ4 without end")
            << fromHex("6276342d 03000000 616263") << Unpacked::Damaged << QByteArray("abc");
        QTest::newRow("LZ4, stored")
            << fromHex("6276342d 03000000 616263 62763424") << Unpacked::Whole << QByteArray("abc");
        QTest::newRow("LZFSE") << fromHex("62767832 03000000 616263 62767824")
                               << Unpacked::UnknownCompression << QByteArray();
    }
    void outcome()
    {
        QFETCH(Bytes, body);
        QFETCH(Unpacked, outcome);
        QFETCH(QByteArray, output);
        Bytes unpacked;
        QCOMPARE(unpackChunkSet(body, unpacked), outcome);
        QCOMPARE(
            QByteArray(reinterpret_cast<const char*>(unpacked.data()), qsizetype(unpacked.size())),
            output);
    }
};

TESSEL_TEST(TestLzbitmap)
#include "tst_lzbitmap.moc"
