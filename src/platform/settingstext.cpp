// SPDX-License-Identifier: MIT
#include "platform/settingstext.h"

#include <QStringDecoder>

#include <algorithm>
#include <string_view>

using namespace Qt::StringLiterals;

namespace {

constexpr auto general = "General";
constexpr auto noTexts = "@Invalid()";
/// The character after a backslash, and what it stands for.
constexpr std::u16string_view escapes = u"abfnrtv\"\\";
constexpr std::u16string_view escaped = u"\a\b\f\n\r\t\v\"\\";
constexpr std::u16string_view hexadecimal = u"0123456789abcdef";

/// -1 for what is no digit.
int hexadecimalValue(QChar digit)
{
    const std::size_t value = hexadecimal.find(digit.toLower().unicode());
    return value == std::u16string_view::npos ? -1 : static_cast<int>(value);
}

bool isBlank(QChar character)
{
    return character == u' ' || character == u'\t';
}

/// Escapes a text, and quotes it where its end or a comma would otherwise be taken for the file's.
QByteArray quoted(const QString& text)
{
    QString line;
    line.reserve(text.size() + 2);
    bool isAfterNumber = false; // a digit that follows would be taken for a part of it
    for (const QChar character : text) {
        const char16_t code = character.unicode();
        const bool needsNumber = code < u' ' || (isAfterNumber && hexadecimalValue(character) >= 0);
        const std::size_t known = escaped.find(code);
        isAfterNumber = false;
        if (known != std::u16string_view::npos) {
            line.append(u'\\').append(QChar(escapes[known]));
        } else if (needsNumber) {
            line.append("\\x"_L1).append(QString::number(code, 16));
            isAfterNumber = true;
        } else {
            line.append(character);
        }
    }
    const bool isPlain = !line.isEmpty() && !line.startsWith(u' ') && !line.endsWith(u' ')
                         && std::none_of(line.begin(), line.end(), [](QChar character) {
                                return character == u';' || character == u',' || character == u'=';
                            });
    return (isPlain ? line : u'"' + line + u'"').toUtf8();
}

/// Reads texts from a value, one after the other.
class ValueReader
{
public:
    explicit ValueReader(const QString& value) : m_rest(value) {}

    bool isAtEnd() const { return m_rest.isEmpty(); }
    /// Takes the text up to the next comma outside quotation marks, and the comma.
    QString take();
    bool hasTakenComma() const { return m_hasComma; }

private:
    QChar takeCharacter();
    QChar takeEscaped();
    QChar takeNumber();

    QStringView m_rest;
    bool m_hasComma = false;
};

QChar ValueReader::takeCharacter()
{
    const QChar first = m_rest.front();
    m_rest = m_rest.sliced(1);
    return first;
}

QChar ValueReader::takeNumber()
{
    unsigned number = 0;
    while (!m_rest.isEmpty() && hexadecimalValue(m_rest.front()) >= 0)
        number = number << 4U | static_cast<unsigned>(hexadecimalValue(takeCharacter()));
    return QChar(static_cast<char16_t>(number));
}

QChar ValueReader::takeEscaped()
{
    if (m_rest.isEmpty())
        return u'\\';
    const QChar name = takeCharacter();
    if (name == u'x')
        return takeNumber();
    const std::size_t known = escapes.find(name.unicode());
    if (known != std::u16string_view::npos)
        return QChar(escaped[known]);
    return name == u'0' ? QChar() : name;
}

QString ValueReader::take()
{
    QString text;
    qsizetype kept = 0; // of the text, when it is cut at blanks
    bool isQuoted = false;
    m_hasComma = false;
    while (!m_rest.isEmpty() && isBlank(m_rest.front()))
        m_rest = m_rest.sliced(1);
    text.reserve(m_rest.size());
    while (!m_rest.isEmpty() && !m_hasComma) {
        const QChar character = takeCharacter();
        if (character == u'"') {
            isQuoted = !isQuoted;
            kept = text.size();
        } else if (character == u',' && !isQuoted) {
            m_hasComma = true;
        } else {
            text.append(character == u'\\' ? takeEscaped() : character);
            if (isQuoted || character == u'\\' || !isBlank(character))
                kept = text.size();
        }
    }
    text.truncate(kept);
    return text;
}

/// Adds what a line says. Returns false when no settings file has such a line.
bool addLine(QMap<QByteArray, QByteArray>& values, const QByteArray& line, QByteArray& section)
{
    if (line.isEmpty() || line.startsWith(';') || line.startsWith('#'))
        return true;
    if (line.startsWith('[')) {
        const QByteArray name = line.sliced(1, std::max<qsizetype>(line.size() - 2, 0));
        section = name == general ? QByteArray() : name + '/';
        return line.endsWith(']');
    }
    const qsizetype equals = line.indexOf('=');
    if (equals > 0) // no key, no value
        values.insert(section + line.first(equals).trimmed(), line.sliced(equals + 1).trimmed());
    return equals >= 0;
}

} // namespace

SettingsText readSettings(const QByteArray& bytes)
{
    SettingsText settings;
    settings.isDamaged = !bytes.isValidUtf8() || bytes.contains('\0');
    QByteArray section;
    const QByteArray mark("\xEF\xBB\xBF");
    for (qsizetype at = bytes.startsWith(mark) ? mark.size() : 0; at < bytes.size();) {
        const qsizetype end = bytes.indexOf('\n', at);
        const qsizetype length = (end < 0 ? bytes.size() : end) - at;
        if (!addLine(settings.values, bytes.sliced(at, length).trimmed(), section))
            settings.isDamaged = true;
        at += length + 1;
    }
    return settings;
}

QByteArray writeSettings(const SettingsText& settings)
{
    QMap<QByteArray, QByteArray> sections;
    for (auto setting = settings.values.begin(); setting != settings.values.end(); ++setting) {
        const qsizetype slash = setting.key().indexOf('/');
        const QByteArray section = slash < 0 ? QByteArray() : setting.key().first(slash);
        sections[section] += setting.key().sliced(slash + 1) + '=' + setting.value() + '\n';
    }
    QByteArray bytes;
    for (auto section = sections.begin(); section != sections.end(); ++section) {
        const QByteArray name = section.key().isEmpty() ? QByteArray(general) : section.key();
        bytes += (bytes.isEmpty() ? "[" : "\n[") + name + "]\n" + section.value();
    }
    return bytes;
}

QStringList textsOfValue(const QByteArray& value)
{
    QStringList texts;
    if (value == noTexts)
        return texts;
    // A byte-order mark at the start is the first character of the text.
    QStringDecoder decode(QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom);
    const QString text = decode(value);
    ValueReader reader(text);
    do {
        QString next = reader.take();
        texts.append(next.startsWith("@@"_L1) ? next.sliced(1) : next);
    } while (reader.hasTakenComma());
    return texts;
}

QByteArray valueOfTexts(const QStringList& texts)
{
    if (texts.isEmpty())
        return noTexts;
    QByteArray value;
    for (const QString& text : texts) {
        if (!value.isEmpty())
            value += ", ";
        value += quoted(text.startsWith(u'@') ? u'@' + text : text);
    }
    return value;
}
