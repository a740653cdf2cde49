// SPDX-License-Identifier: MIT
#include "platform/desktop/qtalerts.h"

#include <QApplication>
#include <QMessageBox>

void QtAlerts::critical(const QString& message, const QString& informativeText)
{
    QMessageBox box(QMessageBox::Critical, QApplication::applicationDisplayName(), message,
                    QMessageBox::Ok, QApplication::activeWindow());
    box.setObjectName(QStringLiteral("alert"));
    box.setInformativeText(informativeText);
    box.setTextFormat(Qt::PlainText);
    box.setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    box.exec();
}
