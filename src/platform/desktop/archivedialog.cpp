// SPDX-License-Identifier: MIT
#include "platform/desktop/archivedialog.h"

#include "platform/desktop/symbols.h"

#include <QAbstractItemView>
#include <QDir>
#include <QFileIconProvider>
#include <QFileInfo>
#include <QFileSystemModel>
#include <QKeyEvent>
#include <QLineEdit>

using namespace Qt::StringLiterals;

namespace {

class ArchiveIcons final : public QFileIconProvider
{
public:
    QIcon icon(const QFileInfo& info) const override
    {
        return ArchiveDialog::isArchive(info.filePath()) ? m_archive
                                                         : QFileIconProvider::icon(info);
    }
    using QFileIconProvider::icon;

    QString type(const QFileInfo& info) const override
    {
        return ArchiveDialog::isArchive(info.filePath()) ? ArchiveDialog::tr("Log archive")
                                                         : QFileIconProvider::type(info);
    }

private:
    QIcon m_archive = symbolIcon(u"archivebox.fill"_s);
};

bool opensItem(const QEvent& event)
{
    if (event.type() == QEvent::MouseButtonDblClick)
        return true;
    if (event.type() != QEvent::KeyPress)
        return false;
    const int key = static_cast<const QKeyEvent&>(event).key();
    return key == Qt::Key_Return || key == Qt::Key_Enter;
}

} // namespace

ArchiveDialog::ArchiveDialog(QWidget* parent) : QFileDialog(parent)
{
    static ArchiveIcons icons; // for good: the dialog's file system model asks to its very end
    setWindowTitle(tr("Use Logarchive"));
    // A desktop's own dialog cannot be told to keep out of a folder.
    setOption(DontUseNativeDialog);
    setOption(ShowDirsOnly);
    setOption(ReadOnly);
    setFileMode(Directory);
    setLabelText(FileName, tr("Archive:"));
    setIconProvider(&icons);
    for (QAbstractItemView* view : findChildren<QAbstractItemView*>()) {
        view->installEventFilter(this);
        view->viewport()->installEventFilter(this);
    }
}

bool ArchiveDialog::isArchive(const QString& path)
{
    return QDir::cleanPath(path).endsWith(".logarchive"_L1, Qt::CaseInsensitive)
           && QFileInfo(path).isDir();
}

bool ArchiveDialog::eventFilter(QObject* watched, QEvent* event)
{
    if (!opensItem(*event))
        return QFileDialog::eventFilter(watched, event);
    // Keys go to a view, clicks to its viewport.
    const auto* view = qobject_cast<QAbstractItemView*>(watched);
    if (view == nullptr)
        view = qobject_cast<QAbstractItemView*>(watched->parent());
    return pick(view->currentIndex().data(QFileSystemModel::FilePathRole).toString())
           || QFileDialog::eventFilter(watched, event);
}

bool ArchiveDialog::pick(const QString& path)
{
    if (!isArchive(path))
        return false;
    // The name field decides what is picked; selectFile() reaches it only later, if at all.
    findChild<QLineEdit*>(u"fileNameEdit"_s)->setText(path);
    accept();
    return true;
}

void ArchiveDialog::accept()
{
    const QString path = selectedFiles().value(0);
    if (!isArchive(path) && QFileInfo(path).isDir()) {
        setDirectory(path);
        return;
    }
    QFileDialog::accept();
}
