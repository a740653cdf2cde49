// SPDX-License-Identifier: MIT
#include "model/text.h"

#include <cstring>
#include <limits>
#include <new>

Text::Text(std::string_view utf8)
{
    if (utf8.empty())
        return;
    Q_ASSERT(utf8.size() <= std::numeric_limits<std::uint32_t>::max());
    void* memory = ::operator new(sizeof(Block) + utf8.size());
    m_block = new (memory) Block{1, static_cast<std::uint32_t>(utf8.size())};
    std::memcpy(m_block->bytes(), utf8.data(), utf8.size());
}

Text::Text(const QString& text) : Text(text.toStdString())
{
}

QString utf16(std::string_view utf8)
{
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    QString marks;
    for (; utf8.starts_with(byteOrderMark); utf8.remove_prefix(byteOrderMark.size()))
        marks += QChar(QChar::ByteOrderMark);
    return marks + QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

QString Text::toString() const
{
    return utf16(utf8());
}

void Text::destroy()
{
    ::operator delete(m_block);
}
