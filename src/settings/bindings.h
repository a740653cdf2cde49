// SPDX-License-Identifier: MIT
#pragma once

#include "settings/preferences.h"

class QCheckBox;
class QLineEdit;
class QTextDocument;

/// Controls bound to a stored preference: a control shows the stored value, writes it on every
/// change of its own, and follows writes from elsewhere without moving the user's cursor. A binding
/// writes nothing until the user changes the control. `defaults` must outlive the controls.

/// The field is empty while its key is absent.
void bind(QLineEdit* field, UserDefaults& defaults, const preferences::TextKey& preference);

void bind(QCheckBox* control, UserDefaults& defaults, const preferences::SwitchKey& preference);

/// Binds the text of an editor, given its document.
void bind(QTextDocument* document, UserDefaults& defaults, const preferences::TextKey& preference);
