// SPDX-License-Identifier: MIT
#include "platform/desktop/savedialog.h"

#include "platform/desktop/archiveitems.h"

#include <QDialogButtonBox>
#include <QFileInfo>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>

using namespace Qt::StringLiterals;

SaveDialog::SaveDialog(const QString& extension, QWidget* parent)
    : QFileDialog(parent)
    , m_savesArchives(extension == u"logarchive")
    , m_ending(u'.' + extension)
{
    // A desktop's own dialog has a rule of its own for names, and enters archives.
    setOption(DontUseNativeDialog);
    setAcceptMode(AcceptSave);
    setFileMode(AnyFile);
    if (!m_savesArchives)
        return;
    new ArchiveItems(this);
    connect(nameField(), &QLineEdit::textChanged, this, &SaveDialog::correctButton);
}

QLineEdit* SaveDialog::nameField() const
{
    return findChild<QLineEdit*>(u"fileNameEdit"_s);
}

QString SaveDialog::chosenArchive() const
{
    const QString path = selectedFiles().value(0);
    return m_savesArchives && ArchiveItems::isArchive(path) ? path : QString();
}

void SaveDialog::correctButton()
{
    // For the dialog an archive is a folder to be opened.
    if (!chosenArchive().isEmpty())
        findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Save)->setText(tr("&Save"));
}

void SaveDialog::accept()
{
    const QString typed = selectedFiles().value(0);
    if (!QFileInfo(typed).isDir() && !typed.endsWith(m_ending, Qt::CaseInsensitive))
        nameField()->setText(nameField()->text() + m_ending);
    const QString archive = chosenArchive();
    if (archive.isEmpty())
        return QFileDialog::accept();
    if (!mayWriteInto(archive))
        return;
    Q_EMIT fileSelected(archive);
    done(Accepted); // accept() would walk into the folder
}

bool SaveDialog::mayWriteInto(const QString& archive)
{
    const QString question = tr("%1 already exists.\nDo you want to write into it?");
    return QMessageBox::warning(this, windowTitle(), question.arg(QFileInfo(archive).fileName()),
                                QMessageBox::Yes | QMessageBox::No, QMessageBox::No)
           == QMessageBox::Yes;
}
