// SPDX-License-Identifier: MIT
#include "app/about.h"

#include <QApplication>
#include <QIcon>
#include <QMessageBox>
#include <QPushButton>

using namespace Qt::StringLiterals;

void showAbout()
{
    constexpr int iconSize = 96;
    auto* const box = new QMessageBox(QApplication::activeWindow());
    box->setObjectName(u"about"_s);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setWindowTitle(QCoreApplication::translate("About", "About Tessel"));
    box->setIconPixmap(QApplication::windowIcon().pixmap(iconSize));
    box->setTextFormat(Qt::PlainText);
    box->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    box->setText(u"Tessel "_s + QApplication::applicationVersion());
    box->setInformativeText(QCoreApplication::translate(
        "About", "Read, search and annotate the macOS unified log, on any machine.\n\n"
                 "Free software under the MIT licence."));
    box->addButton(QMessageBox::Ok)->setObjectName(u"ok"_s);
    box->open();
}
