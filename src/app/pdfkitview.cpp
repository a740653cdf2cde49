// SPDX-License-Identifier: MIT
#include "app/pdfkitview.h"

#include <QKeyEvent>
#include <QPdfPageNavigator>
#include <QWheelEvent>

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

QString fileName(const QUrl& url)
{
    return url.scheme() == "qrc"_L1 ? u':' + url.path() : url.toLocalFile();
}

/// The page that a key turns to.
std::optional<int> turnedTo(int key, int page)
{
    switch (key) {
    case Qt::Key_PageDown:
    case Qt::Key_Right:
    case Qt::Key_Down:
    case Qt::Key_Space: return page + 1;
    case Qt::Key_PageUp:
    case Qt::Key_Left:
    case Qt::Key_Up:
    case Qt::Key_Backspace: return page - 1;
    case Qt::Key_Home: return 0;
    case Qt::Key_End: return std::numeric_limits<int>::max();
    default: return std::nullopt;
    }
}

} // namespace

PDFKitView::PDFKitView(const QUrl& url, QWidget* parent) : QPdfView(parent), m_document(nullptr)
{
    setPageMode(PageMode::SinglePage);
    setZoomMode(ZoomMode::FitInView);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    if (const QString name = fileName(url); !name.isEmpty())
        m_document.load(name);
    setDocument(&m_document);
    connect(pageNavigator(), &QPdfPageNavigator::currentPageChanged, this,
            &PDFKitView::pageChanged);
}

int PDFKitView::page() const
{
    return pageNavigator()->currentPage();
}

void PDFKitView::setPage(int page)
{
    const int turned = std::clamp(page, 0, std::max(0, pageCount() - 1));
    if (turned != this->page())
        pageNavigator()->jump(turned, {});
}

void PDFKitView::keyPressEvent(QKeyEvent* event)
{
    if (const auto page = turnedTo(event->key(), this->page()))
        setPage(*page);
    else
        QPdfView::keyPressEvent(event);
}

void PDFKitView::wheelEvent(QWheelEvent* event)
{
    constexpr int notch = 120;
    m_wheelAngle += event->angleDelta().y();
    if (std::abs(m_wheelAngle) < notch)
        return;
    setPage(page() + (m_wheelAngle < 0 ? 1 : -1));
    m_wheelAngle = 0;
}
