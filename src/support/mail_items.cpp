#include "support/mail_items.h"

#include "propertylist/text_encoding.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace plenzo {

namespace {

constexpr std::string_view subroutineName = "mail_attachment";
constexpr std::string_view ellipsis = "…";
/// A mailbox of 64 bytes at a domain of 255 is the longest there can be (RFC 5321).
constexpr std::size_t longestAddressBytes = 320;
constexpr std::size_t longestPathBytes = 4095;

bool hasNul(const std::string& text) {
    return text.find('\0') != std::string::npos;
}

bool isControl(char c) {
    return (c >= 0 && c < ' ') || c == '\x7F';
}

bool continuesCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

std::string shortened(std::string text) {
    if (text.size() <= longestItemBytes) {
        return text;
    }
    std::size_t end = longestItemBytes - ellipsis.size();
    while (end > 0 && continuesCharacter(text[end])) {
        --end;
    }
    return text.erase(end).append(ellipsis);
}

/// What is far too long need not be looked at whole.
std::string item(std::string text) {
    text.resize(std::min(text.size(), 2 * longestItemBytes));
    return shortened(utf8FromUtf16(utf16FromUtf8(text)));
}

bool isUsableAttachment(const std::string& path) {
    return path.empty() || (path.starts_with('/') && path.size() <= longestPathBytes);
}

} // namespace

std::optional<MailMessage> preparedForScript(MailMessage message) {
    if (hasNul(message.subject) || hasNul(message.body) || hasNul(message.attachment) ||
        !isUsableAttachment(message.attachment)) {
        return std::nullopt;
    }
    message.subject = item(std::move(message.subject));
    message.body = item(std::move(message.body));
    return message;
}

bool isUsableAddress(const std::string& address) {
    return !address.empty() && address.size() <= longestAddressBytes && !address.starts_with('-') &&
           std::ranges::none_of(address, isControl);
}

std::vector<std::string> scriptArguments(const MailMessage& message,
                                         const MailRecipient& recipient) {
    const bool isToBeSent = message.delivery == MailMessage::Delivery::SendUnseen;
    const std::string name = hasNul(recipient.name) ? std::string() : item(recipient.name);
    return {std::string(subroutineName), message.subject,       message.body, message.attachment,
            isToBeSent ? "1" : "0",      item(recipient.email), name};
}

} // namespace plenzo
