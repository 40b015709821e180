#include "ui/controls/colors.h"

#include <algorithm>
#include <cmath>

namespace plenzo {

namespace {

/// A component's share of the light, of sRGB.
double linear(double component) {
    return component <= 0.04045 ? component / 12.92 : std::pow((component + 0.055) / 1.055, 2.4);
}

double relativeLuminance(const QColor& color) {
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
           0.0722 * linear(color.blueF());
}

const QColor nearBlack(0x1c, 0x1c, 0x1e);

} // namespace

QColor toQColor(Color color) {
    return {color.red, color.green, color.blue, color.alpha};
}

QColor blended(const QColor& from, const QColor& to, double fraction) {
    const auto mixed = [fraction](double one, double other) {
        return static_cast<float>(one + (other - one) * fraction);
    };
    return QColor::fromRgbF(mixed(from.redF(), to.redF()), mixed(from.greenF(), to.greenF()),
                            mixed(from.blueF(), to.blueF()), mixed(from.alphaF(), to.alphaF()));
}

double contrastRatio(const QColor& one, const QColor& other) {
    const auto [darker, lighter] = std::minmax({relativeLuminance(one), relativeLuminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

QColor readableOn(const QColor& background) {
    const double dark = contrastRatio(nearBlack, background);
    const double light = contrastRatio(Qt::white, background);
    if (std::max(dark, light) < readableContrast) {
        return Qt::black;
    }
    return dark >= light ? nearBlack : QColor(Qt::white);
}

QColor distinctFrom(const QColor& ground, const QColor& color, const QColor& text) {
    constexpr double leastContrast = 1.25;
    constexpr int steps = 20;
    for (int step = 0; step < steps; ++step) {
        const QColor moved = blended(color, text, static_cast<double>(step) / steps);
        if (contrastRatio(moved, ground) >= leastContrast) {
            return moved;
        }
    }
    return text;
}

QColor mutedText(const QColor& text, const QColor& background, double fraction) {
    constexpr int steps = 8;
    for (int step = steps; step > 0; --step) {
        const QColor muted = blended(text, background, fraction * step / steps);
        if (contrastRatio(muted, background) >= readableContrast) {
            return muted;
        }
    }
    return text;
}

} // namespace plenzo
