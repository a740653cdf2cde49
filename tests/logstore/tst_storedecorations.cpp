// SPDX-License-Identifier: MIT
#include "logstore/messagerows.h"
#include "support/testcase.h"

#include <cstring>
#include <ctime>

using namespace logstore::writer;

namespace {

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

/// How the words between the braces of a conversion change its argument.
class TestStoreDecorations : public TestCase
{
    Q_OBJECT

private Q_SLOTS:

    void decoratedNumbers_data()
    {
        addColumns();
        row("bool", "%{bool}d %{bool}d %{bool}x",
            {number<i32>(0), number<i32>(2), rawItem(0x02, {0, 0, 1})}, "false true true");
        row("BOOL", "%{BOOL}d %{BOOL}d", {number<std::int8_t>(0), number<std::int8_t>(1)},
            "NO YES");
        row("errno", "%{darwin.errno}d %{errno}m %{errno}d %{darwin.errno}d",
            {number<i32>(61), errorNumber(32), number<i32>(0), number<i32>(-1)},
            "[61: Connection refused] [32: Broken pipe] [0: Success] [-1: Unknown error: -1]");
        row("Mach errors of the kernel", "%{mach.errno}d %{mach.errno}x %{mach.errno}d",
            {number<u32>(0), number<u32>(56), number<u32>(0x3fff)},
            "[0: (os/kern) successful] [0x38: (os/kern) result not found] "
            "[0x3fff: unknown error code]");
        row("Mach errors of messages", "%{mach.errno}d %{mach.errno}d %{mach.errno}d",
            {number<u32>(0x10000015), number<u32>(0x10000016), number<u32>(0x10004010)},
            "[0x10000015: (ipc/send) out-of-line buffer too large] "
            "[0x10000016: unknown error code] [0x10004010: (ipc/rcv) DIPC transport error]");
        row("Mach errors of other subsystems", "%{mach.errno}d %{mach.errno}d",
            {number<u32>(0x4000), number<u32>(0x10008000)},
            "[0x4000: (null)] [0x10008000: (null)]");
        row("mode of a folder", "%{darwin.mode}d", {number<u32>(040755)}, "drwxr-xr-x");
        row("mode of a file", "%{darwin.mode}d", {number<u32>(0104711)}, "-rws--x--x");
        row("mode with the sticky bit", "%{darwin.mode}d", {number<u32>(0041776)}, "drwxrwxrwT");
        row("types of files", "%{darwin.mode}o %{darwin.mode}o %{darwin.mode}o %{darwin.mode}o",
            {number<u32>(0), number<u32>(0160000), number<u32>(0030000), number<u32>(0100000)},
            "---------- w--------- #--------- ----------");
        row("signal", "%{darwin.signal}d", {number<i32>(11)}, "[sigsegv: Segmentation fault]");
        row("unknown signals", "%{darwin.signal}d %{darwin.signal}d %{darwin.signal}d",
            {number<i32>(0), number<i32>(32), number<i32>(-1)},
            "[sigSignal 0: Signal 0] [32: Unknown signal] [-1: Unknown signal]");
        row("last year that fits 32 bits", "%{time_t}ld|%{time_t}ld",
            {number<std::int64_t>(67767976233532799), number<std::int64_t>(67767976233532800)},
            "2147483647-12-31 23:59:59+0000|");
        row("time that is none", "[%{time_t}ld]", {number<std::int64_t>(INT64_MAX)}, "[]");
        row("time", "%{time_t}d %{time_t}u", {number<std::int64_t>(1452627697), number<i32>(-1)},
            "2016-01-12 19:41:37+0000 1969-12-31 23:59:59+0000");
        row("year before Christ", "%{time_t}ld", {number<std::int64_t>(-64'344'540'800)},
            "-069-01-02 12:26:40+0000");
        row("bytes", "%{bytes}d %{bytes}d %{bytes}d %{bytes}d",
            {number<i32>(999), number<i32>(4720), number<i32>(1500), number<i32>(1000)},
            "999 B 4.72 kB 1.5 kB 1 kB");
        row("digits that are left out", "%{bytes}d %{bytes}d %{iec-bytes}d %{iec-bytes}d",
            {number<i32>(10'049), number<i32>(123'900), number<i32>(1000), number<i32>(2'700'123)},
            "10.0 kB 123 kB 0.98 KiB 2.57 MiB");
        row("numbers below zero", "%{bytes}d %{bytes}u %{iec-bytes}lld %{iec-bytes}c",
            {number<i32>(-1), number<i32>(-1), number<std::int64_t>(-1), number<std::int8_t>(-1)},
            "18.4 EB 4.29 GB 16 EiB 16 EiB");
        row("bytes just below a step", "%{bytes}d %{bytes}d %{iec-bytes}d",
            {number<i32>(999'499), number<i32>(999'999), number<i32>(1023 * 1024)},
            "999 kB 1000 kB 1 MiB");
        row("bytes in powers of two", "%{iec-bytes}d", {number<i32>(4720)}, "4.61 KiB");
        row("bits", "%{bitrate}d %{bitrate}d %{bitrate}llu",
            {number<i32>(999), number<i32>(123'000), number<u64>(u64{1} << 50)},
            "999 bps 123 kbps 1125 Tbps");
        row("bits in powers of two", "%{iec-bitrate}d", {number<i32>(118 * 1024)}, "118 Kibps");
        row("authorisation",
            "%{location:CLClientAuthorizationStatus}d %{location:CLClientAuthorizationStatus}d",
            {number<i32>(0), number<i32>(4)}, "\"Not Determined\" \"Authorized When In Use\"");
        row("unknown authorisation", "%{location:CLClientAuthorizationStatus}d", {number<i32>(9)},
            "<decode: unknown value: 9>");
        row("reachability", "%{location:CLDaemonStatus_Type::Reachability}d", {number<i32>(1000)},
            "\"Reachability Unachievable\"");
        row("harvester",
            "%{location:CLSubHarvesterIdentifier}d %{location:CLSubHarvesterIdentifier}d",
            {number<i32>(0), number<i32>(14)}, "\"CellLegacy\" \"Unknown\"");
        row("I/O message", "%{location:IOMessage}d", {number<u32>(0xe0000280)},
            "\"SystemWillSleep\"");
        row("SQLite result", "%{location:SqliteResult}d %{location:SqliteResult}d",
            {number<i32>(5), number<u64>(101)}, "\"SQLITE_BUSY\" \"SQLITE_DONE\"");
        row("yes or no", "%{mdns:yesno}d %{mdns:yesno}d", {number<i32>(0), number<i32>(1)},
            "no yes");
        row("acceptable", "%{mdns:acceptable}d %{mdns:acceptable}d",
            {number<i32>(0), number<i32>(1)}, "unacceptable acceptable");
        row("added or removed", "%{mdns:addrmv}d %{mdns:addrmv}d", {number<i32>(0), number<i32>(1)},
            "rmv add");
        row("resource record", "%{mdns:rrtype}d %{mdns:rrtype}d",
            {number<i32>(28), number<i32>(65)}, "AAAA HTTPS");
        row("unknown resource record", "%{mdns:rrtype}d", {number<i32>(4711)},
            "<decode: unknown value: 4711>");
        row("negative reason", "%{mdns:nreason}d", {number<i32>(2)}, "nxdomain");
        row("protocol", "%{mdns:protocol}d", {number<i32>(4)}, "HTTPS");
        row("options", "%{mdns:gaiopts}d %{mdns:gaiopts}d", {number<i32>(0x2c), number<i32>(0x40)},
            "0x2C {in-app-browser, use-failover, use-cache-only} 0x40 {}");
        row("DNS counts", "%{mdns:dns.counts}d", {number<u64>(0x0001'0002'0000'0000)}, "1/2/0/0");
        row("DNS identifier and flags", "%{mdns:dns.idflags}d", {number<u32>(0x4bbb'0100)},
            "id: 0x4BBB (19387), flags: 0x0100 (Q/Query, RD, NoError)");
        row("directory identifier type", "%{odtypes:mbridtype}d", {number<i32>(4)}, "Username");
        row("directory error", "%{odtypes:ODError}d", {number<i32>(2200)},
            "ODErrorNodeUnknownHost");
        row("sizes that do not fit", "%{errno}ld %{time_t}hd %{bytes}d %{mdns:yesno}d",
            {number<std::int64_t>(5), number<std::int16_t>(5), rawItem(0x00, Bytes(16)),
             rawItem(0x02, {1, 2, 3})},
            "<decode: mismatch for [%{errno}ld] got [SCALAR sz:8]> "
            "<decode: mismatch for [%{time_t}hd] got [SCALAR sz:2]> "
            "<decode: mismatch for [%{bytes}d] got [SCALAR sz:16]> <decode: unsupported value>");
        row("telemetry in single precision", "%{signpost.telemetry:x}f", {number(0.1F)},
            "__##__signpost.telemetry#____#x#_##_#0.1000000014901161##__##");
        row("telemetry of times",
            "%{signpost.description:begin_time}llu %{signpost.description:end_time}lld",
            {number<u64>(UINT64_MAX), number<std::int64_t>(-1)},
            "__##__signpost.description#____#begin_time#_##_#18446744073709551615##__## "
            "__##__signpost.description#____#end_time#_##_#18446744073709551615##__##");
        row("description with a precision", "%{signpost.description:a}.*s",
            {count(3), text("abcdef")}, "__##__signpost.description#____#a#_##_#abc##__##");
        row("telemetry", "%{signpost.telemetry:number1}f", {number(5.88671875)},
            "__##__signpost.telemetry#____#number1#_##_#5.88671875##__##");
        row("description", "%{signpost.description:attribute}@", {object("value")},
            "__##__signpost.description#____#attribute#_##_#value##__##");
        row("descriptions beside another decoration",
            "%{errno,signpost.description:a,public}d|%{signpost.telemetry:b}s|"
            "%{signpost.telemetry:c,bytes}f",
            {number<i32>(2), noBytes(ItemKind::Text), number(1.5)},
            "__##__signpost.description#____#a#_##_#[2: No such file or directory]##__##|"
            "__##__signpost.telemetry#____#b#_##_###__##|"
            "__##__signpost.telemetry#____#c#_##_#<decode: mismatch for "
            "[%{signpost.telemetry:c,bytes}f] got [SCALAR sz:8]>##__##");
    }

    void decoratedNumbers() { compareMessage(); }

    /// Each row is named after its zone, as TZ has it: west is positive.
    void timesOfOtherZones_data()
    {
        addColumns();
        ByteBuilder b;
        const Items winter{number<std::int64_t>(1452627697)};
        row("IST-5:30", "%{time_t}ld", winter, "2016-01-13 01:11:37+0530");
        row("LMT3:30:50", "%{time_t}ld", winter, "2016-01-12 16:10:47-0330");
        row("LMT0:00:50", "%{time_t}ld", winter, "2016-01-12 19:40:47-0000");
        row("CET-1CEST,M3.5.0,M10.5.0/3", "%{timeval}.*P",
            {count(8), built(b.i32(1467000000).i32(5))}, "2016-06-27 06:00:00.000005+0200");
    }

    void timesOfOtherZones()
    {
        const QByteArray before = qgetenv("TZ");
        qputenv("TZ", QTest::currentDataTag());
        tzset();
        compareMessage();
        qputenv("TZ", before);
        tzset();
    }

    void decoratedBytes_data()
    {
        addColumns();
        ByteBuilder b;
        const Bytes uuid{0x10, 0x74, 0x2e, 0x39, 0x06, 0x57, 0x41, 0xf8,
                         0xab, 0x99, 0x87, 0x8c, 0x5e, 0xc2, 0xdc, 0xaa};
        row("identifier", "%{uuid_t}.16P", {count(16), bytes(uuid)},
            "10742E39-0657-41F8-AB99-878C5EC2DCAA");
        row("identifier of a wrong size", "%{uuid}.16P", {count(16), bytes(counted(15))},
            "<decode: mismatch for [%{uuid}.16P] got [DATA sz:15]>");
        row("time of 16 bytes", "%{timeval}.*P",
            {count(16), built(b.i64(1452627697).i32(774236).i32(-1))},
            "2016-01-12 19:41:37.774236+0000");
        row("time of 12 bytes", "%{timeval}.*P", {count(12), built(b.i64(1452627697).i32(774236))},
            "2016-01-12 19:41:37.774236+0000");
        row("time of 8 bytes", "%{timeval}.*P", {count(8), built(b.i32(1452627697).i32(774236))},
            "2016-01-12 19:41:37.774236+0000");
        row("time to the nanosecond", "%{timespec}.*P",
            {count(16), built(b.i64(1452627697).i64(238238282))},
            "2016-01-12 19:41:37.238238282+0000");
        row("time with a fraction below zero", "%{timeval}.*P", {count(8), built(b.i32(1).i32(-1))},
            "<decode: mismatch for [%{timeval}.*P] got [DATA sz:8]>");
        row("time that is none, with a fraction", "[%{timespec}.*P]",
            {count(16), built(b.i64(INT64_MAX).i64(5))}, "[]");
        row("address as a number", "%{network:in_addr}d %{in_addr}hd %{in_addr}hhd %{in_addr}u",
            {number<u32>(0x0100007f), number<std::int16_t>(0x102), number<std::int8_t>(-1),
             number<std::int8_t>(-1)},
            "127.0.0.1 2.1.0.0 255.255.255.255 255.0.0.0");
        row("address as bytes", "%{in_addr}.4P", {count(4), bytes(Bytes{192, 0, 2, 1})},
            "192.0.2.1");
        row("long address", "%{network:in6_addr}.16P",
            {count(16), bytes(Bytes{0xfe, 0x80, 0, 0, 0, 0, 0, 0, 0, 0x0f, 0x86, 0xff, 0xfe, 0xe9,
                                    0x5c, 0x16})},
            "fe80::f:86ff:fee9:5c16");
        row("long address of zeros", "%{in6_addr}.16P", {count(16), bytes(zeros(16))}, "::");
        row("long address with a short end", "%{in6_addr}.16P",
            {count(16), bytes(zeros(13, {1, 0, 2}))}, "::1:2");
        row("long address with one group of zero", "%{in6_addr}.16P",
            {count(16), built(b.zeros(1).u8(1).zeros(2).bytes(Bytes(12, 0x11)))},
            "1:0:1111:1111:1111:1111:1111:1111");
        row("long address with two runs of zeros", "%{in6_addr}.16P",
            {count(16), built(b.u8(1).zeros(5).u8(2).zeros(8).u8(3))}, "100:0:0:200::3");
        row("mapped address", "%{in6_addr}.16P",
            {count(16), bytes(zeros(10, {0xff, 0xff, 1, 2, 3, 4}))}, "::ffff:1.2.3.4");
        const auto socket = [](const char* name, ByteBuilder& bytesOfIt, const char* expected) {
            row(name, "%{sockaddr}.*P", {count(0), built(bytesOfIt)}, expected);
        };
        constexpr auto unfit = "<decode: mismatch for [%{sockaddr}.*P] got [DATA sz:16]>";
        const Bytes home{127, 0, 0, 1};
        socket("socket with a port", b.u8(16).u8(2).u8(0x1f).u8(0x90).bytes(home).zeros(8),
               "127.0.0.1:8080");
        socket("socket without port", b.u8(16).u8(2).zeros(2).bytes(home).zeros(9), "127.0.0.1");
        socket("socket that is too short", b.u8(15).u8(2).zeros(14), unfit);
        socket("socket without room for a family", b.u8(1).u8(1).zeros(14), unfit);
        socket("socket longer than its bytes", b.u8(17).u8(2).zeros(14), unfit);
        socket("long socket", b.u8(28).u8(30).zeros(21).u8(1).zeros(4), "::1");
        socket("long socket with a port", b.u8(28).u8(30).u8(1).u8(0xbb).zeros(19).u8(1).zeros(4),
               "::1.443");
        socket("long socket of the loopback interface",
               b.u8(28).u8(30).u8(1).u8(0xbb).zeros(19).u8(1).u32(1), "::1%lo0.443");
        socket("long socket of another interface", b.u8(28).u8(30).zeros(21).u8(1).u32(12),
               "::1%12");
        socket("long socket that is too short", b.u8(16).u8(30).zeros(14), unfit);
        socket("local socket", b.u8(9).u8(1).text("/run/x").u8(0).text("..."),
               "AF_UNIX:\"/run/x\"");
        socket("local socket, ended by its length", b.u8(6).u8(1).text("/run/x"),
               "AF_UNIX:\"/run\"");
        const auto link = [&b](std::uint8_t name, std::uint8_t address) -> ByteBuilder& {
            b.u8(16).u8(18).u16(4).u8(6).u8(name).u8(address).u8(0);
            return b.text(std::string_view("en0").substr(0, name)).bytes(counted(address));
        };
        socket("interface with an address", link(3, 5), "0:1:2:3:4%en0");
        socket("interface without name", link(0, 8), "0:1:2:3:4:5:6:7%4");
        socket("interface without address", link(3, 0).zeros(5), "en0");
        socket("interface with neither", link(0, 0).zeros(8), unfit);
        socket("interface longer than its socket", link(3, 6),
               "<decode: mismatch for [%{sockaddr}.*P] got [DATA sz:17]>");
        socket("socket of an unknown family", b.u8(16).u8(17).zeros(14), unfit);
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
        const auto member = [&b](const char* name, std::uint8_t type, const char* expected) {
            const bool byNumber = (type & 15) == 3;
            b.u8(type);
            byNumber ? b.i32(-2) : b.cstr("ada");
            row(name, "%{odtypes:mbr_details}.*P", {count(20), built(b.cstr("/Local/Default"))},
                expected);
        };
        member("user by number", 0x23, "user: -2@/Local/Default");
        member("user by number, extended", 0xa3, "user: -2@/Local/Default");
        member("user by name", 0x24, "user: ada@/Local/Default");
        member("user by name, extended", 0xa4, "user: ada@/Local/Default");
        member("user by name, extended, of type 0", 0xa0, "user: ada@/Local/Default");
        member("group by number", 0xc3, "group: -2@/Local/Default");
        member("group by name", 0x44, "group: ada@/Local/Default");
        member("member of an unknown type", 0x99, "<decode: unknown value: 153>");
        row("security identifier", "%{odtypes:nt_sid_t}.*P",
            {count(28), built(b.u8(1).u8(5).zeros(5).u8(5).u32(21).u32(1).u32(2).u32(3).u32(500))},
            "S-1-5-21-1-2-3-500");
        row("path in quotes", "%{location:escape_only}s", {text("/a/b")}, "\"\\/a\\/b\"");
    }

    void decoratedBytes() { compareMessage(); }

    void locationStates_data()
    {
        addColumns();
        ByteBuilder b;
        const auto real = [](double value) {
            std::int64_t bits = 0;
            std::memcpy(&bits, &value, sizeof bits);
            return bits;
        };
        constexpr auto client = "%{location:_CLClientManagerStateTrackerState}.*P";
        row("location client state", client, {count(8), built(b.u32(1).u32(0))},
            R"({"locationRestricted":false,"locationServicesEnabledStatus":1})");
        row("location client state, restricted", client, {count(8), built(b.u32(2).u32(0x100))},
            R"({"locationRestricted":true,"locationServicesEnabledStatus":2})");
        row("location client state of a wrong size", client, {count(9), bytes(counted(9))},
            "<decode: unsupported value>");
        row("location daemon state", "%{location:_CLDaemonStatusStateTrackerState}.*P",
            {count(36), built(b.i64(real(0.5))
                                  .u8(1)
                                  .u8(0)
                                  .zeros(2)
                                  .i32(2)
                                  .u8(1)
                                  .zeros(7)
                                  .i32(56)
                                  .i32(-1)
                                  .u8(1)
                                  .u8(0)
                                  .u8(0)
                                  .u8(1))},
            R"({"thermalLevel":-1,"reachability":"56","airplaneMode":true,)"
            R"("batteryData":{"wasConnected":true,"charged":true,"level":0.5,"connected":false,)"
            R"("chargerType":"kChargerTypeUsb"},"restrictedMode":true,"batterySaverModeEnabled":false})");
        // Each flag is set in one of the two states.
        const auto manager = [&](std::uint8_t even, std::uint8_t odd) {
            b.i64(real(-1)).i64(real(100)).u8(even).u8(odd).u8(even).u8(odd).u8(even).zeros(3);
            b.i64(real(1.5)).u8(even).u8(odd).u8(even).u8(odd).i32(4).u8(even).zeros(7);
            b.i64(3).i32(2).u8(even).u8(odd).u8(even).u8(odd);
        };
        constexpr auto state = "%{location:_CLLocationManagerStateTrackerState}.*P";
        manager(1, 0);
        row("location manager state", state, {count(64), built(b)},
            R"({"previousAuthorizationStatusValid":false,"paused":true,"requestingLocation":false,)"
            R"("desiredAccuracy":100,"allowsBackgroundLocationUpdates":false,)"
            R"("dynamicAccuracyReductionEnabled":true,"distanceFilter":-1,"allowsLocationPrompts":true,)"
            R"("activityType":3,"pausesLocationUpdatesAutomatially":2,)"
            R"("showsBackgroundLocationIndicator":true,"updatingLocation":true,"requestingRanging":true,)"
            R"("updatingHeading":true,"previousAuthorizationStatus":4,"allowsMapCorrection":false,)"
            R"("allowsAlteredAccessoryLoctions":false,"updatingRanging":false,"limitsPrecision":true,)"
            R"("headingFilter":1.5})");
        manager(0, 1);
        row("location manager state, long form", state,
            {count(72), built(b.u8(0).u8(1).u8(0).u8(1).u8(0).u8(1).u8(0).u8(1))},
            R"({"previousAuthorizationStatusValid":true,"paused":false,"requestingLocation":true,)"
            R"("updatingVehicleSpeed":true,"desiredAccuracy":100,"allowsBackgroundLocationUpdates":true,)"
            R"("dynamicAccuracyReductionEnabled":false,"distanceFilter":-1,)"
            R"("allowsLocationPrompts":false,"activityType":3,"groundAltitudeEnabled":false,)"
            R"("pausesLocationUpdatesAutomatially":2,"fusionInfoEnabled":true,)"
            R"("isAuthorizedForWidgetUpdates":true,"updatingVehicleHeading":false,)"
            R"("batchingLocation":false,"showsBackgroundLocationIndicator":false,)"
            R"("updatingLocation":false,"requestingRanging":false,"updatingHeading":false,)"
            R"("previousAuthorizationStatus":4,"allowsMapCorrection":true,"matchInfoEnabled":true,)"
            R"("allowsAlteredAccessoryLoctions":true,"updatingRanging":true,"limitsPrecision":false,)"
            R"("courtesyPromptNeeded":false,"headingFilter":1.5})");
    }

    void locationStates() { compareMessage(); }

    void decorationRules_data()
    {
        addColumns();
        row("names that have no effect", "%{public}s %{private, name=x}d %{xcode:size-in-bytes}d",
            {text("a"), number<i32>(1), number<i32>(2)}, "a 1 2");
        row("capitals matter", "%{PUBLIC}s %{Bool}d", {text("a"), number<i32>(1)}, "a 1");
        row("last that is known counts",
            "%{bool, BOOL}d %{BOOL,public,name=x,mask.x,auto,Name:y,,}d",
            {number<i32>(1), number<i32>(1)}, "YES YES");
        row("unknown one after a known one", "%{BOOL,foo}d %{foo,BOOL}d",
            {number<i32>(1), number<i32>(1)}, "1 YES");
        row("spaces before and after", "%{ public ,  BOOL}d %{BOOL }d",
            {number<i32>(1), number<i32>(1)}, "YES 1");
        row("prefix of the system's own", "%{builtin:bool}d", {number<i32>(1)}, "true");
        row("one of the system, on what it is not for", "%{bool}s %{bytes}f %{uuid_t}s %{in_addr}s",
            {text("abc"), number(1.5), text("abc"), number<i32>(1)},
            "<decode: mismatch for [%{bool}s] got [STRING sz:4]> "
            "<decode: mismatch for [%{bytes}f] got [SCALAR sz:8]> "
            "<decode: mismatch for [%{uuid_t}s] got [STRING sz:4]> "
            "<decode: mismatch for [%{in_addr}s] got [SCALAR sz:4]>");
        row("one of a framework, on what it is not for", "%{mdns:yesno}s", {text("abc")}, "abc");
        row("on a private value that was not kept", "%{private, uuid_t}.16P",
            {count(16), redacted(ItemKind::Data)}, "<private>");
        row("on a private value that was kept", "%{private, bool}d",
            {number<i32>(1, Privacy::Private)}, "true");
        row("width does not apply", "[%{bool}10d]", {number<i32>(1)}, "[true]");
        row("empty decorations", "%{}d", {number<i32>(3)}, "3");
    }

    void decorationRules() { compareMessage(); }
};

TESSEL_TEST(TestStoreDecorations)
#include "tst_storedecorations.moc"
