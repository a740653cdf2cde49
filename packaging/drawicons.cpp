// SPDX-License-Identifier: MIT
#include <QCoreApplication>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <cstdlib>

// Draws a square picture in several sizes, in pixels: FOLDER/SIZE.png for each.

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() < 4)
        qFatal("Usage: drawicons PICTURE.svg FOLDER SIZE...");
    QSvgRenderer picture(arguments.at(1));
    if (!picture.isValid())
        qFatal("%s is no picture.", qUtf8Printable(arguments.at(1)));
    for (const QString& size : arguments.sliced(3)) {
        QImage image(size.toInt(), size.toInt(), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        picture.render(&painter);
        painter.end();
        const QString file = arguments.at(2) + QLatin1Char('/') + size + QLatin1String(".png");
        if (!image.save(file))
            qFatal("%s could not be written.", qUtf8Printable(file));
    }
    return EXIT_SUCCESS;
}
