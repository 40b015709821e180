#include "wire_link.h"

#include "linux/wire/sealed_memory_file.h"
#include "linux/wire/value_decoder.h"
#include "linux/wire/value_encoder.h"

#include <gtest/gtest.h>

namespace plenzo {

namespace {

constexpr auto interfaceName = "org.plenzo.Wire";
constexpr auto objectPath = "/org/plenzo/Wire";

} // namespace

WireLink::WireLink()
    : m_receiver(sdbus::createSessionBusConnectionWithAddress(m_bus.address())),
      m_sender(sdbus::createSessionBusConnectionWithAddress(m_bus.address())),
      m_object(sdbus::createObject(*m_receiver, objectPath)),
      m_proxy(sdbus::createProxy(*m_sender, m_receiver->getUniqueName(), objectPath)) {
    constexpr std::uint64_t patienceMicroseconds =
        240'000'000; // under the sanitizers, on a busy machine
    m_sender->setMethodCallTimeout(patienceMicroseconds);
    serve();
    m_receiver->enterEventLoopAsync();
}

WireLink::~WireLink() {
    m_receiver->leaveEventLoop();
}

void WireLink::serve() {
    const auto answer = [](sdbus::MethodCall& request) { request.createReply().send(); };
    m_object->registerMethod(interfaceName, "Dictionaries", "aa{sv}", "",
                             [this, answer](sdbus::MethodCall request) {
                                 m_dictionaries = readDictionaries(request);
                                 answer(request);
                             });
    m_object->registerMethod(interfaceName, "Dictionary", "a{sv}", "",
                             [this, answer](sdbus::MethodCall request) {
                                 m_dictionary = readDictionary(request);
                                 answer(request);
                             });
    m_object->registerMethod(interfaceName, "Descriptor", "h", "",
                             [this, answer](sdbus::MethodCall request) {
                                 sdbus::UnixFd descriptor;
                                 request >> descriptor;
                                 m_fileContents = readSealedMemoryFile(descriptor.get());
                                 answer(request);
                             });
    m_object->finishRegistration();
}

void WireLink::call(const std::string& method, const Filler& fill) {
    auto request = m_proxy->createMethodCall(interfaceName, method);
    fill(request);
    m_proxy->callMethod(request);
}

std::optional<Array> WireLink::sendDictionaries(const Filler& fill) {
    m_dictionaries.reset();
    call("Dictionaries", fill);
    return m_dictionaries;
}

std::optional<Dictionary> WireLink::sendDictionary(const Filler& fill) {
    m_dictionary.reset();
    call("Dictionary", fill);
    return m_dictionary;
}

Value WireLink::sendValue(const Value& value) {
    const auto received = sendDictionary([&value](sdbus::MethodCall& request) {
        EXPECT_TRUE(appendDictionary(request, {{"value", value}}));
    });
    const Value* found = received ? received->find("value") : nullptr;
    return found != nullptr ? *found : Value();
}

std::optional<Value> WireLink::sendDescriptor(int descriptor) {
    m_fileContents.reset();
    call("Descriptor",
         [descriptor](sdbus::MethodCall& request) { request << sdbus::UnixFd(descriptor); });
    return m_fileContents;
}

sdbus::MethodCall WireLink::unsentCall() {
    return m_proxy->createMethodCall(interfaceName, "Unsent");
}

} // namespace plenzo
