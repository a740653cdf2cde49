// SPDX-License-Identifier: MIT
#include "platform/desktop/appearance.h"

#include "platform/desktop/darkstyle.h"
#include "platform/desktop/desktopappearance.h"

#include <QApplication>
#include <QPalette>
#include <QStyle>

namespace {

QPalette darkPalette()
{
    const QColor text(0xf0f0f0);
    const QColor faintText(0x8e8e93);
    const QColor window(0x2b2b2d);
    const QColor base(0x1e1e1e);
    const QColor button(0x3a3a3d);
    const QColor accent(0x2f6fce);

    QPalette palette(button, window);
    palette.setColor(QPalette::Window, window);
    palette.setColor(QPalette::WindowText, text);
    palette.setColor(QPalette::Base, base);
    palette.setColor(QPalette::AlternateBase, QColor(0x262626));
    palette.setColor(QPalette::Text, text);
    palette.setColor(QPalette::Button, button);
    palette.setColor(QPalette::ButtonText, text);
    palette.setColor(QPalette::BrightText, Qt::white);
    palette.setColor(QPalette::PlaceholderText, QColor(0x9a9aa0));
    palette.setColor(QPalette::ToolTipBase, QColor(0x323236));
    palette.setColor(QPalette::ToolTipText, text);
    palette.setColor(QPalette::Link, QColor(0x6cb2ff));
    palette.setColor(QPalette::LinkVisited, QColor(0xc39bff));
    palette.setColor(QPalette::Highlight, accent);
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Light, QColor(0x505054));
    palette.setColor(QPalette::Midlight, QColor(0x454548));
    palette.setColor(QPalette::Mid, QColor(0x1f1f21));
    palette.setColor(QPalette::Dark, QColor(0x1a1a1b));
    palette.setColor(QPalette::Shadow, Qt::black);

    palette.setColor(QPalette::Inactive, QPalette::Highlight, QColor(0x3d4a5c));
    for (const QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, faintText);
    palette.setColor(QPalette::Disabled, QPalette::Base, window);
    palette.setColor(QPalette::Disabled, QPalette::Highlight, QColor(0x48484b));
    palette.setColor(QPalette::Disabled, QPalette::HighlightedText, faintText);
    return palette;
}

/// A platform theme that sets colours has already made the palette the desktop's.
bool themeSetsColours()
{
    return QApplication::palette() != QApplication::style()->standardPalette();
}

} // namespace

void appearance::forceDark()
{
    QApplication::setStyle(new DarkStyle);
    QApplication::setPalette(darkPalette());
}

void appearance::followSystem()
{
    if (themeSetsColours())
        return;
    const auto follow = [lightStyle = QApplication::style()->name()](bool dark) {
        if (dark)
            return forceDark();
        QApplication::setStyle(lightStyle);
        QApplication::setPalette(QApplication::style()->standardPalette());
    };
    QObject::connect(new DesktopAppearance(qApp), &DesktopAppearance::changed, qApp, follow);
    if (DesktopAppearance::prefersDark())
        forceDark();
}
