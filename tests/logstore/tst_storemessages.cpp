// SPDX-License-Identifier: MIT
#include "logstore/messagerows.h"
#include "support/testcase.h"

#include <cmath>

using namespace logstore::writer;

/// What messages read, from a store's bytes to the text.
class TestStoreMessages : public TestCase
{
    Q_OBJECT

private Q_SLOTS:

    void formatText_data()
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
        row("counts and mask names before an item", "%s",
            {maskName("hash"), count(2), text("abcdef")}, "ab");
        row("absurd width is limited", "%99999999999d", {number<i32>(1)},
            (std::string(65534, ' ') + "1").c_str());
    }

    void formatText() { compareMessage(); }

    void numbers_data()
    {
        addColumns();
        const Items eight(8, number<i32>(42));
        Items flags(eight.begin(), eight.end() - 1);
        flags.push_back(number(3.14159));
        row("flags, width and precision", "[%5d] [%-5d] [%05d] [%+d] [% d] [%6.3d] [%.4d] [%08.3f]",
            flags, "[   42] [42   ] [00042] [+42] [ 42] [   042] [0042] [0003.142]");
        row("precision switches zeros off", "[%06.3d]", {number<i32>(42)}, "[   042]");
        row("zero with precision zero", "[%5.0d] [%+.d] [0x%.0x] [%#.0o] [%.0u]",
            Items(5, number<i32>(0)), "[     ] [+] [0x] [0] []");
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
            {number<u32>(48879), number<u32>(48879), number<u32>(255), number<u32>(255),
             number<u32>(8), number<u32>(8)},
            "beef BEEF 0xff 0XFF 10 010");
        row("zero has no prefix", "%#x %#o", {number<u32>(0), number<u32>(0)}, "0 0");
        row("octal prefix is one of the digits", "%#.3o %#.2o", Items(2, number<u32>(8)),
            "010 010");
        row("negative hexadecimal", "%x", {number<i32>(-1)}, "ffffffff");
        row("pointers", "%p %p", {number<u64>(0xABC180E00), number<u64>(0)}, "0xabc180e00 0x0");
        row("pointer with width", "[%14p]", {number<u64>(0x1000)}, "[        0x1000]");
        row("characters", "%c%c%c", {number<i32>('o'), number<i32>('k'), number<i32>(0)}, "ok");
        row("code points", "%C %lc", {number<u32>(0x20ac), number<u32>(0x1f600)}, "€ 😀");
        row("floating point", "%f %e %g", {number(1.5), number(12345.678), number(0.0001)},
            "1.500000 1.234568e+04 0.0001");
        row("floating point in capitals", "%E %G", {number(0.5), number(1e-10)},
            "5.000000E-01 1E-10");
        row("single precision", "%f %.2f", {number(0.5F), number(2.25F)}, "0.500000 2.25");
        row("hexadecimal floating point", "%a %A", {number(1.0), number(0.5)}, "0x1p+0 0X1P-1");
        row("not finite", "[%+f] [%06F] [%+5f] [% g]",
            {number(double(INFINITY)), number(-double(INFINITY)), number(-double(NAN)),
             number(double(NAN))},
            "[+inf] [  -INF] [  nan] [nan]");
        row("precision of a floating point number", "[%8.2f] [%-8.1f]",
            {number(3.14159), number(2.0)}, "[    3.14] [2.0     ]");
        row("error numbers", "%m; %m; %m", {errorNumber(2), number<i32>(61), errorNumber(0)},
            "No such file or directory; Connection refused; Undefined error: 0");
        row("unknown error number", "%m", {errorNumber(9999)}, "Unknown error: 9999");
        row("nothing is written", "[%n]%d", {number<i32>(1), number<i32>(2)}, "[]2");
        row("public numbers", "%d", {number<i32>(7, Privacy::Public)}, "7");
        row("error number below zero", "%m", {errorNumber(-5)}, "Unknown error: -5");
        row("size of three bytes", "%d", {rawItem(0x00, {1, 2, 3})}, "<decode: unsupported value>");
        row("size of no bytes", "%d", {rawItem(0x02, {})}, "<decode: unsupported value>");
    }

    void numbers() { compareMessage(); }

    void texts_data()
    {
        addColumns();
        row("text", "%s", {text("abc")}, "abc");
        row("text of no stated privacy", "%s", {text("abc", Privacy::None)}, "abc");
        row("empty text", "[%s]", {text("")}, "[]");
        row("no text", "%s", {noBytes(ItemKind::Text)}, "(null)");
        row("object", "%@", {object("<Thing: 0x1>")}, "<Thing: 0x1>");
        row("no object", "%@", {noBytes(ItemKind::Object)}, "(null)");
        row("no text with a precision of zero", "[%.0s] [%.*@]",
            {noBytes(ItemKind::Text), count(0), noBytes(ItemKind::Object)}, "[] []");
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
        row("width of a text, in bytes", "[%5s] [%-5s] [%8s]",
            {text("ab"), text("ab"), text("Grüße")}, "[   ab] [ab   ] [ Grüße]");
        row("width and pointer as seen", "%25s:%-5d (%p)",
            {text("ACMP4AACBaseDecoder.cpp"), number<i32>(310), number<u64>(0xabc180e00)},
            "  ACMP4AACBaseDecoder.cpp:310   (0xabc180e00)");
        row("precision cuts a text", "%.3s", {text("abcdef")}, "abc");
        row("precision of zero does not", "%.0s", {text("abcdef")}, "abcdef");
        row("precision does not cut an object", "%.2@", {object("abcdef")}, "abcdef");
        row("bytes", "%.4P %.*P",
            {count(4), bytes(Bytes{0xca, 0xfe, 0x00, 0x26}), count(0), bytes(Bytes{})},
            "'CA FE 00 26' ''");
        row("width of bytes", "[%8.2P] [%-8.2P]",
            {count(2), bytes(Bytes{0xab, 0xcd}), count(2), bytes(Bytes{0xab, 0xcd})},
            "[ 'AB CD'] ['AB CD' ]");
        row("several values in their places", "%s %@ %s",
            {text("one"), object("two"), text("three")}, "one two three");
    }

    void texts() { compareMessage(); }

    void storedInPart_data()
    {
        addColumns();
        const auto cutText = [](Bytes value) {
            return cut(item(ItemKind::Text, Privacy::Public, std::move(value)));
        };
        row("cut text", "%s|%@", {cutText({'a', 'b'}), cut(object("cd", Privacy::None))},
            "ab<…>|cd<…>");
        row("cut within a character", "%s %s %s",
            {cutText({'a', 0xc3}), cutText({'b', 0xf0, 0x9f, 0x98}), cutText({0xe2, 0x82})},
            "a<…> b<…> <…>");
        row("cut after a character, whole or broken", "%s %s",
            {cutText({0xe2, 0x82, 0xac}), cutText({0xe2, 'x'})}, "€<…> \xEF\xBF\xBDx<…>");
        row("nothing left", "%s %@ %.0s",
            {cutText({}), cut(noBytes(ItemKind::Object)), cutText({})}, "<…> <…> <…>");
        row("cut wide text", "%S",
            {cut(item(ItemKind::WideText, Privacy::Public, {'w', 0, 0, 0, 'x', 0}))}, "w<…>");
        row("precision that cuts further", "%.2s %.3s %.4@",
            {cutText({'a', 'b', 'c'}), cutText({'a', 'b', 'c'}), cut(object("abcdef"))},
            "ab abc<…> abcdef<…>");
        row("width of a cut text", "[%9s]", {cutText({'a', 'b'})}, "[  ab<…>]");
        row("cut bytes", "%.*P %.*P",
            {count(9), cut(bytes(counted(2))), count(9), cut(bytes(Bytes{}))}, "'00 01…' '…'");
        row("cut path", "%{location:escape_only}s", {cutText({'/', 'a', 0xc3})}, "\"\\/a<…>\"");
        // The values area of these holds "abc" and its zero byte.
        row("range that begins outside", "%s %{public}@",
            {text("abc"), rawItem(0x42, {5, 0, 0, 0})},
            "abc <decode: bad range for [%{public}@] got [offs:5 len:0 within:4]>");
        row("range far outside", "%s", {rawItem(0x22, {0xf0, 0xff, 0xff, 0x7f})},
            "<decode: bad range for [%s] got [offs:65520 len:32767 within:0]>");
        row("range that ends outside, marked as cut", "%s %5s",
            {text("abc"), rawItem(0x22, {1, 0, 4, 0x80})},
            "abc <decode: bad range for [%5s] got [offs:1 len:4 within:4]>");
        row("range at the very end", "%s %s", {text("abc"), rawItem(0x22, {4, 0, 0, 0})},
            "abc (null)");
        row("hash outside", "%s", {rawItem(0xf2, {0, 0, 16, 0})},
            "<decode: bad range for [%s] got [offs:0 len:16 within:0]>");
    }

    void storedInPart() { compareMessage(); }

    void mismatches_data()
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

    void mismatches() { compareMessage(); }

    void privacy_data()
    {
        addColumns();
        const Item cutAfterTwo = rawItem(0x21, {0, 0, 2, 0x80});
        const Item cutNumber = rawItem(0x01, {0, 0, 0, 0x80});
        const Item outside = rawItem(0x24, {0xff, 0, 1, 0});
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
            {count(2), bytes(Bytes{0xab, 0xcd}, Privacy::Private)}, "'AB CD'");
        row("private wide text that was kept", "%S", {wideText(U"ß", Privacy::Private)}, "ß");
        row("private error number that was kept", "%m", {errorNumber(2, Privacy::Private)},
            "No such file or directory");
        row("private, marked as cut", "%s %s %d",
            {cutAfterTwo, text("kept", Privacy::Private), cutNumber}, "ke<…> kept <private>");
        row("public beside private", "%s %s", {text("shown"), redacted(ItemKind::Text)},
            "shown <private>");
        row("width does not apply", "[%20s]", {redacted(ItemKind::Text)}, "[<private>]");
        row("sensitive, not kept", "%s", {redacted(ItemKind::Text, Privacy::Sensitive)},
            "<private>");
        row("sensitive, kept", "%s", {text("secret", Privacy::Sensitive)}, "<private>");
        row("sensitive by its bit alone", "%s %s", {even, outside}, "<private> <private>");
        row("sensitive number", "%d", {rawItem(0x05, {0, 0, 0, 0})}, "<private>");
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
        row("mask on no bytes", "%{mask.hash}.4P", {noBytes(ItemKind::Data)},
            "<mask.hash: (null)>");
        row("mask on a value of which nothing is left", "%{mask.hash}s",
            {cut(noBytes(ItemKind::Text))}, "<…>");
        row("mask on a value that was kept", "%{mask.hash}s", {maskName("hash"), text("abc")},
            "abc");
    }

    void privacy() { compareMessage(); }
};

TESSEL_TEST(TestStoreMessages)
#include "tst_storemessages.moc"
