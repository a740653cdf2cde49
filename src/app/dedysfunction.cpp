// SPDX-License-Identifier: MIT
#include "app/dedysfunction.h"

#include "platform/alerts.h"
#include "platform/oslogstore.h"
#include "platform/processrunner.h"

#include <QCoreApplication>

#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr double lookBackSeconds = 2.0;
constexpr int entriesRequired = 11;

struct Test
{
    bool (deDysfunction::*passes)();
    const char* message;
    bool quitsOnFailure;
};

constexpr auto tests = std::to_array<Test>({
    {&deDysfunction::isAdministrator,
     QT_TRANSLATE_NOOP("deDysfunction",
                       "Tessel can't get logs unless you're an admin user.\n"
                       "Please switch to an admin account and try again."),
     true},
    {&deDysfunction::hasPersistFiles,
     QT_TRANSLATE_NOOP("deDysfunction", "Tessel can't find any log files on your Mac."), true},
    {&deDysfunction::hasTimesyncFiles,
     QT_TRANSLATE_NOOP("deDysfunction", "Tessel can't find log timesync files on your Mac."), true},
    {&deDysfunction::storeHasEntries,
     QT_TRANSLATE_NOOP("deDysfunction",
                       "Tessel may not be able to find any log entries on your Mac."),
     false},
});

QString tr(const char* text)
{
    return QCoreApplication::translate("deDysfunction", text);
}

/// The text without a line end at its end.
QString withoutLineEnd(QString text)
{
    if (text.endsWith(u'\n'))
        text.chop(text.endsWith("\r\n"_L1) ? 2 : 1);
    return text;
}

} // namespace

deDysfunction::deDysfunction(const Platform& platform,
                             FileManager& files,
                             LocalStoreAccess access,
                             std::function<void()> quit)
    : m_platform(platform)
    , m_files(files)
    , m_access(std::move(access))
    , m_quit(std::move(quit))
{
}

bool deDysfunction::check()
{
    for (const Test& test : tests) {
        if ((this->*test.passes)())
            continue;
        showAlert(tr(test.message));
        if (test.quitsOnFailure)
            m_quit();
    }
    return true;
}

bool deDysfunction::isAdministrator()
{
    if (!m_access.administratorsGroup)
        return true;
    const auto output =
        m_platform.processes.output(u"/usr/bin/id"_s, {u"-G"_s, m_platform.processes.userName()});
    if (!output || !output->isValidUtf8())
        return false;
    const QStringList groups = withoutLineEnd(QString::fromUtf8(*output)).split(u' ');
    return groups.contains(*m_access.administratorsGroup);
}

bool deDysfunction::hasPersistFiles()
{
    return hasFiles("Persist");
}

bool deDysfunction::hasTimesyncFiles()
{
    return hasFiles("timesync");
}

bool deDysfunction::hasFiles(const char* folder)
{
    if (!m_access.folder)
        return true;
    const FilePath path = *m_access.folder / "diagnostics" / folder;
    if (!m_files.isFolder(path))
        return false;
    const auto contents = m_files.contentsOfFolder(path);
    return contents && !contents->empty();
}

bool deDysfunction::storeHasEntries()
{
    if (!m_access.folder)
        return true;
    const auto store = m_platform.logStores.local({});
    if (!store)
        return false;
    auto entries = store->getEntries(store->position(-lookBackSeconds));
    for (int i = 0; i < entriesRequired; ++i) {
        if (!entries.next())
            return false;
    }
    return true;
}

void deDysfunction::showAlert(const QString& message)
{
    m_platform.alerts.critical(tr(QT_TRANSLATE_NOOP("deDysfunction", "An error occurred:")),
                               message);
}
