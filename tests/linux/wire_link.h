#pragma once

#include "propertylist/dictionary.h"
#include "support/private_bus.h"

#include <sdbus-c++/sdbus-c++.h>

#include <functional>
#include <memory>
#include <optional>

namespace plenzo {

/// Two programs on a bus of their own, as far as the bus can tell: what the one sends in a method
/// call, the other decodes as a host's batch of records or as its preferences.
class WireLink {
public:
    WireLink();
    WireLink(const WireLink&) = delete;
    WireLink& operator=(const WireLink&) = delete;
    ~WireLink();

    using Filler = std::function<void(sdbus::MethodCall&)>;

    /// What arrives when the filler's argument of the type aa{sv} or a{sv} is sent.
    std::optional<Array> sendDictionaries(const Filler& fill);
    std::optional<Dictionary> sendDictionary(const Filler& fill);
    /// What arrives when the value is sent as an entry of a dictionary; nothing when it is left
    /// out.
    Value sendValue(const Value& value);
    /// What a sealed memory file holds whose descriptor is sent.
    std::optional<Value> sendDescriptor(int descriptor);

    /// A call that is ready to be filled and is never sent.
    sdbus::MethodCall unsentCall();

private:
    void serve();
    void call(const std::string& method, const Filler& fill);

    PrivateBus m_bus;
    std::unique_ptr<sdbus::IConnection> m_receiver;
    std::unique_ptr<sdbus::IConnection> m_sender;
    std::unique_ptr<sdbus::IObject> m_object;
    std::unique_ptr<sdbus::IProxy> m_proxy;
    // Written on the receiver's thread, read after its answer.
    std::optional<Array> m_dictionaries;
    std::optional<Dictionary> m_dictionary;
    std::optional<Value> m_fileContents;
};

} // namespace plenzo
