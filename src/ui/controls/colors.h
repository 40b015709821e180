#pragma once

#include "propertylist/value_type.h"

#include <QColor>

namespace plenzo {

[[nodiscard]] QColor toQColor(Color color);

/// So much of the way (0 to 1) from one colour to the other.
[[nodiscard]] QColor blended(const QColor& from, const QColor& to, double fraction);

/// How well one colour reads on the other: 1 (not at all) to 21 (black on white), as WCAG 2.1
/// defines the contrast ratio.
[[nodiscard]] double contrastRatio(const QColor& one, const QColor& other);

/// What WCAG asks of text at level AA.
inline constexpr double readableContrast = 4.5;

/// Near-black or white, whichever reads better on the background; black where neither would do.
[[nodiscard]] QColor readableOn(const QColor& background);

/// The colour, moved towards that of the text as far as it takes to be seen as an area on the
/// ground.
[[nodiscard]] QColor distinctFrom(const QColor& ground, const QColor& color, const QColor& text);

/// The text colour moved towards the background as far as it stays readable, at most by the
/// fraction: for what matters less.
[[nodiscard]] QColor mutedText(const QColor& text, const QColor& background, double fraction);

} // namespace plenzo
