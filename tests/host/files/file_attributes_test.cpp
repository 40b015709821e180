#include "host/files/file_attributes.h"
#include "host/files/file_replacement.h"

#include <gmock/gmock.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <array>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>

namespace fs = std::filesystem;

namespace plenzo {

namespace {

constexpr const char* accessList = "system.posix_acl_access";
constexpr uid_t somebody = 4711;
constexpr gid_t theirGroup = 4712;

/// An access list in the kernel's form: the owner, one more user, the group, the most that both may
/// do, and others.
std::string accessListFor(uid_t user) {
    struct Entry {
        std::uint16_t tag;
        std::uint16_t rights;
        std::uint32_t who;
    };
    constexpr std::uint32_t version = 2;
    constexpr std::uint32_t nobodyNamed = 0xFFFFFFFF;
    const std::array<Entry, 5> entries = {{{0x01, 6, nobodyNamed},
                                           {0x02, 6, user},
                                           {0x04, 4, nobodyNamed},
                                           {0x10, 6, nobodyNamed},
                                           {0x20, 0, nobodyNamed}}};
    std::string bytes(sizeof version + sizeof entries, '\0');
    std::memcpy(bytes.data(), &version, sizeof version);
    std::memcpy(bytes.data() + sizeof version, entries.data(), sizeof entries);
    return bytes;
}

std::string attributeOf(const std::string& path, const char* name) {
    std::string value(1000, '\0');
    const ssize_t size = getxattr(path.c_str(), name, value.data(), value.size());
    value.resize(size > 0 ? static_cast<std::size_t>(size) : 0);
    return value;
}

bool setAttribute(const std::string& path, const char* name, const std::string& value) {
    return setxattr(path.c_str(), name, value.data(), value.size(), 0) == 0;
}

struct stat statusOf(const std::string& path) {
    struct stat status {};
    EXPECT_EQ(stat(path.c_str(), &status), 0);
    return status;
}

/// Somebody who is not the superuser, as long as it lives.
class AsSomebody {
public:
    AsSomebody() { EXPECT_EQ(setegid(somebody) + seteuid(somebody), 0); }
    AsSomebody(const AsSomebody&) = delete;
    AsSomebody& operator=(const AsSomebody&) = delete;
    ~AsSomebody() { EXPECT_EQ(seteuid(0) + setegid(0), 0); }
};

class AReplacedFile : public testing::Test {
protected:
    AReplacedFile() {
        std::string pattern = (fs::temp_directory_path() / "plenzo-attributes-XXXXXX").string();
        m_folder = mkdtemp(pattern.data());
        old = (m_folder / "old").string();
        fresh = (m_folder / "new").string();
        std::ofstream(old) << "text";
    }
    ~AReplacedFile() override { fs::remove_all(m_folder); }

    std::string replaced() {
        FileReplacementOnDisk disk;
        const FoundFile found = disk.read(old);
        EXPECT_EQ(found.error, "");
        return disk.writeThrough(fresh, found.text, found.attributes);
    }

    fs::path m_folder;
    std::string old;
    std::string fresh;
};

class AReplacedFileOfAnother : public AReplacedFile {
protected:
    void SetUp() override {
        if (geteuid() != 0) {
            GTEST_SKIP() << "only the superuser can give files away";
        }
        chmod(m_folder.c_str(), 0777);
    }
    void give(uid_t user, gid_t group, mode_t mode) const {
        ASSERT_EQ(chown(old.c_str(), user, group), 0);
        ASSERT_EQ(chmod(old.c_str(), mode), 0);
    }
};

} // namespace

TEST_F(AReplacedFile, KeepsItsModeItsAttributesAndItsAccessList) {
    ASSERT_EQ(chmod(old.c_str(), 0640), 0);
    if (!setAttribute(old, "user.tags", "work") || !setAttribute(old, "user.empty", "") ||
        !setAttribute(old, accessList, accessListFor(somebody))) {
        GTEST_SKIP() << "the file system knows no extended attributes";
    }
    EXPECT_EQ(replaced(), "");
    EXPECT_EQ(attributeOf(fresh, "user.tags"), "work");
    EXPECT_EQ(getxattr(fresh.c_str(), "user.empty", nullptr, 0), 0);
    EXPECT_EQ(attributeOf(fresh, accessList), accessListFor(somebody));
    EXPECT_EQ(statusOf(fresh).st_mode, statusOf(old).st_mode);
}

TEST_F(AReplacedFile, GetsNoAccessListOfItsFolder) {
    ASSERT_EQ(chmod(old.c_str(), 0640), 0);
    if (!setAttribute(m_folder, "system.posix_acl_default", accessListFor(somebody))) {
        GTEST_SKIP() << "the file system knows no access lists";
    }
    EXPECT_EQ(replaced(), "");
    EXPECT_EQ(attributeOf(fresh, accessList), "");
    EXPECT_EQ(statusOf(fresh).st_mode & 07777U, 0640U);
}

TEST_F(AReplacedFileOfAnother, KeepsOwnerAndGroup) {
    give(somebody, theirGroup, 0660);
    EXPECT_EQ(replaced(), "");
    const struct stat status = statusOf(fresh);
    EXPECT_EQ(status.st_uid, somebody);
    EXPECT_EQ(status.st_gid, theirGroup);
    EXPECT_EQ(status.st_mode & 07777U, 0660U);
}

TEST_F(AReplacedFileOfAnother, IsTakenOverWhereNobodyLosesAccess) {
    const struct {
        uid_t user;
        gid_t group;
        mode_t mode;
        bool isTaken;
    } rows[] = {
        {somebody, theirGroup, 0660, false}, // the group would lose it
        {somebody, theirGroup, 0646, false}, // or get it
        {somebody, theirGroup, 0600, true},  {somebody, theirGroup, 0644, true},
        {0, somebody, 0660, true}, // the owner is in the group
        {0, somebody, 0464, true},           {0, theirGroup, 0666, true},
        {0, theirGroup, 0646, false}, // the owner could not write any more
    };
    for (const auto& [user, group, mode, isTaken] : rows) {
        give(user, group, mode);
        const AsSomebody now;
        EXPECT_EQ(canKeepOwner(statusOf(old), geteuid()), isTaken) << std::oct << mode;
        EXPECT_EQ(replaced(), isTaken ? "" : "its owner and group cannot be kept")
            << std::oct << mode;
        EXPECT_TRUE(!isTaken || (statusOf(fresh).st_mode & 07777U) == mode) << std::oct << mode;
    }
}

} // namespace plenzo
