// SPDX-License-Identifier: MIT
#include "mainwindow/statusline.h"

#include "model/logger.h"

#include <QBoxLayout>
#include <QDialog>
#include <QDialogButtonBox>
#include <QPlainTextEdit>

using namespace Qt::StringLiterals;

StatusLine::StatusLine(const Logger& logger, QWidget* parent) : QLabel(parent), m_logger(logger)
{
    setObjectName(u"statusLine"_s);
    setTextFormat(Qt::RichText);
    setTextInteractionFlags(Qt::TextBrowserInteraction);
    setContentsMargins(9, 2, 9, 3);
    // One line always, so that nothing moves when there is something to say; a long one is cut.
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    setMinimumHeight(fontMetrics().height() + 5);
    connect(this, &QLabel::linkActivated, this, &StatusLine::showItems);
    connect(&logger, &Logger::sourceReportChanged, this, &StatusLine::showReport);
    showReport();
}

void StatusLine::showReport()
{
    const SourceReport& report = m_logger.sourceReport();
    const bool hasItems = !report.items().isEmpty();
    QString text = report.text().toHtmlEscaped();
    if (hasItems)
        text += u" <a href=\"#\">%1</a>"_s.arg(tr("Source Report"));
    setText(text);
    setToolTip(report.text().toHtmlEscaped());
    setFocusPolicy(hasItems ? Qt::StrongFocus : Qt::ClickFocus);
    setAccessibleName(report.text().isEmpty() ? tr("Status") : report.text());
}

void StatusLine::showItems()
{
    auto* const dialog = new QDialog(this);
    dialog->setObjectName(u"sourceReport"_s);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowTitle(tr("Source Report"));
    dialog->resize(640, 400);
    auto* const list = new QPlainTextEdit;
    list->setObjectName(u"sourceReportText"_s);
    list->setReadOnly(true);
    list->setAccessibleName(tr("What could not be read"));
    list->appendPlainText(m_logger.sourceReport().text() + u'\n');
    for (const SourceReport::Item& item : m_logger.sourceReport().items())
        list->appendPlainText(u"%1: %2"_s.arg(item.name, item.reason));
    list->moveCursor(QTextCursor::Start);
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    connect(buttons, &QDialogButtonBox::rejected, dialog, &QDialog::reject);
    auto* const layout = new QVBoxLayout(dialog);
    layout->addWidget(list);
    layout->addWidget(buttons);
    dialog->show();
}
