// SPDX-License-Identifier: MIT
#pragma once

#include <QElapsedTimer>
#include <QProgressDialog>

#include <chrono>
#include <memory>
#include <optional>

/// Shows that long work runs: the wait cursor at once, a modal panel after a second. Lives as long
/// as the work.
class WorkPanel final
{
public:
    enum class Cancel { None, Button };

    WorkPanel(QWidget* window,
              QString title,
              Cancel cancel,
              std::chrono::milliseconds patience = std::chrono::seconds(1));
    ~WorkPanel();
    Q_DISABLE_COPY_MOVE(WorkPanel)

    /// Shows how far the work has come: in words, and as a fraction, always or never. May run
    /// events. Returns false when the user has cancelled.
    bool update(const QString& text, std::optional<double> fraction = std::nullopt);

private:
    void show(bool knowsTheWhole);

    QWidget* m_window;
    QString m_title;
    Cancel m_cancel;
    std::chrono::milliseconds m_pause; ///< until something is shown
    QElapsedTimer m_pausing;
    std::unique_ptr<QProgressDialog> m_dialog;
};
