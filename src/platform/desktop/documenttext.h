// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <functional>

class QTextDocument;

/// Puts U+FFFD in the place of each character that embeds, overrides or isolates a direction: text
/// from a log or a file name could otherwise turn the sentence round that it stands in.
void replaceDirectionControls(QString& text);

/// The text of an editor, given its document, to the character. (QTextDocument::toPlainText() turns
/// no-break spaces and line separators into other characters.)
QString exactText(const QTextDocument* document);

/// Makes the editor show the text, changing only the part that differs: cursors in the rest stay
/// where they are, and the change can be undone.
void showText(QTextDocument* document, const QString& text);

/// Shows the text that `load` gives, and hands every change by the user to `store`. Does not follow
/// later changes of the loaded text: for that, call showText().
void bindText(QTextDocument* document,
              const std::function<QString()>& load,
              const std::function<void(const QString&)>& store);
