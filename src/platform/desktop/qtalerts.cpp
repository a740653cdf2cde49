// SPDX-License-Identifier: MIT
#include "platform/desktop/qtalerts.h"

#include <QApplication>
#include <QMessageBox>

using namespace Qt::StringLiterals;

namespace {

/// Lines after an empty one are an excerpt with a mark below it: they stand in a font of equal
/// widths, and as they are.
void showWithExcerpt(QMessageBox& box, const QString& message, const QString& informativeText)
{
    const qsizetype end = informativeText.indexOf(u"\n\n"_s);
    box.setTextFormat(Qt::RichText);
    box.setText(message.toHtmlEscaped());
    box.setInformativeText(u"<p>%1</p><pre>%2</pre>"_s.arg(
        informativeText.left(end).toHtmlEscaped(), informativeText.mid(end + 2).toHtmlEscaped()));
}

} // namespace

void QtAlerts::critical(const QString& message, const QString& informativeText)
{
    QMessageBox box(QMessageBox::Critical, QApplication::applicationDisplayName(), message,
                    QMessageBox::Ok, QApplication::activeWindow());
    box.setObjectName(u"alert"_s);
    if (informativeText.contains("\n\n"_L1)) {
        showWithExcerpt(box, message, informativeText);
    } else {
        box.setTextFormat(Qt::PlainText);
        box.setInformativeText(informativeText);
    }
    box.setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    box.exec();
}
