// SPDX-License-Identifier: MIT
#include "platform/propertylist.h"

#include "platform/logstore/propertylist/propertylist.h"

#include <QDateTime>
#include <QTimeZone>
#include <QXmlStreamWriter>

#include <algorithm>
#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

using logstore::PropertyList;

QString textFrom(std::string_view utf8)
{
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

QVariant unsignedFrom(std::uint64_t number)
{
    if (number > static_cast<std::uint64_t>(std::numeric_limits<qint64>::max()))
        return QVariant::fromValue<quint64>(number);
    return QVariant::fromValue<qint64>(static_cast<qint64>(number));
}

/// Invalid for a date that no calendar holds.
QVariant dateFrom(double secondsSince2001)
{
    constexpr double originSince1970 = 978307200; // 2001-01-01T00:00:00Z
    constexpr double farthest = 9e18;             // what 64 bits hold
    const double milliseconds = std::floor((secondsSince2001 + originSince1970) * 1000);
    if (!(std::fabs(milliseconds) < farthest))
        return {};
    return QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(milliseconds), QTimeZone::utc());
}

QVariant valueFrom(const PropertyList& list);

QVariantList arrayFrom(const PropertyList& list)
{
    QVariantList array;
    for (const PropertyList& element : list.elements)
        if (const QVariant value = valueFrom(element); value.isValid())
            array.append(value);
    return array;
}

QVariantMap dictionaryFrom(const PropertyList& list)
{
    QVariantMap dictionary;
    for (std::size_t i = 0; i < list.elements.size(); ++i)
        if (const QVariant value = valueFrom(list.elements[i]); value.isValid())
            dictionary.insert(textFrom(list.keys[i]), value);
    return dictionary;
}

QVariant valueFrom(const PropertyList& list)
{
    switch (list.kind) {
    case PropertyList::Kind::Null: return {};
    case PropertyList::Kind::Boolean: return list.integer != 0;
    case PropertyList::Kind::Integer:
        return QVariant::fromValue<qint64>(static_cast<qint64>(list.integer));
    case PropertyList::Kind::Unsigned: return unsignedFrom(list.integer);
    case PropertyList::Kind::Uid: return QVariantMap{{u"CF$UID"_s, unsignedFrom(list.integer)}};
    case PropertyList::Kind::Real: return list.real;
    case PropertyList::Kind::Date: return dateFrom(list.real);
    case PropertyList::Kind::Data:
        return QByteArray(list.text.data(), static_cast<qsizetype>(list.text.size()));
    case PropertyList::Kind::String: return textFrom(list.text);
    case PropertyList::Kind::Array: return arrayFrom(list);
    case PropertyList::Kind::Dictionary: return dictionaryFrom(list);
    }
    return {};
}

/// Writes elements of the XML form.
class XmlWriter
{
public:
    explicit XmlWriter(QByteArray* out) : m_xml(out)
    {
        constexpr int tab = -1;
        m_xml.setAutoFormatting(true);
        m_xml.setAutoFormattingIndent(tab);
    }

    /// False when it holds a value of a type that property lists do not have.
    bool write(const QVariantMap& dictionary)
    {
        m_xml.writeStartDocument();
        m_xml.writeDTD(u"<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
                       "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">"_s);
        m_xml.writeStartElement(u"plist"_s);
        m_xml.writeAttribute(u"version"_s, u"1.0"_s);
        const bool isKnown = writeDictionary(dictionary);
        m_xml.writeEndDocument();
        return isKnown;
    }

private:
    bool writeValue(const QVariant& value)
    {
        switch (value.typeId()) {
        case QMetaType::Bool:
            m_xml.writeEmptyElement(value.toBool() ? u"true"_s : u"false"_s);
            return true;
        case QMetaType::Int:
        case QMetaType::LongLong:
            writeText(u"integer"_s, QString::number(value.toLongLong()));
            return true;
        case QMetaType::UInt:
        case QMetaType::ULongLong:
            writeText(u"integer"_s, QString::number(value.toULongLong()));
            return true;
        case QMetaType::Double: writeText(u"real"_s, realText(value.toDouble())); return true;
        case QMetaType::QString: writeText(u"string"_s, value.toString()); return true;
        case QMetaType::QByteArray:
            writeText(u"data"_s, QString::fromLatin1(value.toByteArray().toBase64()));
            return true;
        case QMetaType::QDateTime: writeText(u"date"_s, dateText(value.toDateTime())); return true;
        case QMetaType::QVariantList: return writeArray(value.toList());
        case QMetaType::QVariantMap: return writeDictionary(value.toMap());
        default: return false;
        }
    }

    bool writeArray(const QVariantList& array)
    {
        m_xml.writeStartElement(u"array"_s);
        for (const QVariant& value : array)
            if (!writeValue(value))
                return false;
        m_xml.writeEndElement();
        return true;
    }

    bool writeDictionary(const QVariantMap& dictionary)
    {
        m_xml.writeStartElement(u"dict"_s);
        for (auto entry = dictionary.cbegin(); entry != dictionary.cend(); ++entry) {
            writeText(u"key"_s, entry.key());
            if (!writeValue(entry.value()))
                return false;
        }
        m_xml.writeEndElement();
        return true;
    }

    /// A carriage return would be read back as a line feed unless it stands as a reference.
    void writeText(const QString& element, QString text)
    {
        std::replace_if(text.begin(), text.end(), isOutsideXml, QChar(QChar::ReplacementCharacter));
        m_xml.writeStartElement(element);
        const QStringList lines = text.split(u'\r');
        for (qsizetype i = 0; i < lines.size(); ++i) {
            if (i > 0)
                m_xml.writeEntityReference(u"#13"_s);
            m_xml.writeCharacters(lines[i]);
        }
        m_xml.writeEndElement();
    }

    static bool isOutsideXml(QChar c)
    {
        return (c < u' ' && c != u'\t' && c != u'\n' && c != u'\r') || c >= QChar(0xfffe);
    }

    static QString realText(double value)
    {
        if (std::isinf(value))
            return value < 0 ? u"-infinity"_s : u"+infinity"_s;
        return std::isnan(value) ? u"nan"_s
                                 : QString::number(value, 'g', QLocale::FloatingPointShortest);
    }

    static QString dateText(const QDateTime& date)
    {
        const QDateTime utc = date.toUTC();
        const int year = utc.date().year();
        constexpr int firstBeforeChrist = -1; // Qt has no year 0
        return QString::asprintf("%04d-%02d-%02dT%02d:%02d:%02dZ",
                                 year <= firstBeforeChrist ? year + 1 : year, utc.date().month(),
                                 utc.date().day(), utc.time().hour(), utc.time().minute(),
                                 utc.time().second());
    }

    QXmlStreamWriter m_xml;
};

} // namespace

Result<QVariantMap> propertyListFrom(const QByteArray& bytes)
{
    logstore::TextStore texts;
    const auto list =
        logstore::readPropertyList({reinterpret_cast<const std::uint8_t*>(bytes.data()),
                                    static_cast<std::size_t>(bytes.size())},
                                   texts);
    if (!list)
        return failure("it is not a property list, or a damaged one");
    if (list->kind != PropertyList::Kind::Dictionary)
        return failure("it is a property list, but no dictionary");
    return dictionaryFrom(*list);
}

Result<QByteArray> propertyListXml(const QVariantMap& dictionary)
{
    QByteArray xml;
    if (!XmlWriter(&xml).write(dictionary))
        return failure("it holds a value that property lists cannot hold");
    return xml;
}
