// SPDX-License-Identifier: MIT
#include "platform/logstore/message/nametables.h"

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

// Messages of I/O Kit services, kIOMessage… of IOMessage.h.
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

// Result codes of SQLite, from sqlite3.h.
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

// Types of DNS resource records, as IANA assigns them.
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

// Errors of Open Directory, from its header CFOpenDirectoryConstants.h.
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

// Whether an application may use locations: CLAuthorizationStatus of Core Location.
constexpr std::array<Named, 5> authorizations{{
    {0, "Not Determined"},
    {1, "Restricted"},
    {2, "Denied"},
    {3, "Authorized Always"},
    {4, "Authorized When In Use"},
}};

// How the location daemon can be reached: names that it shows in its own messages.
constexpr std::array<Named, 5> reachabilities{{
    {0, "Reachability Unavailable"},
    {1, "Reachability Small"},
    {2, "Reachability Large"},
    {56, "Reachability Unachievable"},
    {1000, "Reachability Unachievable"},
}};

// Parts of the location daemon that collect samples. Systems of 2026 write 14 for "Unknown"; older
// ones, which numbered from "Wifi" as 1, are shown by the same names.
constexpr std::array<Named, 15> subHarvesters{{
    {0, "CellLegacy"},
    {1, "Cell"},
    {2, "Wifi"},
    {3, "Tracks"},
    {4, "Realtime"},
    {5, "App"},
    {6, "Pass"},
    {7, "Indoor"},
    {8, "Pressure"},
    {9, "Poi"},
    {10, "Trace"},
    {11, "Avenger"},
    {12, "Altimeter"},
    {13, "Ionosphere"},
    {14, "Unknown"},
}};

// Why the resolver answers that a name does not exist.
constexpr std::array<Named, 5> negativeReasons{{
    {1, "no-data"},
    {2, "nxdomain"},
    {3, "query-suppressed"},
    {4, "no-dns-service"},
    {5, "server error"},
}};

// Transports of a DNS query.
constexpr std::array<Named, 3> protocols{{
    {1, "UDP"},
    {2, "TCP"},
    {4, "HTTPS"},
}};

// Kinds of identifiers of users and groups: ID_TYPE_… of membership.h.
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
