// SPDX-License-Identifier: MIT
#include "logstore/writtenstore.h"

#include <QRegularExpression>
#include <QTest>

#include <cmath>

using namespace logstore::writer;

namespace {

using Items = std::vector<Item>;
using i32 = std::int32_t;
using u32 = std::uint32_t;
using u64 = std::uint64_t;

void row(const char* name, const char* format, Items items, const char* expected)
{
    QTest::newRow(name) << QByteArray(format) << std::move(items) << QString::fromUtf8(expected);
}

void addColumns()
{
    QTest::addColumn<QByteArray>("format");
    QTest::addColumn<Items>("items");
    QTest::addColumn<QString>("expected");
}

Item noBytes(ItemKind kind, Privacy privacy = Privacy::Public)
{
    return item(kind, privacy, {});
}

Bytes counted(std::size_t size)
{
    Bytes result(size);
    for (std::size_t i = 0; i < size; ++i)
        result[i] = static_cast<std::uint8_t>(i);
    return result;
}

Item built(ByteBuilder& builder)
{
    return bytes(builder.take());
}

Bytes zeros(std::size_t count, Bytes tail = {})
{
    Bytes result(count);
    result.insert(result.end(), tail.begin(), tail.end());
    return result;
}

} // namespace

/// What messages read, from a store's bytes to the text.
class TestStoreMessages : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral("."))); }
    void formatText_data();
    void formatText() { compare(); }
    void numbers_data();
    void numbers() { compare(); }
    void texts_data();
    void texts() { compare(); }
    void mismatches_data();
    void mismatches() { compare(); }
    void privacy_data();
    void privacy() { compare(); }
    void decoratedNumbers_data();
    void decoratedNumbers() { compare(); }
    void decoratedBytes_data();
    void decoratedBytes() { compare(); }
    void decorationRules_data();
    void decorationRules() { compare(); }

private:
    void compare();
};

void TestStoreMessages::compare()
{
    QFETCH(QByteArray, format);
    QFETCH(Items, items);
    QFETCH(QString, expected);
    WrittenStore store;
    Record record = store.message(1, format.toStdString());
    record.items = items;
    // Others around it: the private data of a record must not be taken for another's.
    Record neighbour = store.message(0, "%s");
    neighbour.items = {text("neighbour", Privacy::Private)};
    store.addRecords({neighbour, record, neighbour});
    const auto entries = store.entries();
    QCOMPARE(entries.size(), std::size_t(3));
    QCOMPARE(entries[2].message, expected);
    QCOMPARE(entries[2].format, QString::fromUtf8(format));
    QCOMPARE(entries[0].message + entries[1].message, QStringLiteral("neighbourneighbour"));
}

void TestStoreMessages::formatText_data()
{
    addColumns();
    row("no conversion", "plain", {}, "plain");
    row("empty", "", {}, "");
    row("text outside ASCII", "größer → %d", {number<i32>(1)}, "größer → 1");
    row("percent signs", "100%% of 5%%", {}, "100% of 5%");
    row("unknown letter", "%y and %d", {number<i32>(1)}, "%y and 1");
    row("space and letter make a conversion", "50% end", {number(3.0)}, "50 3.000000e+00nd");
    row("percent sign at the end", "all of 5%", {}, "all of 5%");
    row("decorations without conversion", "%{public}%@", {object("x")}, "{public}x");
    row("decorations without end", "%{public", {object("x")}, "%{public");
    row("line feeds and spaces stay", " a\n\tb  \n\n", {}, " a\n\tb  \n\n");
    row("no item left", "%d and %s", {number<i32>(1)}, "1 and <decode: missing data>");
    row("no items at all", "%d%@", {}, "<decode: missing data><decode: missing data>");
    row("items left over", "%d", {number<i32>(1), text("more")}, "1");
    row("width from an item", "[%*d]", {count(6), number<i32>(42)}, "[    42]");
    row("width from a plain number", "[%*d]", {number<i32>(6), number<i32>(42)}, "[    42]");
    row("negative width from an item", "[%*d]", {count(-6), number<i32>(42)}, "[42    ]");
    row("width and precision from items", "[%*.*d]", {count(6), count(3), number<i32>(42)},
        "[   042]");
    row("negative precision from an item", "[%.*f]", {count(-1), number(1.5)}, "[1.500000]");
    row("precision from an item", "%.*s", {count(3), text("abcdef")}, "abc");
    row("width without item", "[%*s]", {text("ab")}, "[ab]");
    row("constant precision with its count", "%.3s", {count(3), text("abcdef")}, "abc");
    row("counts and mask names before an item", "%s", {maskName("hash"), count(2), text("abcdef")},
        "ab");
    row("absurd width is limited", "%99999999999d", {number<i32>(1)},
        (std::string(65534, ' ') + "1").c_str());
}

void TestStoreMessages::numbers_data()
{
    addColumns();
    const Items eight(8, number<i32>(42));
    Items flags(eight.begin(), eight.end() - 1);
    flags.push_back(number(3.14159));
    row("flags, width and precision", "[%5d] [%-5d] [%05d] [%+d] [% d] [%6.3d] [%.4d] [%08.3f]",
        flags, "[   42] [42   ] [00042] [+42] [ 42] [   042] [0042] [0003.142]");
    row("precision switches zeros off", "[%06.3d]", {number<i32>(42)}, "[   042]");
    row("zero with precision zero", "[%.0d]", {number<i32>(0)}, "[0]");
    row("grouping is ignored", "%'d", {number<i32>(1234567)}, "1234567");
    row("sizes of signed numbers", "%d %i %D %lld",
        {number<std::int8_t>(-1), number<std::int16_t>(-300), number<i32>(-70000),
         number<std::int64_t>(INT64_MIN)},
        "-1 -300 -70000 -9223372036854775808");
    row("sizes of unsigned numbers", "%u %u %U %llu",
        {number<std::int8_t>(-1), number<std::int16_t>(-1), number<i32>(-1),
         number<std::int64_t>(-1)},
        "255 65535 4294967295 18446744073709551615");
    row("length of the conversion does not widen", "%lld", {number<i32>(-5)}, "-5");
    row("cut to a byte", "%hhd %hhu", {number<i32>(300), number<i32>(-1)}, "44 255");
    row("cut to two bytes", "%hd %hx", {number<i32>(0x18000), number<i32>(-1)}, "-32768 ffff");
    row("hexadecimal and octal", "%x %X %#x %#X %o %#o",
        {number<u32>(48879), number<u32>(48879), number<u32>(255), number<u32>(255), number<u32>(8),
         number<u32>(8)},
        "beef BEEF 0xff 0XFF 10 010");
    row("zero has no prefix", "%#x %#o", {number<u32>(0), number<u32>(0)}, "0 0");
    row("negative hexadecimal", "%x", {number<i32>(-1)}, "ffffffff");
    row("pointers", "%p %p", {number<u64>(0xABC180E00), number<u64>(0)}, "0xabc180e00 0x0");
    row("pointer with width", "[%14p]", {number<u64>(0x1000)}, "[        0x1000]");
    row("characters", "%c%c%c", {number<i32>('o'), number<i32>('k'), number<i32>(0)}, "ok");
    row("code points", "%C %lc", {number<u32>(0x20ac), number<u32>(0x1f600)}, "€ 😀");
    row("floating point", "%f %e %g", {number(1.5), number(12345.678), number(0.0001)},
        "1.500000 1.234568e+04 0.0001");
    row("floating point in capitals", "%E %G", {number(0.5), number(1e-10)}, "5.000000E-01 1E-10");
    row("single precision", "%f %.2f", {number(0.5F), number(2.25F)}, "0.500000 2.25");
    row("hexadecimal floating point", "%a %A", {number(1.0), number(0.5)}, "0x1p+0 0X1P-1");
    row("not finite", "%f %f", {number(double(INFINITY)), number(-double(INFINITY))}, "inf -inf");
    row("precision of a floating point number", "[%8.2f] [%-8.1f]", {number(3.14159), number(2.0)},
        "[    3.14] [2.0     ]");
    row("error numbers", "%m; %m; %m", {errorNumber(2), number<i32>(61), errorNumber(0)},
        "No such file or directory; Connection refused; Undefined error: 0");
    row("unknown error number", "%m", {errorNumber(9999)}, "Unknown error: 9999");
    row("nothing is written", "[%n]%d", {number<i32>(1), number<i32>(2)}, "[]2");
    row("public numbers", "%d", {number<i32>(7, Privacy::Public)}, "7");
    row("size of three bytes", "%d", {rawItem(0x00, {1, 2, 3})}, "<decode: unsupported value>");
    row("size of no bytes", "%d", {rawItem(0x02, {})}, "<decode: unsupported value>");
}

void TestStoreMessages::texts_data()
{
    addColumns();
    row("text", "%s", {text("abc")}, "abc");
    row("text of no stated privacy", "%s", {text("abc", Privacy::None)}, "abc");
    row("empty text", "[%s]", {text("")}, "[]");
    row("no text", "%s", {noBytes(ItemKind::Text)}, "(null)");
    row("object", "%@", {object("<Thing: 0x1>")}, "<Thing: 0x1>");
    row("no object", "%@", {noBytes(ItemKind::Object)}, "(null)");
    row("wide text", "%S", {wideText(U"wide ü 😀")}, "wide ü 😀");
    row("text as recent systems store it", "%s",
        {item(ItemKind::RecentText, Privacy::Public, {'n', 'e', 'w', 0})}, "new");
    row("text with a zero byte inside", "%s",
        {item(ItemKind::Text, Privacy::Public, {'a', 0, 'b', 0})}, "a");
    row("text without a zero byte", "%s", {item(ItemKind::Text, Privacy::Public, {'a', 'b'})},
        "ab");
    row("bytes that are not UTF-8", "%s",
        {item(ItemKind::Text, Privacy::Public, {'a', 0xff, 'b', 0})},
        "a\xEF\xBF\xBD"
        "b");
    row("width of a text", "[%5s] [%-5s]", {text("ab"), text("ab")}, "[   ab] [ab   ]");
    row("width and pointer as seen", "%25s:%-5d (%p)",
        {text("ACMP4AACBaseDecoder.cpp"), number<i32>(310), number<u64>(0xabc180e00)},
        "  ACMP4AACBaseDecoder.cpp:310   (0xabc180e00)");
    row("precision cuts a text", "%.3s", {text("abcdef")}, "abc");
    row("precision of zero does not", "%.0s", {text("abcdef")}, "abcdef");
    row("precision does not cut an object", "%.2@", {object("abcdef")}, "abcdef");
    row("bytes", "%.4P", {count(4), bytes(Bytes{0xca, 0xfe, 0x00, 0x26})}, "CAFE0026");
    row("several values in their places", "%s %@ %s", {text("one"), object("two"), text("three")},
        "one two three");
}

void TestStoreMessages::mismatches_data()
{
    addColumns();
    row("number wants no text", "%d", {text("five")},
        "<decode: mismatch for [%d] got [STRING sz:5]>");
    row("number wants no object", "%u", {object("five")},
        "<decode: mismatch for [%u] got [OBJECT sz:5]>");
    row("number wants no bytes", "%x", {bytes(counted(3))},
        "<decode: mismatch for [%x] got [DATA sz:3]>");
    row("number wants no wide text", "%d", {wideText(U"a")},
        "<decode: mismatch for [%d] got [WIDESTRING sz:8]>");
    row("text wants no number", "%s", {number<i32>(5)},
        "<decode: mismatch for [%s] got [SCALAR sz:4]>");
    row("object wants no number", "%@", {number<u64>(5)},
        "<decode: mismatch for [%@] got [SCALAR sz:8]>");
    row("floating point wants no text", "%5.2f", {text("x")},
        "<decode: mismatch for [%5.2f] got [STRING sz:2]>");
    row("unknown kind", "%d", {Item{0x92, Item::Place::Values, {1, 2, 3}}},
        "<decode: mismatch for [%d] got [UNKNOWN sz:3]>");
    row("the next item still fits", "%d %s", {text("a"), text("b")},
        "<decode: mismatch for [%d] got [STRING sz:2]> b");
}

void TestStoreMessages::privacy_data()
{
    addColumns();
    const Item marked = rawItem(0x21, {0, 0, 5, 0x80});
    const Item even = Item{0x24, Item::Place::Values, {'x', 0}};
    row("private, not kept", "<%s> %@ %d",
        {redacted(ItemKind::Text), redacted(ItemKind::Object), redacted(ItemKind::Number)},
        "<<private>> <private> <private>");
    row("private text that was kept", "%s", {text("secret", Privacy::Private)}, "secret");
    row("private values in their places", "%s %@ %s",
        {text("one", Privacy::Private), object("two", Privacy::Private),
         text("three", Privacy::Private)},
        "one two three");
    row("private number that was kept", "%d", {number<i32>(-42, Privacy::Private)}, "-42");
    row("private bytes that were kept", "%.2P",
        {count(2), bytes(Bytes{0xab, 0xcd}, Privacy::Private)}, "ABCD");
    row("private wide text that was kept", "%S", {wideText(U"ß", Privacy::Private)}, "ß");
    row("private error number that was kept", "%m", {errorNumber(2, Privacy::Private)},
        "No such file or directory");
    row("marked as not kept", "%s %s", {marked, text("kept", Privacy::Private)}, "<private> kept");
    row("public beside private", "%s %s", {text("shown"), redacted(ItemKind::Text)},
        "shown <private>");
    row("width does not apply", "[%20s]", {redacted(ItemKind::Text)}, "[<private>]");
    row("sensitive, not kept", "%s", {redacted(ItemKind::Text, Privacy::Sensitive)}, "<private>");
    row("sensitive, kept", "%s", {text("secret", Privacy::Sensitive)}, "<private>");
    row("sensitive by its bit alone", "%s", {even}, "<private>");
    row("masked", "%{private, mask.hash}s", {maskName("hash"), masked(counted(16))},
        "<mask.hash: 'AAECAwQFBgcICQoLDA0ODw=='>");
    row("masked with padding of one", "%s", {masked(counted(2))}, "<mask.hash: 'AAE='>");
    row("masked among the private data", "%s", {masked(counted(3), Privacy::Private)},
        "<mask.hash: 'AAEC'>");
    row("masked without hash", "%s", {noBytes(ItemKind::Masked)}, "<mask.hash: (null)>");
    row("masked, private, without hash", "%s", {redacted(ItemKind::Masked)}, "<private>");
    row("mask on nothing", "%{public, mask.hash}s %{mask.hash}@",
        {noBytes(ItemKind::Text), noBytes(ItemKind::Object)},
        "<mask.hash: (null)> <mask.hash: (null)>");
    row("mask on a value that was kept", "%{mask.hash}s", {maskName("hash"), text("abc")}, "abc");
}

void TestStoreMessages::decoratedNumbers_data()
{
    addColumns();
    row("bool", "%{bool}d %{bool}d", {number<i32>(0), number<i32>(2)}, "false true");
    row("BOOL", "%{BOOL}d %{BOOL}d", {number<std::int8_t>(0), number<std::int8_t>(1)}, "NO YES");
    row("errno", "%{darwin.errno}d %{errno}d", {number<i32>(61), number<i32>(32)},
        "[61: Connection refused] [32: Broken pipe]");
    row("mode of a folder", "%{darwin.mode}d", {number<u32>(040755)}, "drwxr-xr-x");
    row("mode of a file", "%{darwin.mode}d", {number<u32>(0104711)}, "-rws--x--x");
    row("mode with the sticky bit", "%{darwin.mode}d", {number<u32>(0041776)}, "drwxrwxrwT");
    row("signal", "%{darwin.signal}d", {number<i32>(11)}, "[sigsegv: Segmentation fault]");
    row("unknown signal", "%{darwin.signal}d", {number<i32>(99)}, "[99: Unknown signal: 99]");
    row("time", "%{time_t}d", {number<std::int64_t>(1452627697)}, "2016-01-12 19:41:37");
    row("bytes", "%{bytes}d %{bytes}d %{bytes}d",
        {number<i32>(999), number<i32>(4720), number<i32>(12'300'000)},
        "999 bytes 4.72 kB 12.3 MB");
    row("bytes in powers of two", "%{iec-bytes}d %{iec-bytes}d",
        {number<i32>(4720), number<i32>(1023 * 1024)}, "4.61 KiB 1023 KiB");
    row("bits", "%{bitrate}d %{bitrate}d", {number<i32>(999), number<i32>(123'000)},
        "999 bps 123 kbps");
    row("bits in powers of two", "%{iec-bitrate}d", {number<i32>(118 * 1024)}, "118 Kibps");
    row("authorisation",
        "%{location:CLClientAuthorizationStatus}d %{location:CLClientAuthorizationStatus}d",
        {number<i32>(0), number<i32>(4)}, "\"Not Determined\" \"Authorized When In Use\"");
    row("unknown authorisation", "%{location:CLClientAuthorizationStatus}d", {number<i32>(9)},
        "<decode: unknown value: 9>");
    row("reachability", "%{location:CLDaemonStatus_Type::Reachability}d", {number<i32>(1000)},
        "\"Reachability Unachievable\"");
    row("harvester", "%{location:CLSubHarvesterIdentifier}d", {number<i32>(9)}, "\"Trace\"");
    row("I/O message", "%{location:IOMessage}d", {number<u32>(0xe0000280)}, "\"SystemWillSleep\"");
    row("SQLite result", "%{location:SqliteResult}d %{location:SqliteResult}d",
        {number<i32>(5), number<u64>(101)}, "\"SQLITE_BUSY\" \"SQLITE_DONE\"");
    row("yes or no", "%{mdns:yesno}d %{mdns:yesno}d", {number<i32>(0), number<i32>(1)}, "no yes");
    row("acceptable", "%{mdns:acceptable}d %{mdns:acceptable}d", {number<i32>(0), number<i32>(1)},
        "unacceptable acceptable");
    row("added or removed", "%{mdns:addrmv}d %{mdns:addrmv}d", {number<i32>(0), number<i32>(1)},
        "rmv add");
    row("resource record", "%{mdns:rrtype}d %{mdns:rrtype}d", {number<i32>(28), number<i32>(65)},
        "AAAA HTTPS");
    row("unknown resource record", "%{mdns:rrtype}d", {number<i32>(4711)},
        "<decode: unknown value: 4711>");
    row("negative reason", "%{mdns:nreason}d", {number<i32>(2)}, "nxdomain");
    row("protocol", "%{mdns:protocol}d", {number<i32>(4)}, "HTTPS");
    row("options", "%{mdns:gaiopts}d", {number<i32>(0xc)}, "0xC {in-app-browser, use-failover}");
    row("DNS counts", "%{mdns:dns.counts}d", {number<u64>(0x0001'0002'0000'0000)}, "1/2/0/0");
    row("DNS identifier and flags", "%{mdns:dns.idflags}d", {number<u32>(0x4bbb'0100)},
        "id: 0x4BBB (19387), flags: 0x0100 (Q/Query, RD, NoError)");
    row("directory identifier type", "%{odtypes:mbridtype}d", {number<i32>(4)}, "Username");
    row("directory error", "%{odtypes:ODError}d", {number<i32>(2200)}, "ODErrorNodeUnknownHost");
    row("telemetry", "%{signpost.telemetry:number1}f", {number(5.88671875)},
        "__##__signpost.telemetry#____#number1#_##_#5.88671875##__##");
    row("description", "%{signpost.description:attribute}@", {object("value")},
        "__##__signpost.description#____#attribute#_##_#value##__##");
}

void TestStoreMessages::decoratedBytes_data()
{
    addColumns();
    ByteBuilder b;
    const Bytes uuid{0x10, 0x74, 0x2e, 0x39, 0x06, 0x57, 0x41, 0xf8,
                     0xab, 0x99, 0x87, 0x8c, 0x5e, 0xc2, 0xdc, 0xaa};
    row("identifier", "%{uuid_t}.16P", {count(16), bytes(uuid)},
        "10742E39-0657-41F8-AB99-878C5EC2DCAA");
    row("identifier of a wrong size", "%{uuid_t}.16P", {count(16), bytes(counted(15))},
        "<decode: unsupported value>");
    row("time of 16 bytes", "%{timeval}.*P", {count(16), built(b.i64(1452627697).i64(774236))},
        "2016-01-12 19:41:37.774236");
    row("time of 12 bytes", "%{timeval}.*P", {count(12), built(b.i64(1452627697).i32(774236))},
        "2016-01-12 19:41:37.774236");
    row("time of 8 bytes", "%{timeval}.*P", {count(8), built(b.i32(1452627697).i32(774236))},
        "2016-01-12 19:41:37.774236");
    row("time to the nanosecond", "%{timespec}.*P",
        {count(16), built(b.i64(1452627697).i64(238238282))}, "2016-01-12 19:41:37.238238282");
    row("address as a number", "%{network:in_addr}d", {number<u32>(0x0100007f)}, "127.0.0.1");
    row("address as bytes", "%{in_addr}.4P", {count(4), bytes(Bytes{192, 0, 2, 1})}, "192.0.2.1");
    row("long address", "%{network:in6_addr}.16P",
        {count(16),
         bytes(Bytes{0xfe, 0x80, 0, 0, 0, 0, 0, 0, 0, 0x0f, 0x86, 0xff, 0xfe, 0xe9, 0x5c, 0x16})},
        "fe80::f:86ff:fee9:5c16");
    row("long address of zeros", "%{in6_addr}.16P", {count(16), bytes(zeros(16))}, "::");
    row("mapped address", "%{in6_addr}.16P",
        {count(16), bytes(zeros(10, {0xff, 0xff, 1, 2, 3, 4}))}, "::ffff:1.2.3.4");
    row("socket address", "%{network:sockaddr}.*P",
        {count(16), bytes(Bytes{16, 2, 0, 80, 127, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0, 0})}, "127.0.0.1");
    row("long socket address", "%{sockaddr}.*P",
        {count(28), built(b.u8(28).u8(30).zeros(6).zeros(15).u8(1).zeros(4))}, "::1");
    row("socket address of another family", "%{sockaddr}.*P",
        {count(16), built(b.u8(16).u8(1).zeros(14))}, "<decode: unsupported value>");
    row("no socket address", "%{sockaddr}.*P", {count(0), noBytes(ItemKind::Data)}, "<NULL>");
    row("resolver's address", "%{mdnsresponder:ip_addr}.20P",
        {count(8), built(b.u32(4).bytes(Bytes{1, 2, 3, 4}))}, "1.2.3.4");
    row("resolver's long address", "%{mdnsresponder:ip_addr}.20P",
        {count(20), built(b.u32(6).zeros(15).u8(1))}, "::1");
    row("hardware address", "%{mdnsresponder:mac_addr}.6P",
        {count(6), bytes(Bytes{0xde, 0xad, 0xbe, 0xef, 0, 1})}, "DE:AD:BE:EF:00:01");
    row("domain name", "%{mdnsresponder:domain_name}.*P",
        {count(17), built(b.u8(3).text("www").u8(7).text("example").u8(3).text("com").u8(0))},
        "www.example.com.");
    row("root domain", "%{mdnsresponder:domain_name}.*P", {count(1), bytes(Bytes{0})}, ".");
    row("DNS head", "%{mdns:dnshdr}.12P",
        {count(12), bytes(Bytes{0x4b, 0xbb, 0x81, 0x80, 0, 1, 0, 2, 0, 0, 0, 1})},
        "id: 0x4BBB (19387), flags: 0x8180 (R/Query, RD, RA, NoError), counts: 1/2/0/1");
    row("user by number", "%{odtypes:mbr_details}.*P",
        {count(20), built(b.u8(0x23).i32(-2).cstr("/Local/Default"))}, "user: -2@/Local/Default");
    row("user by name", "%{odtypes:mbr_details}.*P",
        {count(20), built(b.u8(0x24).cstr("ada").cstr("/Local/Default"))},
        "user: ada@/Local/Default");
    row("security identifier", "%{odtypes:nt_sid_t}.*P",
        {count(28), built(b.u8(1).u8(5).zeros(5).u8(5).u32(21).u32(1).u32(2).u32(3).u32(500))},
        "S-1-5-21-1-2-3-500");
    row("path in quotes", "%{location:escape_only}s", {text("/a/b")}, "\"\\/a\\/b\"");
    row("location client state", "%{location:_CLClientManagerStateTrackerState}.*P",
        {count(8), built(b.u32(1).u32(0))},
        R"({"locationRestricted":false,"locationServicesEnabledStatus":1})");
}

void TestStoreMessages::decorationRules_data()
{
    addColumns();
    row("names that have no effect", "%{public}s %{private, name=x}d %{xcode:size-in-bytes}d",
        {text("a"), number<i32>(1), number<i32>(2)}, "a 1 2");
    row("capitals matter", "%{PUBLIC}s %{Bool}d", {text("a"), number<i32>(1)}, "a 1");
    row("first that applies", "%{public, bool, BOOL}d", {number<i32>(1)}, "true");
    row("spaces around commas", "%{ public , BOOL }d", {number<i32>(1)}, "YES");
    row("prefix of the system's own", "%{builtin:bool}d", {number<i32>(1)}, "true");
    row("for numbers, on a text", "%{bool}s", {text("abc")}, "abc");
    row("on a private value that was not kept", "%{private, uuid_t}.16P",
        {count(16), redacted(ItemKind::Data)}, "<private>");
    row("on a private value that was kept", "%{private, bool}d", {number<i32>(1, Privacy::Private)},
        "true");
    row("width does not apply", "[%{bool}10d]", {number<i32>(1)}, "[true]");
    row("empty decorations", "%{}d", {number<i32>(3)}, "3");
}

QTEST_APPLESS_MAIN(TestStoreMessages)
#include "tst_storemessages.moc"
