#include "ui/controls/colors.h"
#include "ui/controls/palettes.h"

#include <gtest/gtest.h>

#include <utility>

namespace plenzo {
namespace {

TEST(EveryPalette, IsReadable) {
    using Role = QPalette::ColorRole;
    const std::pair<Role, Role> pairs[] = {
        {Role::WindowText, Role::Window},       {Role::Text, Role::Base},
        {Role::Text, Role::AlternateBase},      {Role::ButtonText, Role::Button},
        {Role::ToolTipText, Role::ToolTipBase}, {Role::HighlightedText, Role::Highlight}};
    for (const Brightness brightness : {Brightness::Light, Brightness::Dark}) {
        for (const Contrast contrast : {Contrast::Usual, Contrast::High}) {
            const QPalette colors = palette(brightness, contrast);
            const double wanted = contrast == Contrast::High ? 7 : readableContrast;
            for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive}) {
                for (const auto& [text, background] : pairs) {
                    EXPECT_GE(
                        contrastRatio(colors.color(group, text), colors.color(group, background)),
                        wanted)
                        << int(brightness) << int(contrast) << text << " on " << background;
                }
            }
        }
    }
}

} // namespace
} // namespace plenzo
