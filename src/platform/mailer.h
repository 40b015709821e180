#pragma once

#include <functional>
#include <string>
#include <vector>

namespace plenzo {

struct MailRecipient {
    std::string email;
    /// To be shown; may be empty.
    std::string name;
};

/// A message to several people, each of whom gets one of their own. All texts in UTF-8.
struct MailMessage {
    /// The absolute path of a file; empty when there is none.
    std::string attachment;
    std::vector<MailRecipient> recipients;
    std::string subject;
    std::string body;
    enum class Delivery { SendUnseen, LeaveOpen } delivery = Delivery::SendUnseen;
};

/// The user's mail client.
class Mailer {
public:
    Mailer() = default;
    Mailer(const Mailer&) = delete;
    Mailer& operator=(const Mailer&) = delete;
    virtual ~Mailer() = default;

    /// Hands the message to the client, and then says once whether the client has taken it. False
    /// when there is no client that can be made to, or it would not. May answer from within the
    /// call.
    virtual void mail(const MailMessage& message, std::function<void(bool)> finished) = 0;
};

} // namespace plenzo
