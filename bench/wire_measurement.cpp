#include "wire_measurement.h"

#include "linux/wire/message_access.h"
#include "linux/wire/sealed_memory_file.h"
#include "linux/wire/value_decoder.h"
#include "linux/wire/value_encoder.h"
#include "message_walk.h"
#include "propertylist/binary_property_list.h"
#include "support/private_bus.h"
#include "support/sample_records.h"

#include <sdbus-c++/sdbus-c++.h>

#include <optional>
#include <string>

namespace plenzo {

namespace {

constexpr std::size_t recordCount = 25000;

/// A method call with records as it arrives, and the connection that its message belongs to.
class Arrival {
public:
    explicit Arrival(const Array& records) { send(records); }

    sdbus::MethodCall& call() { return m_call; }

private:
    void send(const Array& records) {
        auto object = sdbus::createObject(*m_receiver, objectPath);
        object->registerMethod(interfaceName, "Take", "aa{sv}", "",
                               [this](const sdbus::MethodCall& call) {
                                   m_call = call;
                                   call.createReply().send();
                               });
        object->finishRegistration();
        m_receiver->enterEventLoopAsync();
        auto sender = sdbus::createSessionBusConnectionWithAddress(m_bus.address());
        auto proxy = sdbus::createProxy(*sender, m_receiver->getUniqueName(), objectPath);
        auto call = proxy->createMethodCall(interfaceName, "Take");
        if (appendDictionaries(call, records)) {
            proxy->callMethod(call);
        }
        m_receiver->leaveEventLoop();
    }

    static constexpr auto interfaceName = "org.plenzo.Wire";
    static constexpr auto objectPath = "/org/plenzo/Wire";

    PrivateBus m_bus;
    std::unique_ptr<sdbus::IConnection> m_receiver =
        sdbus::createSessionBusConnectionWithAddress(m_bus.address());
    sdbus::MethodCall m_call;
};

void walkMessage(benchmark::State& state, sdbus::MethodCall& call) {
    while (state.KeepRunning()) {
        call.rewind(true);
        if (Walk(libraryMessage(call)).array("a{sv}") <= 0) {
            state.SkipWithError("the walk broke off");
            break;
        }
    }
}

/// Times `read` and checks that it gives the records; freeing them is not counted.
template <typename Read>
void readRecords(benchmark::State& state, const Array& records, Read read) {
    while (state.KeepRunning()) {
        auto found = read();
        state.PauseTiming();
        if (!found || found->size() != records.size() || (*found)[7] != records[7]) {
            state.SkipWithError("the records did not arrive");
            break;
        }
        found.reset();
        state.ResumeTiming();
    }
}

std::optional<Array> readFile(int descriptor) {
    const auto value = readSealedMemoryFile(descriptor);
    return value && value->array() != nullptr ? std::optional(*value->array()) : std::nullopt;
}

} // namespace

struct WireMeasurement::Arrived {
    Array records = sampleRecords(recordCount);
    Arrival message{records};
    std::optional<FileDescriptor> file = sealedMemoryFile(writeBinaryPropertyList(records));
};

WireMeasurement::WireMeasurement() : m_arrived(std::make_unique<Arrived>()) {}

WireMeasurement::~WireMeasurement() = default;

void WireMeasurement::registerBenchmarks() {
    sdbus::MethodCall& call = m_arrived->message.call();
    const Array& records = m_arrived->records;
    add("walk", [&call](benchmark::State& state) { walkMessage(state, call); });
    add("decode", [&call, &records](benchmark::State& state) {
        readRecords(state, records, [&call] {
            call.rewind(true);
            return readDictionaries(call);
        });
    });
    const int descriptor = m_arrived->file ? m_arrived->file->get() : -1;
    add("file", [descriptor, &records](benchmark::State& state) {
        readRecords(state, records, [descriptor] { return readFile(descriptor); });
    });
}

std::vector<Figure> WireMeasurement::figures(const BestTimes& times) const {
    const double walk = times.of("walk");
    return {
        comparison("25,000 records in a message, over walking it", times.of("decode"), walk, 1.3),
        comparison("25,000 records in their file form, over walking the message", times.of("file"),
                   walk, 0.25)};
}

} // namespace plenzo
