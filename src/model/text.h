// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>

/// The text that valid UTF-8 stands for. Unlike QString::fromUtf8(), keeps U+FEFF at the beginning.
QString utf16(std::string_view utf8);

/// An immutable, implicitly shared text in UTF-8, one pointer wide. Entry lists hold seventeen
/// texts an entry, most of them equal to those of other entries: a QString in each place would more
/// than double the list. Not for more than one thread.
class Text
{
public:
    Text() = default;
    /// `utf8` must be valid UTF-8.
    explicit Text(std::string_view utf8);
    Text(const QString& text); // NOLINT(google-explicit-constructor): a QString is a text
    Text(const Text& other) : m_block(other.m_block) { retain(); }
    Text(Text&& other) noexcept : m_block(std::exchange(other.m_block, nullptr)) {}
    Text& operator=(const Text& other)
    {
        Text(other).swap(*this);
        return *this;
    }
    Text& operator=(Text&& other) noexcept
    {
        Text(std::move(other)).swap(*this);
        return *this;
    }
    ~Text() { release(); }

    bool isEmpty() const { return m_block == nullptr; }
    std::string_view utf8() const
    {
        return m_block ? std::string_view(m_block->bytes(), m_block->size) : std::string_view();
    }
    QString toString() const;

    friend bool operator==(const Text& a, const Text& b)
    {
        return a.m_block == b.m_block || a.utf8() == b.utf8();
    }
    friend bool operator==(const Text& a, const QString& b) { return a.toString() == b; }
    friend bool operator==(const Text& a, QStringView b) { return a.toString() == b; }

private:
    struct Block
    {
        std::uint32_t references;
        std::uint32_t size;
        char* bytes() { return reinterpret_cast<char*>(this + 1); }
    };

    void swap(Text& other) noexcept { std::swap(m_block, other.m_block); }
    void retain() const
    {
        if (m_block)
            ++m_block->references;
    }
    void release()
    {
        if (m_block && --m_block->references == 0)
            destroy();
    }
    void destroy();

    Block* m_block = nullptr; ///< null for the empty text
};

Q_DECLARE_TYPEINFO(Text, Q_RELOCATABLE_TYPE);
