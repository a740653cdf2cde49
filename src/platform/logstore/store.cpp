// SPDX-License-Identifier: MIT
#include "platform/logstore/store.h"

#include "platform/logstore/entrystreamstate.h"

namespace logstore {

EntryStream::EntryStream(std::unique_ptr<EntryStreamState> state) : m_state(std::move(state))
{
}
EntryStream::EntryStream(EntryStream&&) noexcept = default;
EntryStream& EntryStream::operator=(EntryStream&&) noexcept = default;
EntryStream::~EntryStream() = default;

const Entry* EntryStream::next()
{
    return m_state->next();
}

Store::Store(std::shared_ptr<StoreIndex> index) : m_index(std::move(index))
{
}

StoreResult<Store>
Store::open(const std::filesystem::path& root, StoreOrigin origin, const OpenWatch& watch)
{
    auto index = StoreIndex::open(root, origin, watch);
    if (!index)
        return tl::unexpected(index.error());
    return Store(std::move(*index));
}

std::int64_t Store::endTime() const
{
    return m_index->endTime();
}

std::uint64_t Store::traceBytes() const
{
    return m_index->traceBytes();
}

std::size_t Store::fileCount() const
{
    return m_index->fileCount();
}

const StoreProblems& Store::problems() const
{
    return m_index->problems();
}

EntryStream Store::entries(std::int64_t from, std::shared_ptr<const EntryFilter> filter) const
{
    return EntryStream(std::make_unique<EntryStreamState>(m_index, from, std::move(filter)));
}

} // namespace logstore
