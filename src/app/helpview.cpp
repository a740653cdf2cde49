// SPDX-License-Identifier: MIT
#include "app/helpview.h"

#include "app/pdfkitview.h"
#include "platform/desktop/symbols.h"

#include <QAction>
#include <QLabel>
#include <QToolBar>

using namespace Qt::StringLiterals;

namespace {

constexpr QSize smallestPage(320, 240);

QWidget* spring()
{
    auto* const space = new QWidget;
    space->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    return space;
}

} // namespace

QUrl helpDocument()
{
    return QUrl(u"qrc:/TesselHelp.pdf"_s);
}

HelpView::HelpView(const QUrl& pdfUrl, QWidget* parent)
    : QMainWindow(parent)
    , m_pages(new PDFKitView(pdfUrl))
    , m_place(new QLabel)
    , m_previous(new QAction(symbolIcon(u"chevron.left"_s), tr("&Previous Page"), this))
    , m_next(new QAction(symbolIcon(u"chevron.right"_s), tr("&Next Page"), this))
{
    setObjectName(u"helpWindow"_s);
    m_pages->setObjectName(u"pages"_s);
    m_pages->setMinimumSize(smallestPage);
    m_pages->setAccessibleName(tr("Manual"));
    setCentralWidget(m_pages);
    addToolBar();
    connect(m_pages, &PDFKitView::pageChanged, this, &HelpView::showPage);
    showPage();
    m_pages->setFocus();
}

/// A size at which a page is easy to read. The toolkit reduces it on a small screen.
QSize HelpView::sizeHint() const
{
    return {960, 780};
}

void HelpView::addToolBar()
{
    m_previous->setObjectName(u"previousPage"_s);
    m_next->setObjectName(u"nextPage"_s);
    m_place->setObjectName(u"place"_s);
    m_place->setMargin(6);
    connect(m_previous, &QAction::triggered, m_pages,
            [this] { m_pages->setPage(m_pages->page() - 1); });
    connect(m_next, &QAction::triggered, m_pages,
            [this] { m_pages->setPage(m_pages->page() + 1); });

    addActions({m_previous, m_next});
    auto* const bar = new QToolBar(tr("Pages"));
    bar->setObjectName(u"HelpView.toolbar"_s);
    bar->setMovable(false);
    bar->setContextMenuPolicy(Qt::PreventContextMenu);
    bar->addWidget(spring());
    bar->addAction(m_previous);
    bar->addWidget(m_place);
    bar->addAction(m_next);
    bar->addWidget(spring());
    QMainWindow::addToolBar(Qt::BottomToolBarArea, bar);
}

void HelpView::showPage()
{
    const int page = m_pages->page();
    const int count = m_pages->pageCount();
    m_previous->setEnabled(page > 0);
    m_next->setEnabled(page + 1 < count);
    m_place->setText(count > 0 ? tr("Page %1 of %2").arg(page + 1).arg(count) : QString());
    m_pages->setAccessibleDescription(m_place->text());
}
