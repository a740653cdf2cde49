// SPDX-License-Identifier: MIT
#include "mainwindow/fieldcolours.h"

#include <array>
#include <cmath>

namespace {

struct Tones
{
    std::array<QRgb, 4> fields; ///< in the order of FieldColour, after Normal
    QRgb selectedRow;
    QRgb accent;
    QRgb dim;
};

constexpr Tones darkTones = {
    {0xffff8278, 0xff4cd964, 0xff6cb2ff, 0xffffd60a}, 0xff16304a, 0xff4a9eff, 0xff9a9aa0};
constexpr Tones lightTones = {
    {0xffb3131a, 0xff176b25, 0xff0a58ca, 0xff6e5200}, 0xffdcebfa, 0xff0a58ca, 0xff65656b};

const Tones& tones(bool dark)
{
    return dark ? darkTones : lightTones;
}

constexpr int middleLightness = 128;

/// As the accessibility guidelines define it.
double relativeLuminance(const QColor& colour)
{
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF())
           + 0.0722 * linear(colour.blueF());
}

/// Whether windows and lists are purely black or white, and the text contrasts strongly. (Lists
/// alone are black on white in ordinary palettes.)
bool isHighContrast(const QPalette& palette)
{
    constexpr double least = 15;
    const QColor base = palette.color(QPalette::Base);
    if (palette.color(QPalette::Window) != base)
        return false;
    const double text = relativeLuminance(palette.color(QPalette::Text));
    return (base == QColor(Qt::black) && (text + 0.05) / 0.05 > least)
           || (base == QColor(Qt::white) && 1.05 / (text + 0.05) > least);
}

QColor between(const QColor& a, const QColor& b, float share)
{
    return QColor::fromRgbF(a.redF() + (b.redF() - a.redF()) * share,
                            a.greenF() + (b.greenF() - a.greenF()) * share,
                            a.blueF() + (b.blueF() - a.blueF()) * share);
}

} // namespace

FieldColours::FieldColours(const QPalette& palette)
    : m_dark(palette.color(QPalette::Base).lightness() < middleLightness)
    , m_highContrast(isHighContrast(palette))
    , m_base(palette.color(QPalette::Base))
    , m_text(palette.color(QPalette::Text))
{
}

QColor FieldColours::operator[](FieldColour colour) const
{
    if (m_highContrast || colour == FieldColour::Normal)
        return m_text;
    return QColor(tones(m_dark).fields[static_cast<std::size_t>(colour) - 1]);
}

QColor FieldColours::selectedRow() const
{
    constexpr float share = 0.25F;
    return m_highContrast ? between(m_base, m_text, share) : QColor(tones(m_dark).selectedRow);
}

QColor FieldColours::accent() const
{
    return m_highContrast ? m_text : QColor(tones(m_dark).accent);
}

QColor FieldColours::dim() const
{
    return m_highContrast ? m_text : QColor(tones(m_dark).dim);
}
