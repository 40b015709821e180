#pragma once

#include <string>
#include <vector>

class QWidget;

namespace plenzo {

/// What of the texts in a window cannot be seen whole: for each that is wider or higher than the
/// room that its widget has for it, lies partly outside what it is in, or under another text, one
/// line with the widget's name, the text, and what it has and needs. A label that ends in "…" by
/// itself, having no least width, only has to lie where it is seen.
[[nodiscard]] std::vector<std::string> cutTexts(QWidget& window);

} // namespace plenzo
