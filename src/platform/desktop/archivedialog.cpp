// SPDX-License-Identifier: MIT
#include "platform/desktop/archivedialog.h"

#include "platform/desktop/archiveitems.h"
#include "platform/oslogstore.h"

#include <QFileInfo>

ArchiveDialog::ArchiveDialog(QWidget* parent) : QFileDialog(parent)
{
    new ArchiveItems(this);
    setWindowTitle(tr("Choose a Log Archive"));
    setOption(ShowDirsOnly);
    setOption(ReadOnly);
    setFileMode(Directory);
    setLabelText(FileName, tr("Archive:"));
}

void ArchiveDialog::accept()
{
    const QString path = selectedFiles().value(0);
    if (!ArchiveItems::isArchive(path) && QFileInfo(path).isDir() && !OSLogStore::isStore(path)) {
        setDirectory(path);
        return;
    }
    QFileDialog::accept();
}
