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

    /// What becomes of a message, told as it happens, be it from within the call.
    struct Progress {
        /// Once, right before the client gets the message for the first recipient; not at all when
        /// that never happens. Until then the message can be given up and mailed another time;
        /// afterwards it would come twice.
        std::function<void()> begins;
        /// Once: whether the client has taken the message. False when there is no client that can
        /// be made to, or it would not.
        std::function<void(bool)> finished;
    };
    virtual void mail(const MailMessage& message, Progress progress) = 0;
    /// The program is about to end: a message that has begun goes to the rest of its recipients
    /// without waiting for anything.
    virtual void completeAtOnce() = 0;
};

} // namespace plenzo
