#pragma once

namespace plenzo {

/// Whether the environment names a screen that windows can be shown on, and its server answers. To
/// be asked before the toolkit is, which ends the program when there is none.
[[nodiscard]] bool displayIsThere();

} // namespace plenzo
