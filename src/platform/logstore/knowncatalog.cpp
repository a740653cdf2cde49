// SPDX-License-Identifier: MIT
#include "platform/logstore/knowncatalog.h"

#include <algorithm>
#include <numeric>

namespace logstore {

void KnownProcess::openFiles(StringFiles& strings)
{
    if (m_filesOpened)
        return;
    m_filesOpened = true;
    if (mainImage)
        mainFile = strings.uuidText(*mainImage);
    if (sharedCache)
        cacheFile = strings.sharedCache(*sharedCache);
}

KnownCatalog::KnownCatalog(std::vector<std::uint8_t> body)
    : m_catalog(std::move(body))
    , m_processes(m_catalog.processes().begin(), m_catalog.processes().end())
{
}

KnownProcess* KnownCatalog::find(const ProcessKey& key)
{
    const auto found = std::lower_bound(
        m_processes.begin(), m_processes.end(), key,
        [](const KnownProcess& process, const ProcessKey& value) { return process.key < value; });
    return found != m_processes.end() && found->key == key ? &*found : nullptr;
}

KnownSubsystem& KnownCatalog::subsystem(KnownProcess& process,
                                        std::optional<std::uint16_t> identifier,
                                        TextPool& pool) const
{
    if (!identifier)
        return process.noSubsystem;
    KnownSubsystem& known = process.m_subsystems[*identifier];
    if (!known.isResolved) {
        known.texts = readSubsystem(process, *identifier, pool);
        known.isResolved = true;
    }
    return known;
}

/// u16 identifier, u16 offset of the subsystem, u16 offset of the category; absent when the process
/// has none of that identifier.
std::optional<Bytes> KnownCatalog::subsystemEntry(KnownProcess& process, std::uint16_t identifier)
{
    const auto entryAt = [&process](std::size_t number) {
        return process.subsystems.subspan(number * CatalogProcess::subsystemEntrySize,
                                          CatalogProcess::subsystemEntrySize);
    };
    const auto identifierAt = [&entryAt](std::size_t number) {
        return loadAt<std::uint16_t>(entryAt(number));
    };
    const std::size_t count = process.subsystems.size() / CatalogProcess::subsystemEntrySize;
    // Identifiers usually count up from 1 without gaps, so that place is tried first.
    const std::size_t expected = identifier == 0 ? 0 : std::size_t{identifier} - 1;
    if (expected < count && identifierAt(expected) == identifier)
        return entryAt(expected);
    std::vector<std::uint32_t>& order = process.m_subsystemsByIdentifier;
    if (order.empty()) {
        order.resize(count);
        std::iota(order.begin(), order.end(), 0U);
        std::stable_sort(order.begin(), order.end(), [&](std::uint32_t a, std::uint32_t b) {
            return identifierAt(a) < identifierAt(b);
        });
    }
    const auto found = std::lower_bound(
        order.begin(), order.end(), identifier,
        [&](std::uint32_t number, std::uint16_t value) { return identifierAt(number) < value; });
    if (found == order.end() || identifierAt(*found) != identifier)
        return std::nullopt;
    return entryAt(*found);
}

Subsystem
KnownCatalog::readSubsystem(KnownProcess& process, std::uint16_t identifier, TextPool& pool) const
{
    const auto entry = subsystemEntry(process, identifier);
    if (!entry)
        return {};
    return {pool.internUnchecked(m_catalog.string(loadAt<std::uint16_t>(*entry, 2))),
            pool.internUnchecked(m_catalog.string(loadAt<std::uint16_t>(*entry, 4)))};
}

// u32 size, u32 unknown, u16 identifier, u32 + u16 load address
std::optional<Uuid>
KnownCatalog::imageAt(KnownProcess& process, std::uint64_t address, std::uint64_t& load) const
{
    std::vector<LoadedImage>& images = process.m_imagesByLoad;
    const auto isLower = [](const LoadedImage& a, const LoadedImage& b) { return a.load < b.load; };
    if (images.empty()) {
        ByteReader in(process.images);
        while (in.remaining() >= CatalogProcess::imageEntrySize) {
            const Bytes entry = in.take(CatalogProcess::imageEntrySize);
            images.push_back({loadAt<std::uint32_t>(entry, 10)
                                  | std::uint64_t{loadAt<std::uint16_t>(entry, 14)} << 32,
                              loadAt<std::uint32_t>(entry, 0), loadAt<std::uint16_t>(entry, 8)});
        }
        std::stable_sort(images.begin(), images.end(), isLower);
    }
    const auto after =
        std::upper_bound(images.begin(), images.end(), LoadedImage{address, 0, 0}, isLower);
    if (after == images.begin() || address - std::prev(after)->load >= std::prev(after)->size)
        return std::nullopt;
    load = std::prev(after)->load;
    return m_catalog.identifier(std::prev(after)->identifier);
}

} // namespace logstore
