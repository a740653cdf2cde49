// SPDX-License-Identifier: MIT
#include "mainwindow/rowlayout.h"

#include "platform/desktop/documenttext.h"

#include <QFontInfo>
#include <QTextLayout>

#include <algorithm>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype longestText = 4000; ///< characters drawn of one text; the tool tip has the rest
constexpr qreal padding = 2;
constexpr char16_t lineBreakMark = u'⏎';
constexpr char16_t emojiForm = u'\uFE0F'; ///< after a character, selects its emoji form

bool isLineBreak(QChar c)
{
    return c == u'\n' || c == u'\r' || c == u'\u2028' || c == u'\u2029';
}

/// The beginning of the text, at most `characters` and `longestText`, in whole characters.
QString beginning(std::string_view utf8, qsizetype characters)
{
    constexpr qsizetype longestCharacter = 4; // bytes in UTF-8
    const qsizetype limit = std::min(characters, longestText);
    std::size_t size = std::min(utf8.size(), static_cast<std::size_t>(limit * longestCharacter));
    while (size < utf8.size() && size > 0
           && (static_cast<unsigned char>(utf8[size]) & 0xC0) == 0x80)
        --size;
    QString text = utf16(utf8.substr(0, size));
    if (text.size() <= limit && size == utf8.size())
        return text;
    text.truncate(limit);
    if (!text.isEmpty() && text.back().isHighSurrogate())
        text.chop(1);
    if (limit == longestText)
        text += u'…';
    return text;
}

/// Makes control characters visible: tabs become a blank, others their pictures. Controls that
/// change the direction of text are replaced.
void showControls(QString& text)
{
    replaceDirectionControls(text);
    constexpr char16_t controlPictures = 0x2400;
    constexpr char16_t deletePicture = 0x2421;
    for (QChar& c : text) {
        if (c == u'\t')
            c = u' ';
        else if (c < u' ' && !isLineBreak(c))
            c = QChar(controlPictures + c.unicode());
        else if (c == u'\x7f')
            c = QChar(deletePicture);
    }
}

/// The end of an emoji whose form selector is before `at`, with all emoji that are joined to it.
qsizetype endOfEmoji(const QString& text, qsizetype at)
{
    constexpr char16_t joiner = u'\u200D';
    constexpr char16_t keycap = u'\u20E3';
    while (at < text.size()) {
        if (text.at(at) == keycap || text.at(at) == emojiForm)
            at += 1;
        else if (text.at(at) == joiner && at + 1 < text.size())
            at += text.at(at + 1).isHighSurrogate() ? 3 : 2;
        else
            break;
    }
    return std::min(at, text.size());
}

/// The end and the kind of the run that begins at `from`. A character before the form selector is
/// an emoji; the toolkit does not choose the emoji font for it.
std::pair<qsizetype, RowRun::Kind> nextRun(const QString& text, qsizetype from)
{
    if (isLineBreak(text.at(from))) {
        const bool isPair = text.at(from) == u'\r' && text.mid(from + 1, 1) == u'\n';
        return {from + (isPair ? 2 : 1), RowRun::BreakMark};
    }
    for (qsizetype i = from; i < text.size(); ++i) {
        if (isLineBreak(text.at(i)))
            return {i, RowRun::Letters};
        if (i + 1 == text.size() || text.at(i + 1) != emojiForm)
            continue;
        const qsizetype start = i - (i > from && text.at(i).isLowSurrogate() ? 1 : 0);
        if (start > from)
            return {start, RowRun::Letters};
        return {endOfEmoji(text, i + 2), RowRun::Emoji};
    }
    return {text.size(), RowRun::Letters};
}

QString allMarkers()
{
    QString markers = QString::fromUtf16(noteMarker) + lineBreakMark;
    for (const qint64 type :
         {LogMessageEntry, ActivityEntry, BoundaryEntry, SignpostEntry, OtherEntry})
        markers += kindMarker(type);
    return markers;
}

QFont emojiFont(QFont font)
{
    font.setFamilies(QStringList{u"Noto Color Emoji"_s} + font.families());
    return font;
}

/// Ascent and descent of a line with letters and every marker: emoji come from another font and are
/// taller.
std::pair<qreal, qreal> lineExtent(const QFont& font)
{
    QTextLayout layout(u"Åg|"_s + allMarkers(), font);
    layout.beginLayout();
    const QTextLine line = layout.createLine();
    layout.endLayout();
    return {line.ascent(), line.descent()};
}

} // namespace

RowLayout::RowLayout(const QFont& font, qreal spacing)
    : m_font(font)
    , m_emojiFont(emojiFont(font))
    , m_metrics(font)
    , m_emojiMetrics(m_emojiFont)
    , m_cell(QFontInfo(font).fixedPitch() ? m_metrics.horizontalAdvance(u'x') : 0)
    , m_spacing(std::max(spacing, m_metrics.horizontalAdvance(u' ')))
{
    const auto [ascent, descent] = lineExtent(font);
    m_height = std::ceil(ascent + descent + 2 * padding);
    m_baseLine = std::round(padding + ascent);
}

qreal RowLayout::advance(const QString& text, RowRun::Kind kind) const
{
    if (kind == RowRun::Emoji)
        return m_emojiMetrics.horizontalAdvance(text);
    const auto isPlain = [](QChar c) { return c >= u' ' && c <= u'~'; };
    if (m_cell > 0 && std::all_of(text.begin(), text.end(), isPlain))
        return m_cell * static_cast<qreal>(text.size());
    return m_metrics.horizontalAdvance(text);
}

/// Calls `place` with each run of the row that begins before `end`. Returns the end of the last.
template <typename Place>
qreal RowLayout::walk(const MessageRow& row, qreal end, Place place) const
{
    qreal x = -m_spacing;
    for (const MessagePiece& piece : row.pieces()) {
        x += m_spacing;
        if (x >= end)
            break;
        // Twice the average width leaves room for narrow characters. Only texts of characters
        // without any width can be cut too early.
        const qreal cells =
            std::min(2 * (end - x) / m_metrics.averageCharWidth() + 8, qreal(longestText));
        QString text = beginning(piece.text.utf8(), static_cast<qsizetype>(cells));
        showControls(text);
        for (qsizetype from = 0; from < text.size() && x < end;) {
            const auto [to, kind] = nextRun(text, from);
            const QString run =
                kind == RowRun::BreakMark ? QString(lineBreakMark) : text.mid(from, to - from);
            place(RowRun{x, run, piece.colour, kind});
            x += advance(run, kind);
            from = to;
        }
    }
    return x;
}

QList<RowRun> RowLayout::runs(const MessageRow& row, qreal end) const
{
    QList<RowRun> runs;
    walk(row, end, [&runs](RowRun run) { runs.append(std::move(run)); });
    return runs;
}

qreal RowLayout::width(const MessageRow& row) const
{
    return walk(row, std::numeric_limits<qreal>::infinity(), [](const RowRun&) {});
}
