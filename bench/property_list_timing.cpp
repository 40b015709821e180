// One program's side of bench/compare-with-plistlib:
//
//   property_list_timing write COUNT FILE   writes that many sample records into the file
//   property_list_timing measure FILE       reads the file and writes it again in memory, some
//                                           rounds; prints the best round's processor nanoseconds a
//                                           record for reading and for writing, and how many bytes
//                                           a record the resident memory grew by when it was read
//   property_list_timing build COUNT        prints how many bytes a record the resident memory
//                                           grows by when records are made that share nothing

#include "propertylist/binary_property_list.h"
#include "support/sample_records.h"

#include <unistd.h>

#include <algorithm>
#include <ctime>
#include <fstream>
#include <iostream>
#include <iterator>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace {

using plenzo::Value;

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

int writeRecords(std::size_t count, const char* path) {
    const auto bytes = plenzo::writeBinaryPropertyList(plenzo::sampleRecords(count));
    std::ofstream file(path, std::ios::binary);
    file.write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
    return file.good() ? 0 : 1;
}

int measure(const char* path) {
    const std::string contents = contentsOf(path);
    const auto file = std::as_bytes(std::span(contents));
    const double residentBefore = residentBytes();
    const auto kept = plenzo::readBinaryPropertyList(file);
    const double resident = residentBytes() - residentBefore;
    if (!kept || kept->array() == nullptr || kept->array()->empty())
        return 1;

    constexpr int rounds = 5;
    double read = 1e18;
    double write = 1e18;
    for (int round = 0; round < rounds; ++round) {
        std::optional<Value> value;
        read = std::min(read, nanosecondsOf([&] { value = plenzo::readBinaryPropertyList(file); }));
        write = std::min(write, nanosecondsOf([&] { plenzo::writeBinaryPropertyList(*value); }));
    }
    const auto count = static_cast<double>(kept->array()->size());
    std::cout << read / count << ' ' << write / count << ' ' << resident / count << '\n';
    return 0;
}

int build(std::size_t count) {
    const double residentBefore = residentBytes();
    const plenzo::Array records = plenzo::sampleRecords(count);
    std::cout << (residentBytes() - residentBefore) / static_cast<double>(records.size()) << '\n';
    return 0;
}

} // namespace

int main(int argumentCount, char** arguments) {
    const std::string_view what = argumentCount > 1 ? arguments[1] : "";
    if (what == "write" && argumentCount == 4)
        return writeRecords(std::stoul(arguments[2]), arguments[3]);
    if (what == "measure" && argumentCount == 3)
        return measure(arguments[2]);
    if (what == "build" && argumentCount == 3)
        return build(std::stoul(arguments[2]));
    return 2;
}
