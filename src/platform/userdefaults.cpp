// SPDX-License-Identifier: MIT
#include "platform/userdefaults.h"

#include <QStandardPaths>

namespace {

/// Typing pauses for this long now and then.
constexpr std::chrono::milliseconds moment{1000};
/// How long typing without a pause puts off writing.
constexpr std::chrono::milliseconds longestDelay{10'000};

const QString on = QStringLiteral("true");
const QString off = QStringLiteral("false");

} // namespace

QString preferencesFile()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)
           + QStringLiteral("/Tessel/Tessel.conf");
}

UserDefaults::UserDefaults(const QString& path, QObject* parent) : QObject(parent), m_file(path)
{
    m_idle.setSingleShot(true);
    connect(&m_idle, &QTimer::timeout, this, &UserDefaults::save);
    const SettingsFile::State state = m_file.state();
    if (state == SettingsFile::State::Damaged)
        fail(tr("The settings file “%1” is damaged. It stays as it is: repair or remove it to have "
                "settings kept again. Until then, changes of settings last until Tessel quits.")
                 .arg(path));
    else if (state == SettingsFile::State::Unreadable)
        fail(tr("The settings file “%1” cannot be read. All settings begin as in a new "
                "installation, and changes last until Tessel quits.")
                 .arg(path));
}

UserDefaults::~UserDefaults()
{
    save();
}

std::optional<QString> UserDefaults::string(const QString& key) const
{
    const auto stored = m_file.value(key);
    if (!stored || stored->size() != 1)
        return std::nullopt;
    return stored->first();
}

std::optional<bool> UserDefaults::boolean(const QString& key) const
{
    const auto stored = string(key);
    if (stored == on || stored == QStringLiteral("1"))
        return true;
    if (stored == off || stored == QStringLiteral("0"))
        return false;
    return std::nullopt;
}

std::optional<QStringList> UserDefaults::stringArray(const QString& key) const
{
    return m_file.value(key);
}

void UserDefaults::set(const QString& key, const QString& value)
{
    write(key, {value});
}

void UserDefaults::set(const QString& key, bool value)
{
    write(key, {value ? on : off});
}

void UserDefaults::set(const QString& key, const QStringList& value)
{
    write(key, value);
}

void UserDefaults::write(const QString& key, const QStringList& value)
{
    if (m_file.value(key) == value)
        return;
    m_file.set(key, value);
    saveSoon();
    Q_EMIT changed(key);
}

void UserDefaults::saveSoon()
{
    if (!m_idle.isActive())
        m_sinceUnsaved.start();
    const auto longestLeft = longestDelay - std::chrono::milliseconds(m_sinceUnsaved.elapsed());
    m_idle.start(std::clamp(longestLeft, std::chrono::milliseconds(0), moment));
}

void UserDefaults::save()
{
    m_idle.stop();
    check(m_file.save());
}

void UserDefaults::change(const std::function<void()>& change)
{
    const auto saved = m_file.change(change);
    m_idle.stop();
    check(saved);
}

void UserDefaults::check(const Result<void>& saved)
{
    if (!saved)
        fail(tr("The settings cannot be saved; changes last until Tessel quits. %1")
                 .arg(QString::fromStdString(saved.error().description)));
}

void UserDefaults::fail(const QString& description)
{
    if (m_saidFailed)
        return;
    m_saidFailed = true;
    // Sent from the event loop, so that whoever made this store has had the time to listen.
    QMetaObject::invokeMethod(
        this, [this, description] { Q_EMIT failed(description); }, Qt::QueuedConnection);
}
