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

QString Text::toString() const
{
    const std::string_view bytes = utf8();
    return QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size()));
}

void Text::destroy()
{
    ::operator delete(m_block);
}
