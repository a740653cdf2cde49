// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>

class Logger;

/// The line under the list: what the last command could not read, with a link to the names and
/// reasons. Empty when there is nothing to say.
class StatusLine final : public QLabel
{
    Q_OBJECT

public:
    explicit StatusLine(const Logger& logger, QWidget* parent = nullptr);

private:
    void showReport();
    void showItems();

    const Logger& m_logger;
};
