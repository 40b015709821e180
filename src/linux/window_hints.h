#pragma once

class QWindow;

namespace plenzo {

/// Asks the window manager to show the window on every workspace and to leave it out of task bars
/// and pagers, above the others. To be called before the window is shown and right afterwards. Does
/// nothing where windows are not X11's.
void floatOnAllWorkspaces(QWindow& window);

/// Asks the window manager to give the window the keyboard, whoever has it now.
void activateIgnoringOtherPrograms(QWindow& window);

} // namespace plenzo
