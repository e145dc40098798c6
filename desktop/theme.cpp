// SPDX-License-Identifier: MIT
#include "desktop/theme.h"

#include <algorithm>
#include <array>

#include "picture/image/colour.h"

namespace desktop {

namespace {

double luminance(const QColor& colour)
{
    return 0.2126 * picture::to_linear(colour.redF()) +
           0.7152 * picture::to_linear(colour.greenF()) +
           0.0722 * picture::to_linear(colour.blueF());
}

QColor between(const QColor& a, const QColor& b, float share)
{
    return QColor::fromRgbF(a.redF() + (b.redF() - a.redF()) * share,
                            a.greenF() + (b.greenF() - a.greenF()) * share,
                            a.blueF() + (b.blueF() - a.blueF()) * share);
}

/// The minimum contrast of a colour to all text backgrounds.
double contrast_on_all(const QColor& text, const QPalette& palette)
{
    double least = 21.0;
    for (const auto role : {QPalette::Window, QPalette::Base, QPalette::Button})
        for (const auto group : {QPalette::Active, QPalette::Disabled})
            least = std::min(least, contrast(text, palette.color(group, role)));
    return least;
}

QColor readable_grey(const QColor& text, const QPalette& palette)
{
    const QColor behind = palette.color(QPalette::Active, QPalette::Window);
    constexpr int steps = 50;
    for (int step = steps / 2; step < steps; ++step) {
        const QColor grey = between(behind, text, static_cast<float>(step) / steps).toRgb();
        if (contrast_on_all(grey, palette) >= readable_contrast)
            return grey;
    }
    return text;
}

/// A readable background: this one, or one with more contrast to the text.
QColor readable_background(const QColor& background, const QColor& text)
{
    const QColor far = luminance(text) > 0.5 ? Qt::black : Qt::white;
    constexpr int steps = 50;
    for (int step = 0; step < steps; ++step) {
        const QColor colour = between(background, far, static_cast<float>(step) / steps).toRgb();
        if (contrast(colour, text) >= readable_contrast)
            return colour;
    }
    return far;
}

} // namespace

double contrast(const QColor& a, const QColor& b)
{
    constexpr double stray_light = 0.05;
    const auto [low, high] = std::minmax({luminance(a), luminance(b)});
    return (high + stray_light) / (low + stray_light);
}

QPalette with_readable_grey(QPalette palette)
{
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role,
                         readable_grey(palette.color(QPalette::Active, role), palette));
    palette.setColor(
        QPalette::Disabled, QPalette::Highlight,
        readable_background(palette.color(QPalette::Disabled, QPalette::Highlight),
                            palette.color(QPalette::Disabled, QPalette::HighlightedText)));
    const QColor text = palette.color(QPalette::Active, QPalette::Text);
    palette.setColor(QPalette::PlaceholderText, readable_grey(text, palette));
    return palette;
}

picture::Backdrop backdrop_for(const QPalette& palette)
{
    if (luminance(palette.color(QPalette::Active, QPalette::Window)) >=
        luminance(palette.color(QPalette::Active, QPalette::WindowText)))
        return {};
    picture::Backdrop dark;
    dark.upper = {0.055F, 0.058F, 0.064F};
    dark.lower = {0.020F, 0.021F, 0.024F};
    dark.lines = {0.55F, 0.57F, 0.62F};
    return dark;
}

} // namespace desktop
