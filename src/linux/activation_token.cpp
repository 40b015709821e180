#include "linux/activation_token.h"

#include "linux/environment.h"

#include <sys/utsname.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <cstdint>
#include <utility>

namespace plenzo {

namespace {

/// It becomes part of a program's environment.
constexpr std::size_t longestTokenBytes = 1000;

thread_local std::optional<std::string> offeredToken;

std::string hostName() {
    utsname names{};
    return ::uname(&names) == 0 ? names.nodename : "localhost";
}

/// The X server of this machine counts its 32-bit milliseconds by the same clock.
std::uint32_t displayTimeMilliseconds() {
    const auto time = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<std::uint32_t>(
        std::chrono::duration_cast<std::chrono::milliseconds>(time).count());
}

} // namespace

OfferedActivationToken::OfferedActivationToken(std::string token) {
    if (!token.empty() && token.size() <= longestTokenBytes) {
        offeredToken = std::move(token);
    }
}

OfferedActivationToken::~OfferedActivationToken() {
    offeredToken.reset();
}

std::optional<std::string> newActivationToken() {
    static std::atomic<unsigned> count = 0;
    if (offeredToken) {
        return std::exchange(offeredToken, std::nullopt);
    }
    if (environment("DISPLAY").empty()) {
        return std::nullopt;
    }
    return "plenzoalarm-" + std::to_string(::getpid()) + "-" + hostName() + "-" +
           std::to_string(count++) + "_TIME" + std::to_string(displayTimeMilliseconds());
}

} // namespace plenzo
