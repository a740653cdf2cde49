// SPDX-License-Identifier: MIT
#pragma once

#include <QFileDialog>

class QLineEdit;

/// Chooses where to save files of one kind, all with the same extension: a name typed without it
/// gets it, also when there is a dot in the name. Log archives are files here, although they are
/// folders on disk.
class SaveDialog final : public QFileDialog
{
    Q_OBJECT

public:
    /// The extension comes without its dot.
    SaveDialog(const QString& extension, QWidget* parent);

    void accept() override;

private:
    QLineEdit* nameField() const;
    QString chosenArchive() const;
    void correctButton();
    bool mayWriteInto(const QString& archive);

    bool m_savesArchives;
    QString m_ending; ///< of every name
};
