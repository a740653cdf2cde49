// SPDX-License-Identifier: MIT
#include "platform/desktop/qtalerts.h"

#include "platform/desktop/documenttext.h"

#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// Shows both texts to the letter: they carry names of files, which may look like markup.
void showPlain(QMessageBox& box, const QString& message, const QString& informativeText)
{
    box.setTextFormat(Qt::PlainText);
    box.setText(message);
    box.setInformativeText(informativeText);
    // What is set above does not reach this label, nor is it wider than the short message.
    auto* const label = box.findChild<QLabel*>(u"qt_msgbox_informativelabel"_s);
    label->setTextFormat(Qt::PlainText);
    constexpr int columns = 56;
    const QFontMetrics metrics = label->fontMetrics();
    label->setMinimumWidth(
        std::min(metrics.averageCharWidth() * columns, metrics.size(0, informativeText).width()));
}

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

void QtAlerts::critical(const QString& message, const QString& description)
{
    QString informativeText = description;
    replaceDirectionControls(informativeText);
    QMessageBox box(QMessageBox::Critical, QApplication::applicationDisplayName(), {},
                    QMessageBox::Ok, QApplication::activeWindow());
    box.setObjectName(u"alert"_s);
    if (informativeText.contains("\n\n"_L1))
        showWithExcerpt(box, message, informativeText);
    else
        showPlain(box, message, informativeText);
    box.setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    box.exec();
}

bool QtAlerts::offer(const QString& message, const QString& description, const QString& button)
{
    QString informativeText = description;
    replaceDirectionControls(informativeText);
    QMessageBox box(QMessageBox::Question, QApplication::applicationDisplayName(), {},
                    QMessageBox::Cancel, QApplication::activeWindow());
    box.setObjectName(u"alert"_s);
    showPlain(box, message, informativeText);
    const QAbstractButton* const taken = box.addButton(button, QMessageBox::AcceptRole);
    box.exec();
    return box.clickedButton() == taken;
}
