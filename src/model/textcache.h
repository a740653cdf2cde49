// SPDX-License-Identifier: MIT
#pragma once

#include "model/decimal.h"
#include "model/text.h"

#include <functional>
#include <vector>

/// Texts already made, found again by what they were made from, so that equal texts of many entries
/// share one block. Each key has one place, and a newcomer takes the place of whoever stood there:
/// a cache forgets, but neither grows nor slows down.
template <typename Key>
class TextCache
{
public:
    /// 2 to the power of `bits` places.
    explicit TextCache(unsigned bits) : m_places(std::size_t(1) << bits), m_shift(64 - bits) {}

    /// The text of `key`; `make()` makes it when it is not here.
    template <typename Make>
    const Text& get(const Key& key, const Make& make)
    {
        Place& place = m_places[placeOf(std::hash<Key>()(key))];
        if (!(place.key == key) || place.text.isEmpty()) {
            place.text = make();
            place.key = key;
        }
        return place.text;
    }

private:
    struct Place
    {
        Key key{};
        Text text;
    };

    /// Identifiers and addresses often differ in a few bits only: the product spreads them upwards.
    std::size_t placeOf(std::uint64_t hash) const
    {
        constexpr std::uint64_t oddGoldenRatio = 0x9e3779b97f4a7c15;
        return static_cast<std::size_t>((hash * oddGoldenRatio) >> m_shift);
    }

    std::vector<Place> m_places;
    unsigned m_shift;
};

/// Decimal texts of numbers that come again and again.
template <typename Number>
class NumberTexts
{
public:
    const Text& operator()(Number number)
    {
        return m_cache.get(number, [number] { return Text(Decimal(number).view()); });
    }

private:
    TextCache<Number> m_cache{11};
};

/// Texts of bytes whose address says all about them: the same address always holds the same bytes.
class TextsByAddress
{
public:
    Text operator()(std::string_view bytes)
    {
        if (bytes.empty())
            return {};
        return m_cache.get(bytes.data(), [bytes] { return Text(bytes); });
    }

private:
    TextCache<const char*> m_cache{13};
};

/// One text for each content.
class TextsByContent
{
public:
    Text operator()(std::string_view bytes)
    {
        if (bytes.empty())
            return {};
        Text& place = m_places[std::hash<std::string_view>()(bytes) % m_places.size()];
        if (place.utf8() != bytes)
            place = Text(bytes);
        return place;
    }

private:
    std::vector<Text> m_places = std::vector<Text>(1 << 13);
};
