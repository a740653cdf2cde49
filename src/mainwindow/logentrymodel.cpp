// SPDX-License-Identifier: MIT
#include "mainwindow/logentrymodel.h"

#include "platform/desktop/documenttext.h"

#include <limits>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype longestToolTip = 10'000;

/// The whole message and the note, as rich text because plain text does not wrap in a tool tip.
QString toolTip(const LogEntry& entry)
{
    QString text = entry.composedMessage.toString();
    if (entry.userNote && !entry.userNote->isEmpty())
        text += u"\n\n"_s + QString::fromUtf16(noteMarker) + entry.userNote->toString();
    if (text.isEmpty())
        return {};
    if (text.size() > longestToolTip) {
        const bool halvesAPair = text.at(longestToolTip - 1).isHighSurrogate();
        text = text.left(longestToolTip - (halvesAPair ? 1 : 0)) + u" …"_s;
    }
    replaceDirectionControls(text);
    return u"<p style=\"white-space:pre-wrap\">"_s + text.toHtmlEscaped() + u"</p>"_s;
}

} // namespace

void LogEntryModel::show(const QList<LogEntry>& entries)
{
    beginResetModel();
    m_entries = &entries;
    m_rows = static_cast<int>(qMin<qsizetype>(entries.size(), std::numeric_limits<int>::max()));
    endResetModel();
}

void LogEntryModel::entriesEdited()
{
    if (m_rows > 0)
        Q_EMIT dataChanged(index(0), index(m_rows - 1));
}

void LogEntryModel::setFullMode(bool fullMode)
{
    if (m_fullMode == fullMode)
        return;
    m_fullMode = fullMode;
    entriesEdited();
}

int LogEntryModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_rows;
}

QVariant LogEntryModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    switch (role) {
    case Qt::DisplayRole:
    case Qt::AccessibleTextRole: return messageRow(index.row()).spokenLine();
    case Qt::ToolTipRole: return toolTip(entry(index.row()));
    default: return {};
    }
}
