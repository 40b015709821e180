#pragma once

#include "platform/mailer.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace plenzo {

/// What one argument of a program can be long, with room to spare: Linux takes 128 KiB.
inline constexpr std::size_t longestItemBytes = 120'000;

/// The message as a script can be called with it: its texts in valid UTF-8, with U+FFFD in place of
/// what is none, and none longer than longestItemBytes; what is longer ends with an ellipsis
/// instead. Nothing when a text contains a NUL, or the attachment is no path that a program could
/// take.
[[nodiscard]] std::optional<MailMessage> preparedForScript(MailMessage message);

/// Whether the address can be handed to a mail client: one line, and none that looks like an
/// option.
[[nodiscard]] bool isUsableAddress(const std::string& address);

/// What the script is called with for one recipient: the name of the subroutine and its six items,
/// subject, body, attachment, "1" to send unseen or "0", address and name.
[[nodiscard]] std::vector<std::string> scriptArguments(const MailMessage& message,
                                                       const MailRecipient& recipient);

} // namespace plenzo
