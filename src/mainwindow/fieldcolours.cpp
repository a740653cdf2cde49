// SPDX-License-Identifier: MIT
#include "mainwindow/fieldcolours.h"

#include <QPalette>

#include <array>

namespace {

struct Tones
{
    std::array<QRgb, 5> fields; ///< in the order of FieldColour
    QRgb selectedRow;
    QRgb accent;
    QRgb dim;
};

constexpr Tones darkTones = {{0xfff0f0f0, 0xffff8278, 0xff4cd964, 0xff6cb2ff, 0xffffd60a},
                             0xff16304a,
                             0xff4a9eff,
                             0xff9a9aa0};
constexpr Tones lightTones = {{0xff1a1a1a, 0xffb3131a, 0xff176b25, 0xff0a58ca, 0xff6e5200},
                              0xffdcebfa,
                              0xff0a58ca,
                              0xff65656b};

const Tones& tones(bool dark)
{
    return dark ? darkTones : lightTones;
}

constexpr int middleLightness = 128;

} // namespace

FieldColours::FieldColours(const QPalette& palette)
    : m_dark(palette.color(QPalette::Base).lightness() < middleLightness)
{
}

QColor FieldColours::operator[](FieldColour colour) const
{
    return QColor(tones(m_dark).fields[static_cast<std::size_t>(colour)]);
}

QColor FieldColours::selectedRow() const
{
    return QColor(tones(m_dark).selectedRow);
}

QColor FieldColours::accent() const
{
    return QColor(tones(m_dark).accent);
}

QColor FieldColours::dim() const
{
    return QColor(tones(m_dark).dim);
}
