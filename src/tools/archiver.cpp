// SPDX-License-Identifier: MIT
#include "tools/archiver.h"

#include "platform/clock.h"
#include "tools/archivebuild.h"

using namespace Qt::StringLiterals;

std::shared_ptr<Archiver> Archiver::make(const Platform& platform, FileManager& files)
{
    return std::shared_ptr<Archiver>(new Archiver(platform, files));
}

Archiver::Archiver(const Platform& platform, FileManager& files)
    : LogFolderTool(
        platform, files, {ContentType::LogArchive, false, "Extra", u"ArchiveAnalysis.txt"_s})
{
}

void Archiver::createArchive(bool debug)
{
    OpenPanelRequest request;
    request.contentType = ContentType::Folder;
    request.showsHidden = true;
    open(request, [this, debug](const QUrl& location) {
        const FilePath source = filePath(location);
        setTheOutputText(u"Source: "_s + shownPath(source) + u'\n');
        askForDestination(source, debug);
    });
}

void Archiver::askForDestination(const FilePath& source, bool debug)
{
    const SavePanelRequest request{ContentType::LogArchive,
                                   shownPath(source.filename()) + u".logarchive"_s};
    save(request, [this, source, debug](const QUrl& location) {
        const FilePath destination = filePath(location);
        append(u"Destination:"_s + shownPath(destination) + u'\n');
        ArchiveBuild build(files(), source, destination, debug,
                           {[this](const QString& text) { append(text); },
                            [this](const CopyProgress& progress) { Q_EMIT copied(progress); }});
        build.copyLogs();
        build.writeInfo(platform().clock.tickCount());
        build.finish();
    });
}
