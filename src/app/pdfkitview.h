// SPDX-License-Identifier: MIT
#pragma once

#include <QPdfDocument>
#include <QPdfView>
#include <QUrl>

/// Shows one page of a PDF document at a time, as large as fits. Stays empty if the document cannot
/// be read.
class PDFKitView final : public QPdfView
{
    Q_OBJECT

public:
    explicit PDFKitView(const QUrl& url, QWidget* parent = nullptr);

    int page() const;
    int pageCount() const { return m_document.pageCount(); }
    /// `page` is limited to the first and the last page.
    void setPage(int page);

Q_SIGNALS:
    void pageChanged(int page);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    QPdfDocument m_document;
    int m_wheelAngle = 0; ///< turned since the last page
};
