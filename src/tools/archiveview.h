// SPDX-License-Identifier: MIT
#pragma once

#include "tools/archiver.h"
#include "tools/toolview.h"

/// The window of the logarchive tool.
class ArchiveView final : public ToolView
{
    Q_OBJECT

public:
    ArchiveView(const Platform& platform, FileManager& files, QWidget* parent = nullptr);

private:
    ArchiveView(const std::shared_ptr<Archiver>& archiver, QWidget* parent);
};
