// SPDX-License-Identifier: MIT
#include "platform/logstore/store.h"

// Every store fails to open until the reader is here.

namespace logstore {

class EntryStreamState
{
};

class StoreIndex
{
};

EntryStream::EntryStream(std::unique_ptr<EntryStreamState> state) : m_state(std::move(state)) {}
EntryStream::EntryStream(EntryStream&&) noexcept = default;
EntryStream& EntryStream::operator=(EntryStream&&) noexcept = default;
EntryStream::~EntryStream() = default;

const Entry* EntryStream::next()
{
    return nullptr;
}

Result<Store> Store::open(const std::filesystem::path& root)
{
    return failure("The log store “" + root.string() + "” cannot be read yet.");
}

std::int64_t Store::endTime() const
{
    return beginning;
}

EntryStream Store::entries(std::int64_t, std::shared_ptr<const EntryFilter>) const
{
    return EntryStream(nullptr);
}

#define FIELD(type, name) type Entry::name() const { return {}; }
FIELD(EntryKind, kind)
FIELD(std::int64_t, time)
FIELD(Level, level)
FIELD(StoreCategory, storeCategory)
FIELD(std::uint64_t, threadIdentifier)
FIELD(std::string_view, process)
FIELD(std::int32_t, processIdentifier)
FIELD(std::string_view, subsystem)
FIELD(std::string_view, category)
FIELD(std::uint64_t, activityIdentifier)
FIELD(std::uint64_t, parentActivityIdentifier)
FIELD(std::uint64_t, signpostIdentifier)
FIELD(SignpostType, signpostType)
FIELD(std::string_view, sender)
FIELD(std::string_view, signpostName)
FIELD(std::string_view, composedMessage)
#undef FIELD

} // namespace logstore
