// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

enum class SystemCall { Write, Synchronise, Close, Rename };

/// Makes a system call fail for files that are open for writing, for as long as it lives. Stands in
/// for full and broken disks. Works in programs that link systemfault.cpp: its functions come
/// before those of the C library.
class SystemFault
{
public:
    struct Fault
    {
        SystemCall call = SystemCall::Write;
        int error = 0;                       ///< the value of errno; kills the process if negative
        std::int64_t accepted = 0;           ///< bytes written before writing fails
        std::int64_t mostAtOnce = INT64_MAX; ///< bytes accepted by one call
        int times = INT32_MAX;               ///< calls that fail, then all goes well
    };
    explicit SystemFault(const Fault& fault);
    SystemFault(const SystemFault&) = delete;
    SystemFault& operator=(const SystemFault&) = delete;
    ~SystemFault();
};
