// SPDX-License-Identifier: MIT
#pragma once

#include <QMenu>

#include <functional>

class StateFile;

/// The submenu of the documents that were opened or saved last, updated when it opens.
class RecentMenu final : public QMenu
{
    Q_OBJECT

public:
    RecentMenu(StateFile& state, std::function<void(const QString& path)> open, QWidget* parent);

private:
    void list();

    StateFile& m_state;
    std::function<void(const QString& path)> m_open;
};
