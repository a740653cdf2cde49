// SPDX-License-Identifier: MIT
#include "platform/logstore/store.h"
#include "storefolder.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static StoreFolder folder;
    folder.write("Persist/0000000000000001.tracev3", data, size);
    const auto store = logstore::Store::open(folder.root());
    if (!store)
        return 0;
    auto entries = store->entries();
    while (const logstore::Entry* entry = entries.next()) {
        (void)entry->composedMessage();
        (void)entry->formatString();
        (void)entry->senderImagePath();
        (void)entry->senderImageOffset();
        (void)entry->signpostName();
        (void)entry->category();
    }
    return 0;
}
