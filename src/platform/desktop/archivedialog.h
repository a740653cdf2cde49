// SPDX-License-Identifier: MIT
#pragma once

#include <QFileDialog>

/// Chooses a log archive. An archive is picked as one item and never entered. Other folders are
/// entered; the button picks those that a log store is found from.
class ArchiveDialog final : public QFileDialog
{
    Q_OBJECT

public:
    explicit ArchiveDialog(QWidget* parent = nullptr);

    void accept() override;
};
