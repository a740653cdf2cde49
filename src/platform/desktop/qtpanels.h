// SPDX-License-Identifier: MIT
#pragma once

#include "platform/panels.h"

class QFileDialog;
class StateFile;

/// Panels as file dialogs over the active window, starting in the last folder used.
class QtPanels final : public Panels
{
public:
    explicit QtPanels(StateFile& state) : m_state(state) {}

    void open(const OpenPanelRequest& request, PanelCompletion completion) override;
    void save(const SavePanelRequest& request, PanelCompletion completion) override;

private:
    void show(QFileDialog* dialog, ContentType type, PanelCompletion completion);

    StateFile& m_state;
};
