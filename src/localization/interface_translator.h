#pragma once

#include "localization/translation_dictionary.h"

#include <QWidget>
#include <cstddef>
#include <vector>

namespace plenzo {

class SpringsAndStruts;
struct ChangingView;

/// Translates a loaded interface: every text of it, then the room of the controls in containers
/// with springs and struts, last the window, so that all of them fit.
class InterfaceTranslator {
public:
    /// The dictionary outlives this.
    explicit InterfaceTranslator(const TranslationDictionary& dictionary)
        : m_dictionary(dictionary) {}

    void translate(QWidget& topLevel) const;

private:
    int translateInside(QWidget& view) const;
    int translateViews(SpringsAndStruts& layout) const;
    void translateView(std::vector<ChangingView>& views, std::size_t index, QWidget& view) const;

    const TranslationDictionary& m_dictionary;
};

} // namespace plenzo
