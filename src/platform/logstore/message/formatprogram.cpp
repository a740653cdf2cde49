// SPDX-License-Identifier: MIT
#include "platform/logstore/message/formatprogram.h"

#include <algorithm>

namespace logstore {

namespace {

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

/// Reads one conversion at a percent sign.
class ConversionParser
{
public:
    /// `lastBrace`: the place of the last closing brace in the text, or npos.
    ConversionParser(std::string_view text, std::size_t at, std::size_t lastBrace)
        : m_text(text)
        , m_at(at + 1)
        , m_lastBrace(lastBrace)
    {
    }

    /// False when no valid conversion stands here; braceEnd() then tells where its braces ended.
    bool parse(Conversion& conversion)
    {
        const std::size_t start = m_at - 1;
        if (peek() == '{' && !readDecorations(conversion))
            return false;
        readFlags(conversion);
        conversion.width = readNumber();
        if (peek() == '.') {
            ++m_at;
            const std::int32_t precision = readNumber();
            conversion.precision = precision == Conversion::none ? 0 : precision;
        }
        readLength(conversion);
        constexpr std::string_view letters = "@aAcCdDeEfFgGimnoOpPsSuUxX";
        conversion.letter = peek();
        if (conversion.letter == 0 || letters.find(conversion.letter) == std::string_view::npos)
            return false;
        ++m_at;
        conversion.text = m_text.substr(start, m_at - start);
        return true;
    }

    std::size_t end() const { return m_at; }
    /// The place after the closing brace, or 0 when there were none.
    std::size_t braceEnd() const { return m_braceEnd; }

private:
    char peek() const { return m_at < m_text.size() ? m_text[m_at] : '\0'; }

    bool readDecorations(Conversion& conversion)
    {
        if (m_lastBrace == std::string_view::npos || m_lastBrace < m_at)
            return false;
        const std::size_t close = m_text.find('}', m_at);
        conversion.decorations = Decorations::parse(m_text.substr(m_at + 1, close - m_at - 1));
        m_at = m_braceEnd = close + 1;
        return true;
    }

    void readFlags(Conversion& conversion)
    {
        for (;; ++m_at) {
            switch (peek()) {
            case '-': conversion.leftJustified = true; break;
            case '+': conversion.plusSign = true; break;
            case ' ': conversion.spaceSign = true; break;
            case '#': conversion.alternate = true; break;
            case '0': conversion.zeroPadded = true; break;
            case '\'': break;
            default: return;
            }
        }
    }

    std::int32_t readNumber()
    {
        if (peek() == '*') {
            ++m_at;
            return Conversion::fromItem;
        }
        if (!isDigit(peek()))
            return Conversion::none;
        std::int32_t number = 0;
        for (; isDigit(peek()); ++m_at)
            number = std::min(number * 10 + (peek() - '0'), Conversion::largest);
        return number;
    }

    void readLength(Conversion& conversion)
    {
        const auto take = [this, &conversion](std::string_view prefix, Conversion::Length length) {
            if (!m_text.substr(std::min(m_at, m_text.size())).starts_with(prefix))
                return false;
            m_at += prefix.size();
            conversion.length = length;
            return true;
        };
        using Length = Conversion::Length;
        if (take("hh", Length::Char) || take("h", Length::Short) || take("ll", Length::Long)
            || take("l", Length::Long))
            return;
        for (const std::string_view prefix : {"j", "t", "z", "q", "L"})
            if (take(prefix, Length::Plain))
                return;
    }

    std::string_view m_text;
    std::size_t m_at;
    std::size_t m_lastBrace;
    std::size_t m_braceEnd = 0;
};

} // namespace

FormatProgram::FormatProgram(std::string text) : m_text(std::move(text))
{
    const std::string_view all = m_text;
    const std::size_t lastBrace = all.rfind('}');
    std::size_t literalStart = 0;
    const auto addStep = [&](std::size_t literalEnd, std::int32_t conversion, std::size_t next) {
        m_steps.push_back({all.substr(literalStart, literalEnd - literalStart), conversion});
        literalStart = next;
    };

    std::size_t at = 0;
    while ((at = all.find('%', at)) != std::string_view::npos) {
        if (all.substr(at).starts_with("%%")) {
            addStep(at + 1, Conversion::none, at + 2);
            at += 2;
            continue;
        }
        ConversionParser parser(all, at, lastBrace);
        Conversion conversion;
        if (parser.parse(conversion)) {
            addStep(at, static_cast<std::int32_t>(m_conversions.size()), parser.end());
            m_conversions.push_back(conversion);
            at = parser.end();
        } else if (parser.braceEnd() > 0) {
            // Braces that no conversion follows are written without their percent sign.
            addStep(at, Conversion::none, at + 1);
            at = parser.braceEnd();
        } else {
            ++at;
        }
    }
    if (literalStart < all.size() || m_steps.empty())
        addStep(all.size(), Conversion::none, all.size());
}

std::size_t FormatProgram::bytes() const
{
    return sizeof *this + m_text.capacity() + m_steps.capacity() * sizeof(Step)
           + m_conversions.capacity() * sizeof(Conversion);
}

} // namespace logstore
