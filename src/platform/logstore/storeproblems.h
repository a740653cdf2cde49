// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <tl/expected.hpp>
#include <vector>

namespace logstore {

/// Why a part of a store, or all of it, is missing from what was read.
enum class ProblemKind : std::uint8_t {
    NotAFolder,         ///< the store's path; `error` when the system gave one
    NotAStore,          ///< the store's path: it holds no log files
    Cancelled,          ///< opening was
    UnreadableFolder,   ///< `error` says why
    UnreadableFile,     ///< `error` says why; 0: it is not a regular file
    NotATraceFile,      ///< it does not start with a header
    DamagedChunks,      ///< of a trace file: parts of it were left out
    UnknownCompression, ///< of chunk sets of a trace file
    CutShort,           ///< a file became shorter while it was read
    DamagedTimes,       ///< a time file was not read to its end
    MissingStrings,     ///< `name` is the identifier that no string file has
    DamagedStrings      ///< a string file that cannot be used; `error` when it cannot be opened
};

struct StoreProblem
{
    ProblemKind kind;
    std::string name; ///< path of the file or folder, bytes as the system gave them
    int error = 0;    ///< number of a system error, or 0
};

/// A value, or what keeps it from being read.
template <typename T>
using StoreResult = tl::expected<T, StoreProblem>;

inline tl::unexpected<StoreProblem>
storeProblem(ProblemKind kind, const std::filesystem::path& path, int error = 0)
{
    return tl::unexpected(StoreProblem{kind, path.string(), error});
}

/// What could not be read of a store, each problem of a file once.
class StoreProblems
{
public:
    /// A store with thousands of damaged files must not fill the memory with their names.
    static constexpr std::size_t mostListed = 1000;

    explicit StoreProblems(std::filesystem::path root) : m_root(std::move(root)) {}

    /// The name becomes relative to the store's folder.
    void add(StoreProblem problem);

    /// In the order in which they were found.
    const std::vector<StoreProblem>& list() const { return m_list; }
    /// How many there are of the kind, those not listed as well.
    std::size_t count(ProblemKind kind) const;
    std::size_t count() const;

private:
    std::filesystem::path m_root;
    std::vector<StoreProblem> m_list;
    std::map<ProblemKind, std::size_t> m_counts;
    std::map<std::string, std::vector<ProblemKind>> m_known; ///< by name, of those listed
};

} // namespace logstore
