#include "resident_memory.h"

#include "linux/wire/file_descriptor.h"
#include "linux/wire/sealed_memory_file.h"
#include "propertylist/binary_property_list.h"
#include "support/sample_records.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <fstream>
#include <functional>

namespace plenzo {

namespace {

constexpr std::size_t recordCount = 100000;
constexpr double limitBytes = 1500;

/// What this process has in memory of its own, without files that it looks at.
double ownResidentBytes() {
    std::ifstream status("/proc/self/status");
    std::string word;
    double kibibytes = std::nan("");
    while (status >> word && word != "RssAnon:") {
    }
    status >> kibibytes;
    return kibibytes * 1024;
}

/// By how much a process that does nothing else grows by what `make` gives, for each record; NaN
/// when that are not the records.
double bytesARecord(const std::function<Array()>& make) {
    const double before = ownResidentBytes();
    const Array records = make();
    const double grown = ownResidentBytes() - before;
    return records.size() == recordCount ? grown / double(recordCount) : std::nan("");
}

/// Runs in a child, which nobody's freed memory can help.
double inAChild(const std::function<double()>& measure) {
    std::array<int, 2> ends{};
    if (::pipe(ends.data()) != 0) {
        return std::nan("");
    }
    const FileDescriptor readEnd(ends[0]);
    FileDescriptor writeEnd(ends[1]);
    const pid_t child = ::fork();
    if (child == 0) {
        const double value = measure();
        ::_exit(::write(writeEnd.get(), &value, sizeof value) == sizeof value ? 0 : 1);
    }
    writeEnd = FileDescriptor();
    double value = 0;
    const bool isRead = ::read(readEnd.get(), &value, sizeof value) == sizeof value;
    ::waitpid(child, nullptr, 0);
    return isRead ? value : std::nan("");
}

Array readRecords(int descriptor) {
    const auto value = readSealedMemoryFile(descriptor);
    return value && value->array() != nullptr ? *value->array() : Array();
}

} // namespace

std::vector<Figure> residentMemoryOfARecord() {
    const FileDescriptor file(::memfd_create("records", MFD_CLOEXEC | MFD_ALLOW_SEALING));
    inAChild([&file] {
        const auto bytes = writeBinaryPropertyList(sampleRecords(recordCount));
        return static_cast<double>(::write(file.get(), bytes.data(), bytes.size()));
    });
    constexpr int seals = F_SEAL_SHRINK | F_SEAL_GROW | F_SEAL_WRITE | F_SEAL_SEAL;
    ::fcntl(file.get(), F_ADD_SEALS, seals);
    const double read =
        inAChild([&file] { return bytesARecord([&file] { return readRecords(file.get()); }); });
    const double built =
        inAChild([] { return bytesARecord([] { return sampleRecords(recordCount); }); });
    return {{"bytes of memory of a record read from a file", read, limitBytes, ""},
            {"bytes of memory of a record built on its own", built, limitBytes, ""}};
}

} // namespace plenzo
