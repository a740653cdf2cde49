// SPDX-License-Identifier: MIT
#pragma once

#include <QProxyStyle>

/// The Fusion style with outlines that can be seen in a dark window: its own are darker than the
/// window, so that empty fields and boxes would vanish.
class DarkStyle final : public QProxyStyle
{
    Q_OBJECT

public:
    DarkStyle();

    void drawPrimitive(PrimitiveElement element,
                       const QStyleOption* option,
                       QPainter* painter,
                       const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control,
                            const QStyleOptionComplex* option,
                            QPainter* painter,
                            const QWidget* widget) const override;
};
