// SPDX-License-Identifier: MIT
#pragma once

#include <QPdfDocument>
#include <QPdfView>
#include <QUrl>

/// One page of a PDF document at a time, as large as the view allows. A document that cannot be
/// read leaves the view empty.
class PDFKitView final : public QPdfView
{
    Q_OBJECT

public:
    explicit PDFKitView(const QUrl& url, QWidget* parent = nullptr);

    int page() const;
    int pageCount() const { return m_document.pageCount(); }
    /// Pages before the first and after the last one are those.
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
