// SPDX-License-Identifier: MIT
// Prints every entry of a log store as one JSON object per line.
#include "platform/logstore/store.h"
#include "support/entryjson.h"

#include <cstdio>
#include <cstring>

int main(int argc, char** argv)
{
    const char* root = nullptr;
    bool null = false;
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--null") == 0)
            null = true;
        else
            root = argv[i];
    }
    const auto store = logstore::Store::open(root);
    if (!store) {
        std::fprintf(stderr, "%s\n", store.error().description.c_str());
        return 1;
    }
    auto stream = store->entries();
    std::uint64_t count = 0;
    std::uint64_t bytes = 0;
    JsonLine line;
    while (const logstore::Entry* entry = stream.next()) {
        if (null) {
            bytes += entry->composedMessage().size();
        } else {
            line.clear();
            writeEntry(line, count, *entry);
            const std::string& text = line.finish();
            std::fwrite(text.data(), 1, text.size(), stdout);
        }
        ++count;
    }
    if (null)
        std::printf("%llu entries, %llu message bytes\n", static_cast<unsigned long long>(count),
                    static_cast<unsigned long long>(bytes));
}
