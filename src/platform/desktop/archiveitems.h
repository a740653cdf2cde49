// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

class QFileDialog;

/// Makes a file dialog take log archives for single items: it shows them as such, and what would
/// enter one picks it. A log archive is a folder whose name ends in ".logarchive".
class ArchiveItems final : public QObject
{
    Q_OBJECT

public:
    explicit ArchiveItems(QFileDialog* dialog);

    static bool isArchive(const QString& path);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void pick(const QString& path);

    QFileDialog* m_dialog;
};
