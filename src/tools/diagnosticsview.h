// SPDX-License-Identifier: MIT
#pragma once

#include "tools/diagnoser.h"
#include "tools/toolview.h"

/// The window of the diagnostics tool.
class DiagnosticsView final : public ToolView
{
    Q_OBJECT

public:
    DiagnosticsView(const Platform& platform, FileManager& files, QWidget* parent = nullptr);

private:
    DiagnosticsView(const std::shared_ptr<Diagnoser>& diagnoser, QWidget* parent);
};
