// SPDX-License-Identifier: MIT
#pragma once

#include "tools/logfoldertool.h"

/// The model of the logarchive tool, which builds log archives and looks into them.
class Archiver final : public LogFolderTool
{
    Q_OBJECT

public:
    static std::shared_ptr<Archiver> make(const Platform& platform, FileManager& files);

    /// Asks for a folder that holds "uuidtext" and "diagnostics" and for a place, and builds an
    /// archive of the one at the other. With `debug` the text names every step.
    void createArchive(bool debug);

private:
    Archiver(const Platform& platform, FileManager& files);

    void askForDestination(const FilePath& source, bool debug);
};
