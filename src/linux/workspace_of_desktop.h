#pragma once

#include "linux/glib_thread.h"
#include "platform/workspace.h"

#include <memory>

namespace plenzo {

/// Opens URLs with the desktop's default program for their scheme, as its desktop entry says:
/// started with the URL as an argument, never through a shell, or, where the entry is D-Bus
/// activatable, called on the session bus. A program that is to come forward gets an activation
/// token; one that is to stay gets none, neither ours nor one that we were started with. Everything
/// happens on a thread of its own, in order; what fails is left.
class WorkspaceOfDesktop final : public Workspace {
public:
    WorkspaceOfDesktop();
    ~WorkspaceOfDesktop() override;

    void openURL(const std::string& url) override;
    void openURLWithoutActivation(const std::string& url) override;

private:
    class Launcher;

    std::unique_ptr<Launcher> m_launcher;
    /// Ends first: its tasks use the launcher.
    GLibThread m_thread;
};

} // namespace plenzo
