// Times reading and writing one binary property list, an array of records, and measures what the
// records take in memory: `property_list_timing FILE [ROUNDS]` prints processor nanoseconds a
// record for reading, for writing, and bytes a record. The best round counts.

#include "propertylist/binary_property_list.h"
#include "propertylist/dictionary.h"

#include <algorithm>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>

#include <time.h>
#include <unistd.h>

namespace {

std::string contentsOf(const char* path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

double residentBytes() {
    std::ifstream file("/proc/self/statm");
    double totalPages = 0;
    double residentPages = 0;
    file >> totalPages >> residentPages;
    return residentPages * static_cast<double>(sysconf(_SC_PAGESIZE));
}

/// What this process has used so far; others on the machine matter less to it than to a clock.
double processorNanoseconds() {
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e9 + static_cast<double>(time.tv_nsec);
}

template <typename Work>
double nanosecondsOf(Work work) {
    const double start = processorNanoseconds();
    work();
    return processorNanoseconds() - start;
}

struct Measured {
    double readNanoseconds = 1e18;
    double writeNanoseconds = 1e18;
};

void measureRound(std::span<const std::byte> file, Measured& best) {
    std::optional<plenzo::Value> value;
    const double read = nanosecondsOf([&] { value = plenzo::readBinaryPropertyList(file); });
    std::vector<std::byte> written;
    const double write = nanosecondsOf([&] { written = plenzo::writeBinaryPropertyList(*value); });
    best.readNanoseconds = std::min(best.readNanoseconds, read);
    best.writeNanoseconds = std::min(best.writeNanoseconds, write);
}

} // namespace

int main(int argumentCount, char** arguments) {
    if (argumentCount < 2)
        return 2;
    const std::string contents = contentsOf(arguments[1]);
    const auto file = std::as_bytes(std::span(contents));
    const int rounds = argumentCount > 2 ? std::stoi(arguments[2]) : 5;

    const double residentBefore = residentBytes();
    auto value = plenzo::readBinaryPropertyList(file);
    if (!value || value->array() == nullptr || value->array()->empty())
        return 1;
    const double resident = residentBytes() - residentBefore;
    const auto recordCount = static_cast<double>(value->array()->size());

    Measured best;
    for (int round = 0; round < rounds; ++round)
        measureRound(file, best);
    std::cout << best.readNanoseconds / recordCount << ' ' << best.writeNanoseconds / recordCount
              << ' ' << resident / recordCount << '\n';
    return 0;
}
