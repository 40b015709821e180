#include "ui/controls/palettes.h"

namespace plenzo {

namespace {

struct Colors {
    QColor window;
    QColor base;
    QColor button;
    QColor text;
    QColor disabled;
    QColor accent;
    QColor onAccent;
};

Colors colors(Brightness brightness, Contrast contrast) {
    const bool isDark = brightness == Brightness::Dark;
    if (contrast == Contrast::High) {
        return isDark ? Colors{"#000000", "#000000", "#000000", "#ffffff",
                               "#b0b0b0", "#5cc8ff", "#000000"}
                      : Colors{"#ffffff", "#ffffff", "#ffffff", "#000000",
                               "#505050", "#00458f", "#ffffff"};
    }
    return isDark
               ? Colors{"#2a2a2c", "#1d1d1f", "#3a3a3c", "#f2f2f4", "#8e8e93", "#0a6fe0", "#ffffff"}
               : Colors{"#f3f3f5", "#ffffff", "#ffffff", "#1c1c1e",
                        "#8e8e93", "#0a66d0", "#ffffff"};
}

} // namespace

QPalette palette(Brightness brightness, Contrast contrast) {
    const Colors some = colors(brightness, contrast);
    QPalette palette(some.text, some.button, some.window.lighter(), some.window.darker(),
                     some.disabled, some.text, some.base);
    palette.setColor(QPalette::Window, some.window);
    palette.setColor(QPalette::ToolTipBase, some.base);
    palette.setColor(QPalette::ToolTipText, some.text);
    palette.setColor(QPalette::PlaceholderText, some.disabled);
    palette.setColor(QPalette::Highlight, some.accent);
    palette.setColor(QPalette::HighlightedText, some.onAccent);
    palette.setColor(QPalette::Link, some.accent);
    for (const QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(QPalette::Disabled, role, some.disabled);
    }
    return palette;
}

} // namespace plenzo
