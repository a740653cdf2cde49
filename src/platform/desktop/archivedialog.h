// SPDX-License-Identifier: MIT
#pragma once

#include <QFileDialog>

/// Chooses a log archive. An archive is a folder whose name ends in ".logarchive"; it is shown and
/// picked as one item and never entered. Other folders are entered and never picked.
class ArchiveDialog final : public QFileDialog
{
    Q_OBJECT

public:
    explicit ArchiveDialog(QWidget* parent = nullptr);

    static bool isArchive(const QString& path);

    void accept() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool pick(const QString& path);
};
