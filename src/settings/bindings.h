// SPDX-License-Identifier: MIT
#pragma once

#include "settings/preferences.h"

class QCheckBox;
class QLineEdit;
class QTextDocument;

/// Binds a control to a stored preference. The control shows the stored value, stores each change
/// that the user makes, and shows later values from elsewhere without moving the cursor. Nothing is
/// stored before the user changes the control. `defaults` must outlive the control.

/// The field is empty while its key is absent.
void bind(QLineEdit* field, UserDefaults& defaults, const preferences::TextKey& preference);

void bind(QCheckBox* control, UserDefaults& defaults, const preferences::SwitchKey& preference);

/// Binds the text of an editor, given its document.
void bind(QTextDocument* document, UserDefaults& defaults, const preferences::TextKey& preference);
