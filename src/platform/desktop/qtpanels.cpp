// SPDX-License-Identifier: MIT
#include "platform/desktop/qtpanels.h"

#include "platform/desktop/archivedialog.h"
#include "platform/desktop/statefile.h"

#include <QApplication>
#include <QFileDialog>
#include <QFileInfo>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

struct FileKind
{
    QString nameFilter;
    QString suffix;
};

FileKind fileKind(ContentType type)
{
    switch (type) {
    case ContentType::EntryList:
        return {QCoreApplication::translate("QtPanels", "Tessel lists (*.tessel)"), u"tessel"_s};
    case ContentType::RichText:
        return {QCoreApplication::translate("QtPanels", "Rich text (*.rtf)"), u"rtf"_s};
    case ContentType::Text:
        return {QCoreApplication::translate("QtPanels", "Text (*.txt)"), u"txt"_s};
    case ContentType::LogArchive:
        return {QCoreApplication::translate("QtPanels", "Log archives (*.logarchive)"),
                u"logarchive"_s};
    case ContentType::Folder: break;
    }
    return {};
}

/// The name as one that a file can have: a search for a path may be part of it.
QString fileName(const QString& proposed)
{
    constexpr qsizetype longest = 247; // bytes; leaves room for what is written beside a file
    const QFileInfo parts(QString(proposed).replace(u'/', u'-'));
    const QString suffix = parts.suffix().isEmpty() ? QString() : u'.' + parts.suffix();
    QString base = parts.completeBaseName();
    while (!base.isEmpty() && base.toUtf8().size() + suffix.toUtf8().size() > longest)
        base.chop(base.back().isLowSurrogate() ? 2 : 1);
    return base + suffix;
}

/// Calls a panel's completion once: with the dialog's choice, or as cancelled when the dialog goes
/// with its window.
class Completion final : public QObject
{
public:
    Completion(QFileDialog* dialog, PanelCompletion completion)
        : QObject(dialog)
        , m_completion(std::move(completion))
    {
        connect(dialog, &QFileDialog::finished, this, [this, dialog](int result) {
            if (result == QFileDialog::Accepted)
                confirm(dialog->selectedUrls());
            else
                complete({});
        });
    }
    Q_DISABLE_COPY_MOVE(Completion)
    ~Completion() override
    {
        // Not from here: the completion must not run amid the destruction of a window.
        if (m_completion)
            QMetaObject::invokeMethod(
                qApp, [completion = std::move(m_completion)] { completion({}); },
                Qt::QueuedConnection);
    }

private:
    void confirm(const QList<QUrl>& locations)
    {
        PanelResult result{true, std::nullopt};
        if (!locations.isEmpty() && !locations.first().isEmpty())
            result.location = locations.first();
        complete(result);
    }

    void complete(const PanelResult& result)
    {
        if (const auto completion = std::exchange(m_completion, nullptr))
            completion(result);
    }

    PanelCompletion m_completion;
};

QFileDialog* openDialog(const OpenPanelRequest& request, QWidget* parent)
{
    if (request.contentType == ContentType::LogArchive)
        return new ArchiveDialog(parent);
    auto* const dialog = new QFileDialog(parent);
    dialog->setAcceptMode(QFileDialog::AcceptOpen);
    if (request.contentType == ContentType::Folder) {
        dialog->setFileMode(QFileDialog::Directory);
        dialog->setOption(QFileDialog::ShowDirsOnly);
    } else {
        dialog->setFileMode(QFileDialog::ExistingFile);
        dialog->setNameFilter(fileKind(request.contentType).nameFilter);
    }
    return dialog;
}

} // namespace

void QtPanels::open(const OpenPanelRequest& request, PanelCompletion completion)
{
    QFileDialog* const dialog = openDialog(request, QApplication::activeWindow());
    dialog->setDirectory(request.startFolder.isEmpty() ? m_state.lastFolder()
                                                       : request.startFolder);
    if (!request.confirmText.isEmpty())
        dialog->setLabelText(QFileDialog::Accept, request.confirmText);
    if (request.showsHidden)
        dialog->setFilter(dialog->filter() | QDir::Hidden);
    show(dialog, request.contentType, std::move(completion));
}

void QtPanels::save(const SavePanelRequest& request, PanelCompletion completion)
{
    auto* const dialog = new QFileDialog(QApplication::activeWindow());
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setFileMode(QFileDialog::AnyFile);
    dialog->setDirectory(m_state.lastFolder());
    const FileKind kind = fileKind(request.contentType);
    if (!kind.nameFilter.isEmpty())
        dialog->setNameFilter(kind.nameFilter);
    dialog->setDefaultSuffix(kind.suffix);
    dialog->selectFile(fileName(request.proposedName));
    show(dialog, request.contentType, std::move(completion));
}

void QtPanels::show(QFileDialog* dialog, ContentType type, PanelCompletion completion)
{
    dialog->setObjectName(u"panel"_s);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    // A path may be typed, so what was chosen need not lie in the folder that the panel shows.
    QObject::connect(dialog, &QFileDialog::fileSelected, dialog,
                     [this, type](const QString& chosen) {
                         m_state.setLastFolder(QFileInfo(chosen).absolutePath());
                         if (type == ContentType::EntryList || type == ContentType::LogArchive)
                             m_state.addRecentFile(chosen);
                     });
    new Completion(dialog, std::move(completion));
    dialog->open();
}
