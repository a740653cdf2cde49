// SPDX-License-Identifier: MIT
#include "platform/logstore/message/nametables.h"

#include "platform/logstore/message/textoutput.h"

#include <algorithm>
#include <array>

namespace logstore {

namespace {

struct Named
{
    std::uint32_t number;
    std::string_view name;
};

template <std::size_t count>
std::string_view find(const std::array<Named, count>& sortedTable, std::uint64_t number)
{
    const auto found = std::lower_bound(
        sortedTable.begin(), sortedTable.end(), number,
        [](const Named& entry, std::uint64_t value) { return entry.number < value; });
    return found != sortedTable.end() && found->number == number ? found->name : std::string_view();
}

constexpr std::array<std::string_view, 107> errorTexts{{
    "Undefined error: 0",
    "Operation not permitted",
    "No such file or directory",
    "No such process",
    "Interrupted system call",
    "Input/output error",
    "Device not configured",
    "Argument list too long",
    "Exec format error",
    "Bad file descriptor",
    "No child processes",
    "Resource deadlock avoided",
    "Cannot allocate memory",
    "Permission denied",
    "Bad address",
    "Block device required",
    "Resource busy",
    "File exists",
    "Cross-device link",
    "Operation not supported by device",
    "Not a directory",
    "Is a directory",
    "Invalid argument",
    "Too many open files in system",
    "Too many open files",
    "Inappropriate ioctl for device",
    "Text file busy",
    "File too large",
    "No space left on device",
    "Illegal seek",
    "Read-only file system",
    "Too many links",
    "Broken pipe",
    "Numerical argument out of domain",
    "Result too large",
    "Resource temporarily unavailable",
    "Operation now in progress",
    "Operation already in progress",
    "Socket operation on non-socket",
    "Destination address required",
    "Message too long",
    "Protocol wrong type for socket",
    "Protocol not available",
    "Protocol not supported",
    "Socket type not supported",
    "Operation not supported",
    "Protocol family not supported",
    "Address family not supported by protocol family",
    "Address already in use",
    "Can't assign requested address",
    "Network is down",
    "Network is unreachable",
    "Network dropped connection on reset",
    "Software caused connection abort",
    "Connection reset by peer",
    "No buffer space available",
    "Socket is already connected",
    "Socket is not connected",
    "Can't send after socket shutdown",
    "Too many references: can't splice",
    "Operation timed out",
    "Connection refused",
    "Too many levels of symbolic links",
    "File name too long",
    "Host is down",
    "No route to host",
    "Directory not empty",
    "Too many processes",
    "Too many users",
    "Disc quota exceeded",
    "Stale NFS file handle",
    "Too many levels of remote in path",
    "RPC struct is bad",
    "RPC version wrong",
    "RPC prog. not avail",
    "Program version wrong",
    "Bad procedure for program",
    "No locks available",
    "Function not implemented",
    "Inappropriate file type or format",
    "Authentication error",
    "Need authenticator",
    "Device power is off",
    "Device error",
    "Value too large to be stored in data type",
    "Bad executable (or shared library)",
    "Bad CPU type in executable",
    "Shared library version mismatch",
    "Malformed Mach-o file",
    "Operation canceled",
    "Identifier removed",
    "No message of desired type",
    "Illegal byte sequence",
    "Attribute not found",
    "Bad message",
    "EMULTIHOP (Reserved)",
    "No message available on STREAM",
    "ENOLINK (Reserved)",
    "No STR resources",
    "Not a STREAM",
    "Protocol error",
    "STREAM ioctl timeout",
    "Operation not supported on socket",
    "Policy not found",
    "State not recoverable",
    "Previous owner died",
    "Interface output queue is full",
}};

struct SignalNames
{
    std::string_view name;
    std::string_view text;
};

// From signal 1 on.
constexpr std::array<SignalNames, 31> signals{{
    {"hup", "Hangup"},
    {"int", "Interrupt"},
    {"quit", "Quit"},
    {"ill", "Illegal instruction"},
    {"trap", "Trace/BPT trap"},
    {"abrt", "Abort trap"},
    {"emt", "EMT trap"},
    {"fpe", "Floating point exception"},
    {"kill", "Killed"},
    {"bus", "Bus error"},
    {"segv", "Segmentation fault"},
    {"sys", "Bad system call"},
    {"pipe", "Broken pipe"},
    {"alrm", "Alarm clock"},
    {"term", "Terminated"},
    {"urg", "Urgent I/O condition"},
    {"stop", "Suspended (signal)"},
    {"tstp", "Suspended"},
    {"cont", "Continued"},
    {"chld", "Child exited"},
    {"ttin", "Stopped (tty input)"},
    {"ttou", "Stopped (tty output)"},
    {"io", "I/O possible"},
    {"xcpu", "Cputime limit exceeded"},
    {"xfsz", "Filesize limit exceeded"},
    {"vtalrm", "Virtual timer expired"},
    {"prof", "Profiling timer expired"},
    {"winch", "Window size changes"},
    {"info", "Information request"},
    {"usr1", "User defined signal 1"},
    {"usr2", "User defined signal 2"},
}};

constexpr std::array<Named, 24> ioMessages{{
    {0xe0000010, "ServiceIsTerminated"},     {0xe0000020, "ServiceIsSuspended"},
    {0xe0000030, "ServiceIsResumed"},        {0xe0000100, "ServiceIsRequestingClose"},
    {0xe0000101, "ServiceIsAttemptingOpen"}, {0xe0000110, "ServiceWasClosed"},
    {0xe0000120, "ServiceBusyStateChange"},  {0xe0000128, "ConsoleSecurityChange"},
    {0xe0000130, "ServicePropertyChange"},   {0xe0000200, "CanDevicePowerOff"},
    {0xe0000210, "DeviceWillPowerOff"},      {0xe0000220, "DeviceWillNotPowerOff"},
    {0xe0000230, "DeviceHasPoweredOn"},      {0xe0000250, "SystemWillPowerOff"},
    {0xe0000255, "SystemPagingOff"},         {0xe0000270, "CanSystemSleep"},
    {0xe0000280, "SystemWillSleep"},         {0xe0000290, "SystemWillNotSleep"},
    {0xe0000300, "SystemHasPoweredOn"},      {0xe0000310, "SystemWillRestart"},
    {0xe0000320, "SystemWillPowerOn"},       {0xe0000330, "CopyClientID"},
    {0xe0000340, "SystemCapabilityChange"},  {0xe0000350, "DeviceSignaledWakeup"},
}};

constexpr std::array<Named, 32> sqliteResults{{
    {0, "SQLITE_OK"},        {1, "SQLITE_ERROR"},         {2, "SQLITE_INTERNAL"},
    {3, "SQLITE_PERM"},      {4, "SQLITE_ABORT"},         {5, "SQLITE_BUSY"},
    {6, "SQLITE_LOCKED"},    {7, "SQLITE_NOMEM"},         {8, "SQLITE_READONLY"},
    {9, "SQLITE_INTERRUPT"}, {10, "SQLITE_IOERR"},        {11, "SQLITE_CORRUPT"},
    {12, "SQLITE_NOTFOUND"}, {13, "SQLITE_FULL"},         {14, "SQLITE_CANTOPEN"},
    {15, "SQLITE_PROTOCOL"}, {16, "SQLITE_EMPTY"},        {17, "SQLITE_SCHEMA"},
    {18, "SQLITE_TOOBIG"},   {19, "SQLITE_CONSTRAINT"},   {20, "SQLITE_MISMATCH"},
    {21, "SQLITE_MISUSE"},   {22, "SQLITE_NOLFS"},        {23, "SQLITE_AUTH"},
    {24, "SQLITE_FORMAT"},   {25, "SQLITE_RANGE"},        {26, "SQLITE_NOTADB"},
    {27, "SQLITE_NOTICE"},   {28, "SQLITE_WARNING"},      {100, "SQLITE_ROW"},
    {101, "SQLITE_DONE"},    {266, "SQLITE IO ERR READ"},
}};

constexpr std::array<Named, 49> recordTypes{{
    {1, "A"},           {2, "NS"},      {5, "CNAME"},   {6, "SOA"},       {10, "NULL"},
    {12, "PTR"},        {13, "HINFO"},  {15, "MX"},     {16, "TXT"},      {17, "RP"},
    {18, "AFSDB"},      {24, "SIG"},    {25, "KEY"},    {28, "AAAA"},     {29, "LOC"},
    {33, "SRV"},        {35, "NAPTR"},  {36, "KX"},     {37, "CERT"},     {39, "DNAME"},
    {42, "APL"},        {43, "DS"},     {44, "SSHFP"},  {45, "IPSECKEY"}, {46, "RRSIG"},
    {47, "NSEC"},       {48, "DNSKEY"}, {49, "DHCID"},  {50, "NSEC3"},    {51, "NSEC3PARAM"},
    {52, "TLSA"},       {53, "SMIMEA"}, {55, "HIP"},    {59, "CDS"},      {60, "CDNSKEY"},
    {61, "OPENPGPKEY"}, {62, "CSYNC"},  {63, "ZONEMD"}, {64, "SVCB"},     {65, "HTTPS"},
    {108, "EUI48"},     {109, "EUI64"}, {249, "TKEY"},  {250, "TSIG"},    {255, "ANY"},
    {256, "URI"},       {257, "CAA"},   {32768, "TA"},  {32769, "DLV"},
}};

constexpr std::array<Named, 64> directoryErrors{{
    {0, "ODNoError"},
    {2, "Not Found"},
    {1000, "ODErrorSessionLocalOnlyDaemonInUse"},
    {1001, "ODErrorSessionNormalDaemonInUse"},
    {1002, "ODErrorSessionDaemonNotRunning"},
    {1003, "ODErrorSessionDaemonRefused"},
    {1100, "ODErrorSessionProxyCommunicationError"},
    {1101, "ODErrorSessionProxyVersionMismatch"},
    {1102, "ODErrorSessionProxyIPUnreachable"},
    {1103, "ODErrorSessionProxyUnknownHost"},
    {2000, "ODErrorNodeUnknownName"},
    {2001, "ODErrorNodeUnknownType"},
    {2002, "ODErrorNodeDisabled"},
    {2100, "ODErrorNodeConnectionFailed"},
    {2200, "ODErrorNodeUnknownHost"},
    {3000, "ODErrorQuerySynchronize"},
    {3100, "ODErrorQueryInvalidMatchType"},
    {3101, "ODErrorQueryUnsupportedMatchType"},
    {3102, "ODErrorQueryTimeout"},
    {4000, "ODErrorRecordReadOnlyNode"},
    {4001, "ODErrorRecordPermissionError"},
    {4100, "ODErrorRecordParameterError"},
    {4101, "ODErrorRecordInvalidType"},
    {4102, "ODErrorRecordAlreadyExists"},
    {4103, "ODErrorRecordTypeDisabled"},
    {4104, "ODErrorRecordNoLongerExists"},
    {4200, "ODErrorRecordAttributeUnknownType"},
    {4201, "ODErrorRecordAttributeNotFound"},
    {4202, "ODErrorRecordAttributeValueSchemaError"},
    {4203, "ODErrorRecordAttributeValueNotFound"},
    {5000, "ODErrorCredentialsInvalid"},
    {5001, "ODErrorCredentialsInvalidComputer"},
    {5100, "ODErrorCredentialsMethodNotSupported"},
    {5101, "ODErrorCredentialsNotAuthorized"},
    {5102, "ODErrorCredentialsParameterError"},
    {5103, "ODErrorCredentialsOperationFailed"},
    {5200, "ODErrorCredentialsServerUnreachable"},
    {5201, "ODErrorCredentialsServerNotFound"},
    {5202, "ODErrorCredentialsServerError"},
    {5203, "ODErrorCredentialsServerTimeout"},
    {5204, "ODErrorCredentialsContactPrimary"},
    {5205, "ODErrorCredentialsServerCommunicationError"},
    {5300, "ODErrorCredentialsAccountNotFound"},
    {5301, "ODErrorCredentialsAccountDisabled"},
    {5302, "ODErrorCredentialsAccountExpired"},
    {5303, "ODErrorCredentialsAccountInactive"},
    {5304, "ODErrorCredentialsAccountTemporarilyLocked"},
    {5305, "ODErrorCredentialsAccountLocked"},
    {5400, "ODErrorCredentialsPasswordExpired"},
    {5401, "ODErrorCredentialsPasswordChangeRequired"},
    {5402, "ODErrorCredentialsPasswordQualityFailed"},
    {5403, "ODErrorCredentialsPasswordTooShort"},
    {5404, "ODErrorCredentialsPasswordTooLong"},
    {5405, "ODErrorCredentialsPasswordNeedsLetter"},
    {5406, "ODErrorCredentialsPasswordNeedsDigit"},
    {5407, "ODErrorCredentialsPasswordChangeTooSoon"},
    {5408, "ODErrorCredentialsPasswordUnrecoverable"},
    {5500, "ODErrorCredentialsInvalidLogonHours"},
    {6000, "ODErrorPolicyUnsupported"},
    {6001, "ODErrorPolicyOutOfRange"},
    {10000, "ODErrorPluginOperationNotSupported"},
    {10001, "ODErrorPluginError"},
    {10002, "ODErrorDaemonError"},
    {10003, "ODErrorPluginOperationTimeout"},
}};

constexpr std::array<Named, 5> authorizations{{
    {0, "Not Determined"},
    {1, "Restricted"},
    {2, "Denied"},
    {3, "Authorized Always"},
    {4, "Authorized When In Use"},
}};

constexpr std::array<Named, 5> reachabilities{{
    {0, "Reachability Unavailable"},
    {1, "Reachability Small"},
    {2, "Reachability Large"},
    {56, "Reachability Unachievable"},
    {1000, "Reachability Unachievable"},
}};

constexpr std::array<Named, 13> subHarvesters{{
    {1, "Wifi"},
    {2, "Tracks"},
    {3, "Realtime"},
    {4, "App"},
    {5, "Pass"},
    {6, "Indoor"},
    {7, "Pressure"},
    {8, "Poi"},
    {9, "Trace"},
    {10, "Avenger"},
    {11, "Altimeter"},
    {12, "Ionosphere"},
    {13, "Unknown"},
}};

constexpr std::array<Named, 5> negativeReasons{{
    {1, "no-data"},
    {2, "nxdomain"},
    {3, "query-suppressed"},
    {4, "no-dns-service"},
    {5, "server error"},
}};

constexpr std::array<Named, 3> protocols{{
    {1, "UDP"},
    {2, "TCP"},
    {4, "HTTPS"},
}};

constexpr std::array<Named, 11> directoryIdTypes{{
    {0, "UID"},
    {1, "GID"},
    {3, "SID"},
    {4, "Username"},
    {5, "Groupname"},
    {6, "UUID"},
    {7, "GROUP NFS"},
    {8, "USER NFS"},
    {10, "GSS EXPORT NAME"},
    {11, "X509 DN"},
    {12, "KERBEROS"},
}};

} // namespace

void appendErrorText(std::string& out, std::int64_t number)
{
    if (number >= 0 && number < static_cast<std::int64_t>(errorTexts.size())) {
        out += errorTexts[static_cast<std::size_t>(number)];
        return;
    }
    out += "Unknown error: ";
    appendDecimal(out, number);
}

std::string_view signalName(std::uint64_t number)
{
    return number >= 1 && number <= signals.size() ? signals[number - 1].name : std::string_view();
}

std::string_view signalText(std::uint64_t number)
{
    return number >= 1 && number <= signals.size() ? signals[number - 1].text : std::string_view();
}

std::string_view tableName(NameTable table, std::uint64_t number)
{
    switch (table) {
    case NameTable::IoMessage: return find(ioMessages, number);
    case NameTable::SqliteResult: return find(sqliteResults, number);
    case NameTable::DnsRecordType: return find(recordTypes, number);
    case NameTable::DirectoryError: return find(directoryErrors, number);
    case NameTable::LocationAuthorization: return find(authorizations, number);
    case NameTable::LocationReachability: return find(reachabilities, number);
    case NameTable::LocationSubHarvester: return find(subHarvesters, number);
    case NameTable::DnsNegativeReason: return find(negativeReasons, number);
    case NameTable::DnsProtocol: return find(protocols, number);
    case NameTable::DirectoryIdType: return find(directoryIdTypes, number);
    }
    return {};
}

} // namespace logstore
