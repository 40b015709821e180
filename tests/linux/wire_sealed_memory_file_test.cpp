#include "linux/wire/sealed_memory_file.h"
#include "propertylist/binary_property_list.h"
#include "support/sample_records.h"
#include "wire_link.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/socket.h>

#include <array>
#include <cstdlib>
#include <functional>
#include <string>

namespace plenzo {
namespace {

std::vector<std::byte> sampleBytes() {
    return writeBinaryPropertyList(sampleRecords(100));
}

void fill(int descriptor) {
    const auto bytes = sampleBytes();
    ASSERT_EQ(::write(descriptor, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
}

FileDescriptor memoryFile(int seals) {
    FileDescriptor file(::memfd_create("test", MFD_CLOEXEC | MFD_ALLOW_SEALING));
    fill(file.get());
    EXPECT_EQ(::fcntl(file.get(), F_ADD_SEALS, seals), 0);
    return file;
}

TEST(ASealedMemoryFile, ArrivesOverTheBusWithWhatWasPutInside) {
    WireLink link;
    const auto file = sealedMemoryFile(sampleBytes());
    ASSERT_TRUE(file);
    EXPECT_EQ(link.sendDescriptor(file->get()), Value(sampleRecords(100)));
    EXPECT_EQ(link.sendDescriptor(file->get()), Value(sampleRecords(100)));
    EXPECT_EQ(link.sendDescriptor(STDIN_FILENO), std::nullopt);
}

TEST(ASealedMemoryFile, CanBeChangedByNobody) {
    const auto file = sealedMemoryFile(sampleBytes());
    ASSERT_TRUE(file);
    const auto size = static_cast<off_t>(sampleBytes().size());
    EXPECT_EQ(::pwrite(file->get(), "x", 1, 0), -1);
    EXPECT_EQ(::ftruncate(file->get(), size - 1), -1);
    EXPECT_EQ(::ftruncate(file->get(), size + 1), -1);
    EXPECT_EQ(::mmap(nullptr, 1, PROT_WRITE, MAP_SHARED, file->get(), 0), MAP_FAILED);
    EXPECT_EQ(::fcntl(file->get(), F_ADD_SEALS, F_SEAL_SEAL), -1);
}

TEST(ASealedMemoryFile, IsNotMadeOfNoBytes) {
    EXPECT_FALSE(sealedMemoryFile({}));
}

TEST(ASealedMemoryFile, NeedsTheSealsThatKeepItsBytesAndNoOthers) {
    EXPECT_TRUE(readSealedMemoryFile(memoryFile(F_SEAL_SHRINK | F_SEAL_WRITE).get()));
    for (const int seals : {0, F_SEAL_SHRINK, F_SEAL_WRITE, F_SEAL_GROW | F_SEAL_SEAL,
                            F_SEAL_SHRINK | F_SEAL_GROW | F_SEAL_FUTURE_WRITE}) {
        EXPECT_FALSE(readSealedMemoryFile(memoryFile(seals).get())) << seals;
    }
}

TEST(ASealedMemoryFile, IsNoPipeSocketFolderDeviceOrFileOnDisk) {
    std::array<int, 2> ends{};
    ASSERT_EQ(::pipe2(ends.data(), O_CLOEXEC), 0);
    const FileDescriptor emptyPipe(ends[0]);
    const FileDescriptor pipeWriter(ends[1]);
    ASSERT_EQ(::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()), 0);
    const FileDescriptor socket(ends[0]);
    const FileDescriptor peer(ends[1]);
    fill(peer.get());
    const FileDescriptor folder(::open("/", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    const FileDescriptor device(::open("/dev/zero", O_RDONLY | O_CLOEXEC));
    std::string path = "/tmp/sealed-memory-file-XXXXXX";
    const FileDescriptor file(::mkostemp(path.data(), O_CLOEXEC));
    ::unlink(path.c_str());
    fill(file.get());
    for (const int descriptor : {emptyPipe.get(), pipeWriter.get(), socket.get(), folder.get(),
                                 device.get(), file.get(), -1, 1 << 20}) {
        EXPECT_FALSE(readSealedMemoryFile(descriptor)) << descriptor;
    }
}

TEST(ASealedMemoryFile, GivesNothingForNoBytesAndForOtherBytes) {
    const FileDescriptor empty(::memfd_create("test", MFD_CLOEXEC | MFD_ALLOW_SEALING));
    ASSERT_EQ(::fcntl(empty.get(), F_ADD_SEALS, F_SEAL_SHRINK | F_SEAL_WRITE), 0);
    EXPECT_FALSE(readSealedMemoryFile(empty.get()));

    const auto nonsense = sealedMemoryFile(std::as_bytes(std::span("bplist00 and then nonsense")));
    ASSERT_TRUE(nonsense);
    EXPECT_FALSE(readSealedMemoryFile(nonsense->get()));
}

TEST(ASealedMemoryFile, GivesNothingForHolesInPlaceOfBytes) {
    const std::vector<std::byte> zeros(1 << 20);
    const auto bytes = writeBinaryPropertyList(Value::fromData(zeros));
    constexpr std::size_t edge = 64;
    FileDescriptor file(::memfd_create("test", MFD_CLOEXEC | MFD_ALLOW_SEALING));
    ASSERT_EQ(::pwrite(file.get(), bytes.data(), edge, 0), edge);
    ASSERT_EQ(::pwrite(file.get(), bytes.data() + bytes.size() - edge, edge,
                       static_cast<off_t>(bytes.size() - edge)),
              edge);
    ASSERT_EQ(::fcntl(file.get(), F_ADD_SEALS, F_SEAL_SHRINK | F_SEAL_WRITE), 0);
    EXPECT_FALSE(readSealedMemoryFile(file.get()));

    const auto whole = sealedMemoryFile(bytes);
    ASSERT_TRUE(whole);
    EXPECT_EQ(readSealedMemoryFile(whole->get()), Value::fromData(zeros));
}

} // namespace
} // namespace plenzo
