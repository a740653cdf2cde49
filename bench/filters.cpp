// SPDX-License-Identifier: MIT
// How long predicates take over every entry of a store, beside reading it without one.
#include "platform/logpredicate.h"
#include "platform/logstore/entry.h"
#include "platform/logstore/store.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <limits>
#include <memory>
#include <string>
#include <vector>

namespace {

struct Pass
{
    std::size_t entries = 0;
    double seconds = 0;
};

/// Reads all entries that match, with their messages as a fetch would. The fastest of several
/// passes: what else the machine does only adds.
Pass readAll(const logstore::Store& store,
             const std::shared_ptr<const logstore::EntryFilter>& filter)
{
    constexpr int passes = 20;
    Pass best{0, std::numeric_limits<double>::max()};
    for (int i = 0; i < passes; ++i) {
        std::size_t entries = 0;
        volatile std::size_t bytes = 0; // read by nobody, but not optimised away
        const auto start = std::chrono::steady_clock::now();
        auto stream = store.entries(logstore::Store::beginning, filter);
        for (; const logstore::Entry* entry = stream.next(); ++entries)
            bytes = bytes + entry->composedMessage().size();
        const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
        best = {entries, std::min(best.seconds, elapsed.count())};
    }
    return best;
}

} // namespace

int main(int count, char** arguments)
{
    if (count < 2) {
        std::fprintf(stderr, "usage: filters ARCHIVE [PREDICATE...]\n");
        return 2;
    }
    const auto store = logstore::Store::open(arguments[1]);
    if (!store) {
        std::fprintf(stderr, "%s\n", store.error().description.c_str());
        return 1;
    }
    std::vector<std::string> texts(arguments + 2, arguments + count);
    if (texts.empty())
        texts = {"subsystem == \"com.apple.TimeMachine\"", "eventMessage CONTAINS[c] \"error\"",
                 "subsystem == \"com.apple.TimeMachine\" || eventMessage CONTAINS[c] \"backup\" || "
                 "eventMessage "
                 "CONTAINS[c] \"Time Machine\" || eventMessage CONTAINS[c] \"TimeMachine\"",
                 "eventMessage CONTAINS[c] \"a text that stands nowhere\"", "processID = 0"};
    const Pass all = readAll(*store, nullptr);
    std::printf("%9zu entries %8.5f s           without a predicate\n", all.entries, all.seconds);
    for (const std::string& text : texts) {
        const auto built = predicate::build(text);
        if (!built) {
            std::printf("%s\n", predicate::alertText(built.error(), text).c_str());
            continue;
        }
        const Pass pass = readAll(*store, std::make_shared<LogPredicate>(*built));
        std::printf("%9zu entries %8.5f s  x %5.2f  %s\n", pass.entries, pass.seconds,
                    all.seconds / pass.seconds, text.c_str());
    }
}
