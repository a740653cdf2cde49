// SPDX-License-Identifier: MIT
#include "model/entryrichtext.h"

#include "model/decimal.h"
#include "platform/filereplacement.h"

#include <QFile>

#include <array>
#include <optional>

namespace {

/// A field of an entry and the colour of its piece.
struct Piece
{
    Text LogEntry::*field;
    ColourRole colour;
};

constexpr std::array<Piece, 7> logPieces{{
    {&LogEntry::category, ColourRole::Green},
    {&LogEntry::level, ColourRole::Text},
    {&LogEntry::sender, ColourRole::Red},
    {&LogEntry::process, ColourRole::Blue},
    {&LogEntry::processIdentifier, ColourRole::Blue},
    {&LogEntry::subsystem, ColourRole::Yellow},
    {&LogEntry::threadIdentifier, ColourRole::Green},
}};

constexpr std::array<Piece, 6> activityPieces{{
    {&LogEntry::activityIdentifier, ColourRole::Text},
    {&LogEntry::parentActivityIdentifier, ColourRole::Text},
    {&LogEntry::sender, ColourRole::Red},
    {&LogEntry::process, ColourRole::Blue},
    {&LogEntry::processIdentifier, ColourRole::Blue},
    {&LogEntry::threadIdentifier, ColourRole::Green},
}};

constexpr std::array<Piece, 9> signpostPieces{{
    {&LogEntry::activityIdentifier, ColourRole::Text},
    {&LogEntry::category, ColourRole::Green},
    {&LogEntry::sender, ColourRole::Red},
    {&LogEntry::process, ColourRole::Blue},
    {&LogEntry::processIdentifier, ColourRole::Blue},
    {&LogEntry::signpostIdentifier, ColourRole::Green},
    {&LogEntry::signpostName, ColourRole::Blue},
    {&LogEntry::signpostType, ColourRole::Red},
    {&LogEntry::subsystem, ColourRole::Yellow},
}};

/// Puts the runs of one line together.
class Line
{
public:
    explicit Line(const LogEntry& entry) : m_entry(entry) {}

    void add(const Text& field, ColourRole colour, char end = ' ')
    {
        std::string& text = m_runs.emplace_back(TextRun{std::string(field.utf8()), colour}).text;
        text += end;
    }

    template <std::size_t count>
    void add(const std::array<Piece, count>& pieces)
    {
        for (const Piece& piece : pieces)
            add(m_entry.*piece.field, piece.colour);
    }

    void addMarker(ColourRole colour = ColourRole::Text)
    {
        m_runs.push_back({kindMarker(m_entry.type).toStdString() + "  ", colour});
    }

    /// The last field, and the note when there is one.
    void end(const Text& field, ColourRole colour)
    {
        add(field, colour, m_entry.userNote ? ' ' : '\n');
        if (!m_entry.userNote)
            return;
        const std::string marker = QString::fromUtf16(noteMarker).toStdString();
        m_runs.push_back({marker + std::string(m_entry.userNote->utf8()) + '\n', ColourRole::Blue});
    }

    std::vector<TextRun> runs() && { return std::move(m_runs); }

private:
    const LogEntry& m_entry;
    std::vector<TextRun> m_runs;
};

/// Turns runs into RTF, a buffer at a time.
class RichTextWriter
{
public:
    explicit RichTextWriter(QIODevice& to) : m_to(to)
    {
        m_buffer.reserve(bufferSize + bufferSize / 4);
        m_buffer += header;
    }

    bool addLine(const std::vector<TextRun>& runs)
    {
        m_colour.reset(); // each line by itself: not all readers carry a colour over its border
        for (const TextRun& run : runs) {
            setColour(run.colour);
            addText(run.text);
        }
        // Line feeds were written as breaks within the line: the last one ends it.
        m_buffer.replace(m_buffer.size() - lineBreak.size(), lineBreak.size(), "\\par\n");
        return m_buffer.size() < bufferSize || flush();
    }

    bool finish()
    {
        m_buffer += "}\n";
        return flush();
    }

private:
    static constexpr std::size_t bufferSize = 1 << 20;
    static constexpr std::string_view lineBreak = "\\line\n";
    /// \uc1: one character, for readers without Unicode, follows each escape. It is the question
    /// mark, itself escaped: some readers drop the whole word that begins with a plain one.
    /// Colour 0 is left to the reader, which takes the page's own text colour. LibreOffice widens
    /// runs of spaces in a document that does not say what made it.
    static constexpr std::string_view header =
        "{\\rtf1\\ansi\\ansicpg1252\\deff0\\uc1\n"
        "{\\*\\generator Tessel;}\n"
        "{\\fonttbl{\\f0\\fswiss Helvetica;}}\n"
        "{\\colortbl;\\red23\\green107\\blue37;\\red179\\green19\\blue26;"
        "\\red10\\green88\\blue202;\\red110\\green82\\blue0;}\n"
        "\\pard\\plain\\f0\n";

    void setColour(ColourRole colour)
    {
        if (colour == m_colour)
            return;
        m_colour = colour;
        m_buffer += "\\cf";
        m_buffer += static_cast<char>('0' + static_cast<int>(colour));
        m_buffer += ' ';
    }

    void addText(const std::string& text)
    {
        const QString characters = QString::fromStdString(text);
        for (qsizetype i = 0; i < characters.size(); ++i) {
            // Both halves of a CR LF would make two breaks.
            const char16_t c = characters.at(i).unicode();
            if (c == u'\r' && i + 1 < characters.size() && characters.at(i + 1) == u'\n')
                continue;
            addCharacter(c);
        }
    }

    void addCharacter(char16_t c)
    {
        constexpr char16_t controlPictures = 0x2400;
        if (c == u'\n' || c == u'\r')
            m_buffer += lineBreak;
        else if (c == u'\t')
            m_buffer += "\\tab ";
        else if (c == u'\\' || c == u'{' || c == u'}')
            (m_buffer += '\\') += static_cast<char>(c);
        else if (c < u' ') // no reader takes these
            addEscape(static_cast<char16_t>(controlPictures + c));
        else if (c < 0x7f)
            m_buffer += static_cast<char>(c);
        else
            addEscape(c);
    }

    void addEscape(char16_t c)
    {
        m_buffer += "\\u";
        m_buffer += Decimal(static_cast<std::int16_t>(c)).view();
        m_buffer += "\\'3f";
    }

    bool flush()
    {
        const auto size = static_cast<qint64>(m_buffer.size());
        const bool isWritten = m_to.write(m_buffer.data(), size) == size;
        m_buffer.clear();
        return isWritten;
    }

    QIODevice& m_to;
    std::string m_buffer;
    std::optional<ColourRole> m_colour;
};

} // namespace

std::vector<TextRun> richTextRuns(const LogEntry& entry)
{
    Line line(entry);
    line.add(entry.date, ColourRole::Text);
    const bool isKnown = entry.type >= LogMessageEntry && entry.type <= SignpostEntry;
    line.addMarker(isKnown ? ColourRole::Text : ColourRole::Red);
    switch (entry.type) {
    case LogMessageEntry:
        if (!entry.activityIdentifier.isEmpty())
            line.add(entry.activityIdentifier, ColourRole::Text);
        line.add(logPieces);
        break;
    case ActivityEntry: line.add(activityPieces); break;
    case SignpostEntry: line.add(signpostPieces); break;
    default: break;
    }
    if (entry.type == SignpostEntry)
        line.end(entry.threadIdentifier, ColourRole::Green);
    else
        line.end(entry.composedMessage, ColourRole::Text);
    return std::move(line).runs();
}

bool writeRichText(const QList<LogEntry>& entries, QIODevice& to)
{
    RichTextWriter writer(to);
    for (const LogEntry& entry : entries) {
        if (!writer.addLine(richTextRuns(entry)))
            return false;
    }
    return writer.finish();
}

Result<void> saveRichText(const QList<LogEntry>& entries, const QString& path)
{
    return replaceFile(QFile::encodeName(path).toStdString(),
                       [&](QIODevice& file) { return writeRichText(entries, file); });
}
