#pragma once

#include "localization/title_layout.h"

#include <vector>

namespace plenzo {

/// By how much a container of this width has to become wider, so that its views, changed by their
/// texts, have the width that they need, do not lie on each other where they did not before, and
/// keep a margin. What no width would cure counts for nothing.
[[nodiscard]] int growthNeeded(const std::vector<ChangingView>& views, int containerWidth);

} // namespace plenzo
