// SPDX-License-Identifier: MIT
#include "platform/desktop/archiveitems.h"

#include "platform/desktop/symbols.h"

#include <QAbstractItemView>
#include <QDir>
#include <QFileDialog>
#include <QFileIconProvider>
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
        return ArchiveItems::isArchive(info.filePath()) ? m_archive : QFileIconProvider::icon(info);
    }
    using QFileIconProvider::icon;

    QString type(const QFileInfo& info) const override
    {
        return ArchiveItems::isArchive(info.filePath()) ? ArchiveItems::tr("Log archive")
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

ArchiveItems::ArchiveItems(QFileDialog* dialog) : QObject(dialog), m_dialog(dialog)
{
    static ArchiveIcons icons; // for good: the dialog's file system model asks to its very end
    // A desktop's own dialog cannot be told to keep out of a folder.
    dialog->setOption(QFileDialog::DontUseNativeDialog);
    dialog->setIconProvider(&icons);
    for (QAbstractItemView* view : dialog->findChildren<QAbstractItemView*>()) {
        view->installEventFilter(this);
        view->viewport()->installEventFilter(this);
    }
}

bool ArchiveItems::isArchive(const QString& path)
{
    return QDir::cleanPath(path).endsWith(".logarchive"_L1, Qt::CaseInsensitive)
           && QFileInfo(path).isDir();
}

bool ArchiveItems::eventFilter(QObject* watched, QEvent* event)
{
    if (!opensItem(*event))
        return false;
    // Keys go to a view, clicks to its viewport.
    const auto* view = qobject_cast<QAbstractItemView*>(watched);
    if (view == nullptr)
        view = qobject_cast<QAbstractItemView*>(watched->parent());
    const QString path = view->currentIndex().data(QFileSystemModel::FilePathRole).toString();
    if (!isArchive(path))
        return false;
    pick(path);
    return true;
}

void ArchiveItems::pick(const QString& path)
{
    // The name field decides what is picked; selectFile() reaches it only later, if at all.
    m_dialog->findChild<QLineEdit*>(u"fileNameEdit"_s)->setText(path);
    static_cast<QDialog*>(m_dialog)->accept();
}
