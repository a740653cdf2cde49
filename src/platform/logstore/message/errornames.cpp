// SPDX-License-Identifier: MIT
#include "platform/logstore/message/errornames.h"

#include "platform/logstore/message/textoutput.h"

#include <array>
#include <span>

namespace logstore {

namespace {

// Texts of errno values, from 0 on, as strerror of macOS gives them.
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

// Names and texts of signals, from 1 on, as sys_signame and sys_siglist of macOS hold them.
constexpr std::array<SignalName, 31> signals{{
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

// Texts of Mach errors, as mach_error_string of macOS gives them.

// Results of the kernel's calls, from 0 on.
constexpr std::array<std::string_view, 57> kernelErrors{{
    "successful",
    "invalid address",
    "protection failure",
    "no space available",
    "invalid argument",
    "failure",
    "resource shortage",
    "not receiver",
    "no access",
    "memory failure",
    "memory error",
    "already in set",
    "not in set",
    "name exists",
    "aborted",
    "invalid name",
    "invalid task",
    "invalid right",
    "invalid value",
    "urefs overflow",
    "invalid capability",
    "right exists",
    "invalid host",
    "memory present",
    "memory data moved",
    "memory restart copy",
    "invalid processor set",
    "policy limit",
    "invalid policy",
    "invalid object",
    "already waiting",
    "default set",
    "exception protected",
    "invalid ledger",
    "invalid memory control",
    "invalid security",
    "not depressed",
    "object terminated",
    "lock set destroyed",
    "lock unstable",
    "lock owned by another",
    "lock owned by self",
    "semaphore destroyed",
    "RPC terminated",
    "terminate orphan",
    "let orphan continue",
    "service not supported",
    "remote node down",
    "thread not waiting",
    "operation timed out",
    "code signing error",
    "policy is static",
    "insufficient input buffer size",
    "denied by security policy",
    "missing kernel collection",
    "invalid kernel collection",
    "result not found",
}};

// Results of sending a message, from 0x10000000 on.
constexpr std::array<std::string_view, 22> sendErrors{{
    "no error",
    "send in progress",
    "invalid data",
    "invalid destination port",
    "timed out",
    "will notify",
    "notify in progress",
    "interrupted",
    "msg too small",
    "invalid reply port",
    "invalid port right",
    "invalid notify port",
    "invalid memory",
    "no msg buffer",
    "no notify possible",
    "invalid msg-type",
    "invalid msg-header",
    "invalid msg-trailer",
    "DIPC transport failure",
    "DIPC port migrated",
    "DIPC resend failed",
    "out-of-line buffer too large",
}};

// Results of receiving a message, from 0x10004000 on.
constexpr std::array<std::string_view, 17> receiveErrors{{
    "no error",
    "receive in progress",
    "invalid name",
    "timed out",
    "msg too large",
    "interrupted",
    "port changed",
    "invalid notify port",
    "invalid data",
    "port died",
    "port in set",
    "header error",
    "body error",
    "invalid scatter list entry",
    "overwrite region too small",
    "invalid msg-trailer",
    "DIPC transport error",
}};

/// A range of Mach errors of one subsystem.
struct MachErrors
{
    std::uint32_t first;
    std::uint32_t last;
    std::string_view subsystem;
    std::span<const std::string_view> texts;
};

constexpr std::array<MachErrors, 3> machErrors{{
    {0, 0x3fff, "(os/kern) ", kernelErrors},
    {0x10000000, 0x10003fff, "(ipc/send) ", sendErrors},
    {0x10004000, 0x10007fff, "(ipc/rcv) ", receiveErrors},
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

void appendMachErrorText(std::string& out, std::uint32_t code)
{
    for (const MachErrors& errors : machErrors) {
        if (code < errors.first || code > errors.last)
            continue;
        const std::uint32_t number = code - errors.first;
        if (number < errors.texts.size())
            out.append(errors.subsystem).append(errors.texts[number]);
        else
            out += "unknown error code";
        return;
    }
    out += "(null)";
}

const SignalName* signalName(std::int64_t number)
{
    return number >= 1 && number <= static_cast<std::int64_t>(signals.size())
               ? &signals[static_cast<std::size_t>(number - 1)]
               : nullptr;
}

} // namespace logstore
