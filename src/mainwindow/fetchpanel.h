// SPDX-License-Identifier: MIT
#pragma once

#include "model/fetchprogress.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProgressDialog>

#include <chrono>
#include <memory>

/// Shows that a fetch runs: the wait cursor at once, a modal panel with Cancel after a second.
/// Lives as long as the fetch.
class FetchPanel final
{
    Q_DECLARE_TR_FUNCTIONS(FetchPanel)

public:
    explicit FetchPanel(QWidget* window,
                        std::chrono::milliseconds patience = std::chrono::seconds(1));
    ~FetchPanel();
    Q_DISABLE_COPY_MOVE(FetchPanel)

    /// Shows how far the fetch has come. Returns false when the user has cancelled it.
    bool update(const FetchProgress& progress);

private:
    void show();

    QWidget* m_window;
    std::chrono::milliseconds m_patience;
    std::unique_ptr<QProgressDialog> m_dialog;
    QElapsedTimer m_running;
};
