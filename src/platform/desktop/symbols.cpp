// SPDX-License-Identifier: MIT
#include "platform/desktop/symbols.h"

#include <QFile>
#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QPixmapCache>
#include <QSvgRenderer>

using namespace Qt::StringLiterals;

namespace {

QColor symbolColour(QIcon::Mode mode)
{
    const QPalette palette = QGuiApplication::palette();
    switch (mode) {
    case QIcon::Disabled: return palette.color(QPalette::Disabled, QPalette::ButtonText);
    case QIcon::Selected: return palette.color(QPalette::HighlightedText);
    case QIcon::Normal:
    case QIcon::Active: break;
    }
    return palette.color(QPalette::ButtonText);
}

/// Draws a one-colour SVG, which says "currentColor", in the palette's colours.
class SymbolEngine final : public QIconEngine
{
public:
    SymbolEngine(QString name, QByteArray drawing)
        : m_name(std::move(name))
        , m_drawing(std::move(drawing))
    {
    }

    QIconEngine* clone() const override { return new SymbolEngine(m_name, m_drawing); }

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override
    {
        draw(*painter, rect, symbolColour(mode));
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State) override
    {
        const QColor colour = symbolColour(mode);
        const QString key = u"symbol/%1/%2x%3/%4"_s.arg(
            m_name, QString::number(size.width()), QString::number(size.height()), colour.name());
        QPixmap pixmap;
        if (QPixmapCache::find(key, &pixmap))
            return pixmap;
        pixmap = QPixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        draw(painter, QRect({}, size), colour);
        QPixmapCache::insert(key, pixmap);
        return pixmap;
    }

private:
    void draw(QPainter& painter, const QRect& rect, const QColor& colour) const
    {
        QByteArray coloured = m_drawing;
        coloured.replace("currentColor", colour.name().toLatin1());
        const int side = std::min(rect.width(), rect.height());
        QRectF square(0, 0, side, side);
        square.moveCenter(QRectF(rect).center());
        QSvgRenderer(coloured).render(&painter, square);
    }

    QString m_name;
    QByteArray m_drawing;
};

} // namespace

QIcon symbolIcon(const QString& name)
{
    QFile file(u":/symbols/"_s + name + u".svg"_s);
    if (!file.open(QFile::ReadOnly))
        return {};
    return QIcon(new SymbolEngine(name, file.readAll()));
}
