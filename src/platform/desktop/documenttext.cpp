// SPDX-License-Identifier: MIT
#include "platform/desktop/documenttext.h"

#include <QScopedValueRollback>
#include <QTextCursor>
#include <QTextDocument>

#include <algorithm>
#include <iterator>

using namespace Qt::StringLiterals;

namespace {

/// The document that showText() is changing, and the one whose text is being stored.
const QTextDocument* shownNow = nullptr;
const QTextDocument* storedNow = nullptr;

/// The text as an editor can hold it: with each kind of paragraph end a line feed.
QString asHeldByEditor(QString text)
{
    text.replace("\r\n"_L1, "\n"_L1);
    for (const QChar paragraphEnd : {u'\r', u'\u2029', u'\ufdd0', u'\ufdd1'})
        text.replace(paragraphEnd, u'\n');
    return text;
}

} // namespace

void replaceDirectionControls(QString& text)
{
    for (QChar& c : text) {
        if ((c >= u'\u202A' && c <= u'\u202E') || (c >= u'\u2066' && c <= u'\u2069'))
            c = QChar::ReplacementCharacter;
    }
}

QString exactText(const QTextDocument* document)
{
    return document->toRawText().replace(QChar::ParagraphSeparator, u'\n');
}

void showText(QTextDocument* document, const QString& text)
{
    if (document == storedNow)
        return; // it holds the text; comparing long ones at each key would take long
    const QString shown = exactText(document);
    const QString wanted = asHeldByEditor(text);
    if (shown == wanted)
        return;
    const auto [shownFrom, wantedFrom] =
        std::mismatch(shown.begin(), shown.end(), wanted.begin(), wanted.end());
    const auto [shownTo, wantedTo] =
        std::mismatch(shown.rbegin(), std::make_reverse_iterator(shownFrom), wanted.rbegin(),
                      std::make_reverse_iterator(wantedFrom));
    const QScopedValueRollback<const QTextDocument*> following(shownNow, document);
    QTextCursor cursor(document);
    cursor.setPosition(static_cast<int>(shownFrom - shown.begin()));
    cursor.setPosition(static_cast<int>(shownTo.base() - shown.begin()), QTextCursor::KeepAnchor);
    cursor.insertText(wanted.mid(wantedFrom - wanted.begin(), wantedTo.base() - wantedFrom));
}

void bindText(QTextDocument* document,
              const std::function<QString()>& load,
              const std::function<void(const QString&)>& store)
{
    showText(document, load());
    document->clearUndoRedoStacks(); // undoing the load would store an empty text
    QObject::connect(document, &QTextDocument::contentsChanged, document, [document, load, store] {
        // A change that only follows the loaded text is not the user's. Nor is one of formats
        // alone; the editor may hold the loaded text in another form.
        if (document == shownNow)
            return;
        const QString text = exactText(document);
        if (text == asHeldByEditor(load()))
            return;
        const QScopedValueRollback<const QTextDocument*> storing(storedNow, document);
        store(text);
    });
}
