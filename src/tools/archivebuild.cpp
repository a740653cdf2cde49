// SPDX-License-Identifier: MIT
#include "tools/archivebuild.h"

#include "platform/propertylist.h"

#include <QUuid>

#include <array>

using namespace Qt::StringLiterals;

namespace {

/// The name that every log data folder has on both sides.
constexpr std::array logFolders{"Persist", "Special", "Signpost", "HighVolume", "timesync"};
constexpr auto liveDataFile = "logdata.LiveData.tracev3";

QVariantMap infoDictionary(quint64 tickCount, const QVariantMap& version)
{
    const QVariantMap time{
        {u"ContinuousTime"_s, tickCount},
        {u"UUID"_s, QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper()}};
    const QVariantMap oldest{{u"OldestTimeRef"_s, time}};
    return {{u"EndTimeRef"_s, time},
            {u"LiveMetadata"_s, oldest},
            {u"OSArchiveVersion"_s, 4},
            {u"OSLoggingSupportProject"_s, u"libtrace-1147.80.3"_s},
            {u"OSLoggingSupportVersion"_s, 1147.8},
            {u"PersistMetadata"_s, oldest},
            {u"SpecialMetadata"_s, QVariantMap{{u"OldestTimeRef"_s, time}, {u"TTL"_s, version}}}};
}

} // namespace

void ArchiveBuild::copyLogs()
{
    m_isNew = !m_files.isFolder(m_destination);
    copy(m_source / "uuidtext", m_destination, CopiedTop::ToBeFilled);
    for (const char* name : logFolders)
        copy(m_source / "diagnostics" / name, m_destination / name, CopiedTop::Followed);
    const FilePath extra = m_destination / "Extra";
    reportStep(u"creating folder at "_s + shownPath(extra));
    if (reportFailure(m_files.createFolder(extra)))
        copyLooseFiles();
}

void ArchiveBuild::copyLooseFiles()
{
    const FilePath diagnostics = m_source / "diagnostics";
    reportStep(u"getting contents of folder at "_s + shownPath(diagnostics));
    const auto names = m_files.contentsOfFolder(diagnostics);
    if (!names) {
        reportFailure(tl::unexpected(names.error()));
        return;
    }
    const FilePath extra = m_destination / "Extra";
    for (const std::string& name : *names) {
        if (!m_files.isFolder(diagnostics / name))
            copy(diagnostics / name, (name == liveDataFile ? m_destination : extra) / name,
                 CopiedTop::AsItIs);
    }
}

void ArchiveBuild::copy(const FilePath& from, const FilePath& to, CopiedTop top)
{
    reportStep(u"copying from "_s + shownPath(from) + u" to "_s + shownPath(to));
    const CopyProgress before = m_copied;
    const auto failures = m_files.copyItem(from, to, top, [this, before](const CopyProgress& item) {
        m_copied = {before.items + item.items, before.bytes + item.bytes};
        m_reports.copied(m_copied);
    });
    for (const Failure& failure : failures)
        reportFailure(tl::unexpected(failure));
}

void ArchiveBuild::writeInfo(quint64 tickCount)
{
    QVariantMap version = versionDictionary();
    if (version.isEmpty())
        reportStep(u"theImportDict is empty or missing."_s);
    version.remove(u"Version"_s);
    reportStep(u"building export dictionary"_s);
    const auto xml = propertyListXml(infoDictionary(tickCount, version));
    const FilePath info = m_destination / "Info.plist";
    reportStep(u"writing export dictionary to "_s + shownPath(info));
    // A link of that name comes from "uuidtext", and may lead out of the archive.
    if (!xml || m_files.isLink(info) || !m_files.writeFile(info, *xml))
        m_reports.text(u"Couldn't save exported file."_s);
}

void ArchiveBuild::finish()
{
    if (m_isNew && m_files.isFolder(m_destination))
        reportFailure(m_files.finishFolder(m_source / "uuidtext", m_destination));
}

QVariantMap ArchiveBuild::versionDictionary()
{
    const FilePath path = m_destination / "Extra" / "version.plist";
    reportStep(u"opening property list at "_s + shownPath(path));
    const auto bytes = m_files.contentsOfFile(path);
    return bytes ? propertyListFrom(*bytes).value_or(QVariantMap()) : QVariantMap();
}

void ArchiveBuild::reportStep(const QString& step) const
{
    if (m_debug)
        m_reports.text(step + u'\n');
}

bool ArchiveBuild::reportFailure(const Result<void>& result) const
{
    if (!result)
        m_reports.text(QString::fromStdString(result.error().description));
    return result.has_value();
}
