#pragma once

#include "linux/glib_thread.h"
#include "linux/main_loop.h"
#include "platform/mail_clients.h"

#include <memory>

namespace plenzo {

/// The desktop's mail clients by their desktop entries, over GIO, on a thread of its own that
/// starts with the first question. A client runs when somebody owns the bus name of an entry that
/// is D-Bus activatable, or when the user has a process of the program that the entry starts
/// (RunningPrograms), be it a plain one, a Flatpak or a snap.
class MailClientsOfDesktop final : public MailClients {
public:
    explicit MailClientsOfDesktop(MainLoop& loop);
    MailClientsOfDesktop(const MailClientsOfDesktop&) = delete;
    MailClientsOfDesktop& operator=(const MailClientsOfDesktop&) = delete;
    ~MailClientsOfDesktop() override;

    [[nodiscard]] Handle findDefault(std::function<void(std::optional<MailClient>)> found) override;
    [[nodiscard]] Handle isRunning(const std::string& clientId,
                                   std::function<void(bool)> answered) override;
    void launch(const std::string& clientId) override;

private:
    class Desktop;

    template <typename Answer>
    Handle ask(std::function<Answer(Desktop&)> question, std::function<void(Answer)> answered);
    GLibThread& thread();

    MainLoop& m_loop;
    std::unique_ptr<Desktop> m_desktop;
    /// Ends first: its tasks use the desktop.
    std::unique_ptr<GLibThread> m_thread;
};

} // namespace plenzo
