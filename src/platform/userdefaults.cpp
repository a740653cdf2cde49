// SPDX-License-Identifier: MIT
#include "platform/userdefaults.h"

#include <QFile>
#include <QStandardPaths>

namespace {

/// Says whether the file holds what no settings file holds. The parser of QSettings takes almost
/// anything, and would write back what it made of it.
bool isDamaged(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false; // absent, or for the caller to find out
    const QByteArray bytes = file.readAll();
    return !bytes.isValidUtf8() || bytes.contains('\0');
}

// QSettings drops a byte-order mark that begins a value. In the file each is therefore written as
// a private-use character and a digit, and that character itself likewise.
constexpr QChar byteOrderMark = u'\ufeff';
constexpr QChar escape = u'\ue0fe';
const QString escapedEscape = QStringLiteral("\ue0fe0");
const QString escapedMark = QStringLiteral("\ue0fe1");

QString asInFile(QString text)
{
    return text.replace(escape, escapedEscape).replace(byteOrderMark, escapedMark);
}

QString fromFile(QString text)
{
    return text.replace(escapedMark, QString(byteOrderMark))
        .replace(escapedEscape, QString(escape));
}

/// The value with `convert` applied to its text or texts.
template <typename Convert>
QVariant converted(const QVariant& value, Convert convert)
{
    if (value.typeId() == QMetaType::QString)
        return convert(value.toString());
    if (value.typeId() != QMetaType::QStringList)
        return value;
    QStringList texts = value.toStringList();
    for (QString& text : texts)
        text = convert(text);
    return texts;
}

} // namespace

QString preferencesFile()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)
           + QStringLiteral("/Tessel/Tessel.conf");
}

UserDefaults::UserDefaults(const QString& path, QObject* parent)
    : QObject(parent)
    , m_settings(path, QSettings::IniFormat)
{
    const QStringList keys = m_settings.allKeys(); // parses the whole file, and so sets the status
    if (m_settings.status() == QSettings::FormatError || isDamaged(path)) {
        m_memory.emplace();
        for (const QString& key : keys)
            m_memory->insert(key, converted(m_settings.value(key), fromFile));
        fail(tr("The settings file “%1” is damaged. It stays as it is: repair or remove it to have "
                "settings kept again. Until then, changes of settings last until Tessel quits."));
    } else if (m_settings.status() == QSettings::AccessError) {
        fail(tr("The settings file “%1” cannot be read. All settings begin as in a new "
                "installation, and changes last until Tessel quits."));
    }
}

std::optional<QString> UserDefaults::string(const QString& key) const
{
    const QVariant stored = value(key);
    if (stored.typeId() != QMetaType::QString)
        return std::nullopt;
    return stored.toString();
}

std::optional<bool> UserDefaults::boolean(const QString& key) const
{
    const QVariant stored = value(key);
    if (stored.typeId() == QMetaType::Bool)
        return stored.toBool();
    // The file keeps no types: what was written as a Boolean is read back as one of these words.
    if (stored == QStringLiteral("true") || stored == QStringLiteral("1"))
        return true;
    if (stored == QStringLiteral("false") || stored == QStringLiteral("0"))
        return false;
    return std::nullopt;
}

std::optional<QStringList> UserDefaults::stringArray(const QString& key) const
{
    const QVariant stored = value(key);
    // A list of one is read back from the file as a string, an empty one as an invalid value.
    if (stored.typeId() == QMetaType::QStringList || stored.typeId() == QMetaType::QString)
        return stored.toStringList();
    if (!stored.isValid() && (m_memory ? m_memory->contains(key) : m_settings.contains(key)))
        return QStringList();
    return std::nullopt;
}

void UserDefaults::set(const QString& key, const QString& value)
{
    if (string(key) != value)
        write(key, value);
}

void UserDefaults::set(const QString& key, bool value)
{
    if (boolean(key) != value)
        write(key, value);
}

void UserDefaults::set(const QString& key, const QStringList& value)
{
    if (stringArray(key) != value)
        write(key, value);
}

QVariant UserDefaults::value(const QString& key) const
{
    return m_memory ? m_memory->value(key) : converted(m_settings.value(key), fromFile);
}

void UserDefaults::write(const QString& key, const QVariant& value)
{
    if (m_memory) {
        m_memory->insert(key, value);
    } else {
        m_settings.setValue(key, converted(value, asInFile));
        m_settings.sync();
        if (m_settings.status() != QSettings::NoError)
            fail(tr("The settings file “%1” cannot be written. Changes of settings last until "
                    "Tessel quits."));
    }
    Q_EMIT changed(key);
}

void UserDefaults::fail(const QString& sentences)
{
    if (m_saidFailed)
        return;
    m_saidFailed = true;
    const QString description = sentences.arg(m_settings.fileName());
    // Sent from the event loop, so that whoever made this store has had the time to listen.
    QMetaObject::invokeMethod(
        this, [this, description] { Q_EMIT failed(description); }, Qt::QueuedConnection);
}
