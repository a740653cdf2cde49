// SPDX-License-Identifier: MIT
#include "platform/logstore/strings/sharedcache.h"
#include "platform/logstore/strings/uuidtext.h"
#include "storefolder.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static StoreFolder folder;
    const auto path = folder.write("strings", data, size);
    logstore::TextPool texts;
    constexpr std::uint64_t offsets[] = {0, 1, 0x1000, 0x10000, 0x80000000, UINT64_MAX};
    if (const auto file = logstore::UuidText::open(path, logstore::Uuid{}, texts))
        for (const std::uint64_t offset : offsets)
            (void)(*file)->formatAt(offset);
    if (const auto cache = logstore::SharedCache::open(path, texts)) {
        for (const std::uint64_t offset : offsets) {
            (void)(*cache)->formatAt(offset);
            (void)(*cache)->imageAt(offset);
        }
    }
    return 0;
}
