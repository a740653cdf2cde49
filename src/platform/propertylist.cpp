// SPDX-License-Identifier: MIT
#include "platform/propertylist.h"

#include "platform/propertylistguard.h"

#include <QDateTime>
#include <QTimeZone>

#include <cstdlib>
#include <limits>
#include <memory>
#include <plist/plist.h>

using namespace Qt::StringLiterals;

namespace {

/// What dates of property lists count from: 2001-01-01T00:00:00Z.
constexpr qint64 dateOrigin = 978307200;

struct NodeDeleter
{
    void operator()(void* node) const { plist_free(node); }
};
using Node = std::unique_ptr<void, NodeDeleter>;

struct Freer
{
    void operator()(char* memory) const { std::free(memory); } // NOLINT: what C code allocated
};
using CText = std::unique_ptr<char, Freer>;

CText xmlOf(plist_t node, std::uint32_t& length)
{
    char* xml = nullptr;
    length = 0;
    plist_to_xml(node, &xml, &length);
    return CText(xml);
}

/// Above the range of signed numbers the library gives the same value for a negative number and a
/// large one. Only its XML says which it is.
QVariant integerFrom(plist_t node)
{
    std::uint64_t value = 0;
    plist_get_uint_val(node, &value);
    if (value > static_cast<std::uint64_t>(std::numeric_limits<qint64>::max())) {
        std::uint32_t length = 0;
        const CText xml = xmlOf(node, length);
        if (!QByteArrayView(xml.get(), length).contains("<integer>-"))
            return QVariant::fromValue<quint64>(value);
    }
    return QVariant::fromValue<qint64>(static_cast<qint64>(value));
}

QVariant dateFrom(plist_t node)
{
    std::int32_t seconds = 0;
    std::int32_t microseconds = 0;
    plist_get_date_val(node, &seconds, &microseconds);
    return QDateTime::fromSecsSinceEpoch(dateOrigin + seconds, Qt::UTC);
}

/// Invalid for what only keyed archives hold.
QVariant valueFrom(plist_t node);

QVariantList arrayFrom(plist_t node)
{
    QVariantList list;
    plist_array_iter position = nullptr;
    plist_array_new_iter(node, &position);
    const CText guard(static_cast<char*>(position));
    for (std::uint32_t left = plist_array_get_size(node); left > 0; --left) {
        plist_t item = nullptr;
        plist_array_next_item(node, position, &item);
        if (const QVariant value = valueFrom(item); value.isValid())
            list.append(value);
    }
    return list;
}

QVariantMap dictionaryFrom(plist_t node)
{
    QVariantMap map;
    plist_dict_iter position = nullptr;
    plist_dict_new_iter(node, &position);
    const CText guard(static_cast<char*>(position));
    for (std::uint32_t left = plist_dict_get_size(node); left > 0; --left) {
        char* key = nullptr;
        plist_t item = nullptr;
        plist_dict_next_item(node, position, &key, &item);
        const CText owner(key);
        if (const QVariant value = key && item ? valueFrom(item) : QVariant(); value.isValid())
            map.insert(QString::fromUtf8(key), value);
    }
    return map;
}

QVariant valueFrom(plist_t node)
{
    std::uint64_t length = 0;
    switch (plist_get_node_type(node)) {
    case PLIST_BOOLEAN: {
        std::uint8_t value = 0;
        plist_get_bool_val(node, &value);
        return value != 0;
    }
    case PLIST_UINT: return integerFrom(node);
    case PLIST_REAL: {
        double value = 0;
        plist_get_real_val(node, &value);
        return value;
    }
    case PLIST_STRING: {
        const char* text = plist_get_string_ptr(node, &length);
        return QString::fromUtf8(text, static_cast<qsizetype>(length));
    }
    case PLIST_DATA: {
        const char* data = plist_get_data_ptr(node, &length);
        return QByteArray(data, static_cast<qsizetype>(length));
    }
    case PLIST_DATE: return dateFrom(node);
    case PLIST_ARRAY: return arrayFrom(node);
    case PLIST_DICT: return dictionaryFrom(node);
    case PLIST_KEY:
    case PLIST_UID:
    case PLIST_NONE: break;
    }
    return {};
}

plist_t nodeFrom(const QVariant& value);

/// The library makes a negative number of an unsigned one above the signed range, but reads it
/// right.
plist_t unsignedNode(quint64 value)
{
    if (value <= static_cast<quint64>(std::numeric_limits<qint64>::max()))
        return plist_new_uint(value);
    const QByteArray xml = "<plist><integer>" + QByteArray::number(value) + "</integer></plist>";
    plist_t node = nullptr;
    plist_from_xml(xml.constData(), static_cast<std::uint32_t>(xml.size()), &node);
    return node;
}

plist_t arrayNode(const QVariantList& list)
{
    Node array(plist_new_array());
    for (const QVariant& value : list) {
        plist_t item = nodeFrom(value);
        if (!item)
            return nullptr;
        plist_array_append_item(array.get(), item);
    }
    return array.release();
}

plist_t dictionaryNode(const QVariantMap& map)
{
    Node dictionary(plist_new_dict());
    for (auto entry = map.cbegin(); entry != map.cend(); ++entry) {
        plist_t item = nodeFrom(entry.value());
        if (!item)
            return nullptr;
        plist_dict_set_item(dictionary.get(), entry.key().toUtf8().constData(), item);
    }
    return dictionary.release();
}

/// Null for a value of a type that property lists do not have.
plist_t nodeFrom(const QVariant& value)
{
    switch (value.typeId()) {
    case QMetaType::Bool: return plist_new_bool(value.toBool());
    case QMetaType::Int:
    case QMetaType::LongLong: return plist_new_uint(static_cast<std::uint64_t>(value.toLongLong()));
    case QMetaType::UInt:
    case QMetaType::ULongLong: return unsignedNode(value.toULongLong());
    case QMetaType::Double: return plist_new_real(value.toDouble());
    case QMetaType::QString: return plist_new_string(value.toString().toUtf8().constData());
    case QMetaType::QByteArray: {
        const QByteArray data = value.toByteArray();
        return plist_new_data(data.constData(), static_cast<std::uint64_t>(data.size()));
    }
    case QMetaType::QDateTime: {
        const qint64 seconds = value.toDateTime().toSecsSinceEpoch() - dateOrigin;
        return plist_new_date(static_cast<std::int32_t>(seconds), 0);
    }
    case QMetaType::QVariantList: return arrayNode(value.toList());
    case QMetaType::QVariantMap: return dictionaryNode(value.toMap());
    default: return nullptr;
    }
}

} // namespace

Result<QVariantMap> propertyListFrom(const QByteArray& bytes)
{
    if (!isSafePropertyList(bytes))
        return failure("it is not a property list, or a damaged one");
    plist_t parsed = nullptr;
    plist_from_memory(bytes.constData(), static_cast<std::uint32_t>(bytes.size()), &parsed);
    const Node root(parsed);
    if (!root)
        return failure("it is not a property list, or a damaged one");
    if (plist_get_node_type(root.get()) != PLIST_DICT)
        return failure("it is a property list, but no dictionary");
    return dictionaryFrom(root.get());
}

Result<QByteArray> propertyListXml(const QVariantMap& dictionary)
{
    const Node root(dictionaryNode(dictionary));
    if (!root)
        return failure("it holds a value that property lists cannot hold");
    std::uint32_t length = 0;
    const CText xml = xmlOf(root.get(), length);
    return QByteArray(xml.get(), static_cast<qsizetype>(length));
}
