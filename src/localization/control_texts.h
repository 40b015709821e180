#pragma once

#include "localization/translation_dictionary.h"

class QAction;
class QWidget;

namespace plenzo {

/// The view's dynamic property "tag"; 0 without one.
[[nodiscard]] int tagOf(const QWidget& view);

/// Whether its picture, or its box to tick, is left of its title.
[[nodiscard]] bool hasImageLeft(const QWidget& view);

/// Translates what the view shows or says. Returns by how much its title, or the widest of its
/// items, is wider than in English, in the view's own font; 0 for a text that wraps.
int translateTexts(const TranslationDictionary& dictionary, QWidget& view);

void translateTexts(const TranslationDictionary& dictionary, QAction& action);

} // namespace plenzo
