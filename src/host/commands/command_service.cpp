#include "host/commands/command_service.h"

#include <glib.h>
#include <sdbus-c++/sdbus-c++.h>

#include <chrono>
#include <cstdlib>
#include <memory>
#include <numeric>
#include <utility>

namespace plenzo {

namespace {

constexpr const char* serviceName = "org.plenzo.PlenzoHost";
constexpr const char* servicePath = "/org/plenzo/PlenzoHost";
constexpr const char* applicationInterface = "org.freedesktop.Application";
constexpr std::chrono::seconds longestAnswer{60};

using PlatformData = std::map<std::string, sdbus::Variant>;

constexpr std::pair<const char*, const char*> tokens[] = {
    {"activation-token", "XDG_ACTIVATION_TOKEN"}, {"desktop-startup-id", "DESKTOP_STARTUP_ID"}};

std::string tokenIn(const PlatformData& data) {
    for (const auto& [key, variable] : tokens) {
        const auto found = data.find(key);
        if (found != data.end() && found->second.containsValueOfType<std::string>()) {
            return found->second.get<std::string>();
        }
    }
    return {};
}

PlatformData dataOfEnvironment() {
    PlatformData data;
    for (const auto& [key, variable] : tokens) {
        if (const char* value = std::getenv(variable)) {
            data[key] = sdbus::Variant(std::string(value));
        }
    }
    return data;
}

/// A message of the bus takes no bytes that are no UTF-8, and an address may be typed anywhere.
std::vector<std::string> asciiOf(const std::vector<std::string>& urls) {
    std::string ascii(127, 'a');
    std::iota(ascii.begin(), ascii.end(), '\1');
    std::vector<std::string> encoded;
    encoded.reserve(urls.size());
    for (const std::string& url : urls) {
        const std::unique_ptr<char, decltype(&g_free)> escaped(
            g_uri_escape_string(url.c_str(), ascii.c_str(), FALSE), g_free);
        encoded.emplace_back(escaped.get());
    }
    return encoded;
}

} // namespace

CommandService::CommandService(sdbus::IConnection& connection, Received received)
    : m_connection(connection), m_received(std::move(received)),
      m_object(sdbus::createObject(connection, servicePath)) {
    m_object->registerMethod("Open")
        .onInterface(applicationInterface)
        .implementedAs([this](const std::vector<std::string>& urls, const PlatformData& data) {
            for (const std::string& url : urls) {
                m_received(url, tokenIn(data));
            }
        });
    m_object->registerMethod("Activate")
        .onInterface(applicationInterface)
        .implementedAs([](const PlatformData&) {}); // it runs, and has no window
    m_object->registerMethod("ActivateAction")
        .onInterface(applicationInterface)
        .implementedAs(
            [](const std::string&, const std::vector<sdbus::Variant>&, const PlatformData&) {});
    m_object->finishRegistration();
}

CommandService::~CommandService() = default;

bool CommandService::takeName() {
    try {
        m_connection.requestName(serviceName);
        return true;
    } catch (const sdbus::Error&) {
        return false;
    }
}

bool sendToRunningHost(sdbus::IConnection& connection, const std::vector<std::string>& urls) {
    try {
        sdbus::createProxy(connection, serviceName, servicePath)
            ->callMethod("Open")
            .onInterface(applicationInterface)
            .withTimeout(longestAnswer)
            .withArguments(asciiOf(urls), dataOfEnvironment());
        return true;
    } catch (const sdbus::Error&) {
        return false;
    }
}

} // namespace plenzo
