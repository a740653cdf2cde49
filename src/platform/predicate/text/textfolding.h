// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <string>
#include <string_view>

namespace predicate {

/// The folding of both texts before a comparison.
struct Folding
{
    bool caseless = false; ///< simple case folding, independent of the locale
    bool markless = false; ///< decomposed (NFD), without combining marks

    Folding() = default;
    Folding(bool withoutCase, bool withoutMarks) : caseless(withoutCase), markless(withoutMarks) {}

    bool none() const { return !caseless && !markless; }
    bool operator==(const Folding& other) const
    {
        return caseless == other.caseless && markless == other.markless;
    }
};

/// The folded text; UTF-8 in and out.
std::string folded(std::string_view text, Folding folding);
void foldInto(std::string_view text, Folding folding, std::string& out);

/// The folded texts of one match, so that several tests of one message fold it once. The first
/// eight texts are kept; a match that needs more is rare, and folds those each time.
class FoldedTexts
{
public:
    void clear() { m_used = 0; }

    /// A view of a kept text, which is valid until clear(), of `room`, or of `text` itself.
    std::string_view folded(std::string_view text, Folding folding, std::string& room);

private:
    struct Slot
    {
        std::string_view source;
        Folding folding;
        std::string text;
    };

    std::array<Slot, 8> m_slots;
    std::size_t m_used = 0;
};

} // namespace predicate
