#include "linux/wire/sealed_memory_file.h"

#include "propertylist/binary_property_list.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace plenzo {

namespace {

constexpr int neededSeals = F_SEAL_SHRINK | F_SEAL_WRITE;

bool writeAll(int descriptor, std::span<const std::byte> bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(descriptor, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) {
            continue;
        }
        if (written <= 0) {
            return false;
        }
        bytes = bytes.subspan(static_cast<std::size_t>(written));
    }
    return true;
}

/// The bytes of a sealed memory file as long as it exists.
class Mapping {
public:
    Mapping(int descriptor, std::size_t size)
        : m_address(::mmap(nullptr, size, PROT_READ, MAP_PRIVATE, descriptor, 0)), m_size(size) {}
    Mapping(const Mapping&) = delete;
    Mapping& operator=(const Mapping&) = delete;
    ~Mapping() {
        if (m_address != MAP_FAILED) {
            ::munmap(m_address, m_size);
        }
    }

    /// Empty when the file could not be mapped.
    [[nodiscard]] std::span<const std::byte> bytes() const {
        if (m_address == MAP_FAILED) {
            return {};
        }
        return {static_cast<const std::byte*>(m_address), m_size};
    }

private:
    void* m_address;
    std::size_t m_size;
};

/// 0 when the file must not be mapped.
std::size_t sizeOfSealedFile(int descriptor) {
    const int seals = ::fcntl(descriptor, F_GET_SEALS);
    if (seals < 0 || (seals & neededSeals) != neededSeals) {
        return 0;
    }
    constexpr off_t blockSize = 512; // what st_blocks counts, whatever the file system's blocks are
    struct stat status {};
    if (::fstat(descriptor, &status) != 0 || status.st_blocks < status.st_size / blockSize) {
        return 0;
    }
    return static_cast<std::size_t>(status.st_size);
}

} // namespace

std::optional<FileDescriptor> sealedMemoryFile(std::span<const std::byte> bytes) {
    if (bytes.empty()) {
        return std::nullopt;
    }
    FileDescriptor file(::memfd_create("records", MFD_CLOEXEC | MFD_ALLOW_SEALING));
    if (!file.isOpen() || !writeAll(file.get(), bytes)) {
        return std::nullopt;
    }
    constexpr int allSeals = neededSeals | F_SEAL_GROW | F_SEAL_SEAL;
    if (::fcntl(file.get(), F_ADD_SEALS, allSeals) != 0) {
        return std::nullopt;
    }
    return file;
}

std::optional<Value> readSealedMemoryFile(int descriptor) {
    const std::size_t size = sizeOfSealedFile(descriptor);
    if (size == 0) {
        return std::nullopt;
    }
    return readBinaryPropertyList(Mapping(descriptor, size).bytes());
}

} // namespace plenzo
