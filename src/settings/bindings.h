// SPDX-License-Identifier: MIT
#pragma once

#include "settings/preferences.h"

#include <QTextDocument>

class QCheckBox;
class QLineEdit;

/// Controls bound to a stored preference: a control shows the stored value, writes it on every
/// change of its own, and follows writes from elsewhere without moving the user's cursor. A binding
/// writes nothing until the user changes the control. `defaults` must outlive the controls.

/// The field is empty while its key is absent.
void bind(QLineEdit* field, UserDefaults& defaults, const preferences::TextKey& preference);

void bind(QCheckBox* control, UserDefaults& defaults, const preferences::SwitchKey& preference);

/// Binds the text of an editor, given its document.
void bind(QTextDocument* document, UserDefaults& defaults, const preferences::TextKey& preference);

/// The text of an editor to the character. (QTextDocument::toPlainText() turns no-break spaces and
/// line separators into other characters.)
QString exactText(const QTextDocument* document);

/// Makes the editor show the text, changing only the part that differs: cursors in the rest stay
/// where they are, and the change can be undone.
void showText(QTextDocument* document, const QString& text);
