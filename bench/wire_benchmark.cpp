// How much keeping the records costs beyond walking their message: the same 25,000 records,
// received over a bus, are walked with the bus library without keeping anything, decoded, and read
// from a sealed memory file. Prints the times a record and their ratios.

#include "best_times.h"
#include "linux/wire/message_access.h"
#include "linux/wire/sealed_memory_file.h"
#include "linux/wire/value_decoder.h"
#include "linux/wire/value_encoder.h"
#include "propertylist/binary_property_list.h"
#include "support/private_bus.h"
#include "support/sample_records.h"

#include <benchmark/benchmark.h>
#include <sdbus-c++/sdbus-c++.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
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

/// Reads a message to its end and keeps nothing, with no call of the bus library but those that are
/// needed to learn what is there. Each step gives what the library does: above 0 something was
/// read, 0 it was the end of an array, below 0 the message is damaged.
class Walk {
public:
    explicit Walk(sd_bus_message* message) : m_message(message) {}

    int array(const char* elementType) {
        int step = sd_bus_message_enter_container(m_message, SD_BUS_TYPE_ARRAY, elementType);
        if (step <= 0) {
            return step;
        }
        while (step > 0) {
            step = element(elementType);
        }
        return step < 0 ? step : sd_bus_message_exit_container(m_message);
    }

private:
    int element(const char* type) {
        switch (type[0]) {
        case SD_BUS_TYPE_DICT_ENTRY_BEGIN:
            return entry();
        case SD_BUS_TYPE_ARRAY:
            return array("{sv}");
        default:
            return variant();
        }
    }

    int entry() {
        const int step = sd_bus_message_enter_container(m_message, SD_BUS_TYPE_DICT_ENTRY, "sv");
        const char* key = nullptr;
        if (step <= 0) {
            return step;
        }
        const bool isRead =
            sd_bus_message_read_basic(m_message, SD_BUS_TYPE_STRING, &key) > 0 && variant() > 0;
        return isRead ? sd_bus_message_exit_container(m_message) : -1;
    }

    int variant() {
        char type = 0;
        const char* contents = nullptr;
        const int step = sd_bus_message_peek_type(m_message, &type, &contents);
        if (step <= 0) {
            return step;
        }
        const bool isRead =
            sd_bus_message_enter_container(m_message, SD_BUS_TYPE_VARIANT, contents) > 0 &&
            contentsOfType(contents) > 0;
        return isRead ? sd_bus_message_exit_container(m_message) : -1;
    }

    int contentsOfType(const char* type) {
        double item = 0;
        if (type[0] == SD_BUS_TYPE_ARRAY) {
            return array(type + 1);
        }
        if (type[0] != SD_BUS_TYPE_STRUCT_BEGIN) {
            return sd_bus_message_read_basic(m_message, type[0], &item);
        }
        const bool isRead =
            sd_bus_message_enter_container(m_message, SD_BUS_TYPE_STRUCT, "d") > 0 &&
            sd_bus_message_read_basic(m_message, SD_BUS_TYPE_DOUBLE, &item) > 0;
        return isRead ? sd_bus_message_exit_container(m_message) : -1;
    }

    sd_bus_message* m_message;
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

void print(const char* what, double milliseconds, double walkMilliseconds) {
    if (milliseconds == 0 || walkMilliseconds == 0) {
        std::printf("%-28s did not run\n", what);
        return;
    }
    std::printf("%-28s %7.2f us a record   %5.2f x the walk\n", what,
                milliseconds * 1000 / double(recordCount), milliseconds / walkMilliseconds);
}

} // namespace
} // namespace plenzo

int main(int argc, char** argv) {
    using namespace plenzo;
    const Array records = sampleRecords(recordCount);
    Arrival arrival(records);
    sdbus::MethodCall& call = arrival.call();
    const auto file = sealedMemoryFile(writeBinaryPropertyList(records));
    if (!file) {
        return EXIT_FAILURE;
    }
    const auto add = [](const char* name, auto function) {
        benchmark::RegisterBenchmark(name, function)->Unit(benchmark::kMillisecond);
    };
    add("walk", [&](benchmark::State& state) { walkMessage(state, call); });
    add("decode", [&](benchmark::State& state) {
        readRecords(state, records, [&] {
            call.rewind(true);
            return readDictionaries(call);
        });
    });
    add("file", [&](benchmark::State& state) {
        readRecords(state, records, [&] { return readFile(file->get()); });
    });
    const BestTimes times = runInTurns(argc, argv, "9");
    print("walking, keeping nothing", times.of("walk"), times.of("walk"));
    print("decoding", times.of("decode"), times.of("walk"));
    print("file form", times.of("file"), times.of("walk"));
}
