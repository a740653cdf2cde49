// SPDX-License-Identifier: MIT
#include "settings/bindings.h"

#include "platform/desktop/documenttext.h"

#include <QCheckBox>
#include <QLineEdit>

#include <algorithm>
#include <limits>

namespace {

/// Calls `show` whenever the key is written, for as long as `control` lives. What was typed is on
/// disk when the control's window is closed.
template <typename Show>
void follow(QObject* control, UserDefaults& defaults, QLatin1StringView key, Show show)
{
    QObject::connect(&defaults, &UserDefaults::changed, control,
                     [key, show](const QString& written) {
                         if (written == key)
                             show();
                     });
    QObject::connect(control, &QObject::destroyed, &defaults, &UserDefaults::save);
}

QString storedText(const UserDefaults& defaults, const preferences::TextKey& preference)
{
    return defaults.string(preference.key).value_or(QString());
}

void showText(QLineEdit* field, const QString& text)
{
    if (field->text() == text)
        return;
    const qsizetype cursor = field->cursorPosition();
    field->setText(text);
    field->setCursorPosition(static_cast<int>(std::min(cursor, text.size())));
}

} // namespace

// A control also signals changes that come from the store. They are recognised by comparison with
// the stored value: so an absent key stays absent, and a stored text that the control shows in
// another form stays as it is.

void bind(QLineEdit* field, UserDefaults& defaults, const preferences::TextKey& preference)
{
    const auto stored = [&defaults, preference] { return storedText(defaults, preference); };
    const auto show = [field, stored] { showText(field, stored()); };
    field->setMaxLength(std::numeric_limits<int>::max()); // a longer text would be cut
    show();
    follow(field, defaults, preference.key, show);
    QObject::connect(field, &QLineEdit::textChanged, &defaults,
                     [&defaults, preference, stored](const QString& text) {
                         if (text != stored())
                             defaults.set(preference.key, text);
                     });
}

void bind(QCheckBox* control, UserDefaults& defaults, const preferences::SwitchKey& preference)
{
    const auto stored = [&defaults, preference] {
        return defaults.boolean(preference.key).value_or(preference.shownWhenAbsent);
    };
    const auto show = [control, stored] { control->setChecked(stored()); };
    show();
    follow(control, defaults, preference.key, show);
    QObject::connect(control, &QCheckBox::toggled, &defaults,
                     [&defaults, preference, stored](bool on) {
                         if (on != stored())
                             defaults.set(preference.key, on);
                     });
}

void bind(QTextDocument* document, UserDefaults& defaults, const preferences::TextKey& preference)
{
    const auto stored = [&defaults, preference] { return storedText(defaults, preference); };
    bindText(document, stored,
             [&defaults, preference](const QString& text) { defaults.set(preference.key, text); });
    follow(document, defaults, preference.key,
           [document, stored] { showText(document, stored()); });
}
