// SPDX-License-Identifier: MIT
#pragma once

#include <QMainWindow>
#include <QUrl>

class PDFKitView;
class QLabel;

/// The location of the manual in the application's resources.
QUrl helpDocument();

/// The help window: the manual and the commands that turn its pages.
class HelpView final : public QMainWindow
{
    Q_OBJECT

public:
    explicit HelpView(const QUrl& pdfUrl, QWidget* parent = nullptr);

    QSize sizeHint() const override;

private:
    void addToolBar();
    void showPage();

    PDFKitView* m_pages;
    QLabel* m_place;
    QAction* m_previous;
    QAction* m_next;
};
