#include "linux/file_reference_data.h"
#include "linux/file_references_of_system.h"
#include "propertylist/array.h"
#include "propertylist/binary_property_list.h"
#include "propertylist/dictionary.h"
#include "support/environment_variable.h"
#include "support/fake_file_references.h"
#include "support/file_references_contract.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cmath>
#include <cstdint>
#include <filesystem>
#include <fstream>

namespace plenzo {
namespace {

namespace fs = std::filesystem;

class FakeReferencesUnderContract final : public FileReferencesContract {
public:
    FakeReferencesUnderContract() { m_references.put(folder(), FileKind::Folder); }
    FileReferences& references() override { return m_references; }
    std::string folder() override { return "/home/ana/folder"; }
    void putFile(const std::string& path) override { m_references.put(path); }
    void move(const std::string& from, const std::string& to) override {
        m_references.move(from, to);
    }
    void remove(const std::string& path) override { m_references.remove(path); }

private:
    FakeFileReferences m_references;
};

class SystemReferencesUnderContract final : public FileReferencesContract {
public:
    FileReferences& references() override { return m_references; }
    std::string folder() override { return m_folder.path(); }
    /// The new file is there before the old one goes, so that it gets a number of its own.
    void putFile(const std::string& path) override {
        std::ofstream(path + ".new") << "x";
        fs::rename(path + ".new", path);
    }
    void move(const std::string& from, const std::string& to) override { fs::rename(from, to); }
    void remove(const std::string& path) override { fs::remove(path); }

private:
    EnvironmentVariable m_home{"HOME", "/home/ana"};
    TemporaryFolder m_folder;
    FileReferencesOfSystem m_references;
};

template <typename Contract>
class EveryKindOfFileReferences : public testing::Test {
protected:
    Contract contract;
};

using Kinds = testing::Types<FakeReferencesUnderContract, SystemReferencesUnderContract>;
TYPED_TEST_SUITE(EveryKindOfFileReferences, Kinds);

TYPED_TEST(EveryKindOfFileReferences, FindsTheFileAgain) {
    this->contract.findsTheFileAgain();
}

TYPED_TEST(EveryKindOfFileReferences, TellsAnotherFileOfTheSameNameFromTheFile) {
    this->contract.tellsAnotherFileOfTheSameNameFromTheFile();
}

TYPED_TEST(EveryKindOfFileReferences, MakesNoReferenceToWhatIsNotThere) {
    this->contract.makesNoReferenceToWhatIsNotThere();
}

TYPED_TEST(EveryKindOfFileReferences, ReadsHostileDataAsNoReference) {
    this->contract.readsHostileDataAsNoReference();
}

TYPED_TEST(EveryKindOfFileReferences, KnowsFilesFromFoldersAndMakesTheLastFolderOnly) {
    this->contract.knowsFilesFromFoldersAndMakesTheLastFolderOnly();
}

TYPED_TEST(EveryKindOfFileReferences, PutsTheHomeFolderInPlaceOfATilde) {
    this->contract.putsTheHomeFolderInPlaceOfATilde();
}

TEST(FileReferenceData, HasWhatItWasMadeOf) {
    const FileReference reference{
        .path = "/a\xFF/b",
        .identity = {.device = UINT64_MAX,
                     .inode = UINT64_MAX - 1,
                     .birth = BirthTime{.seconds = -5, .nanoseconds = 999999999}}};
    const auto read = readFileReference(fileReferenceData(reference));
    ASSERT_TRUE(read);
    EXPECT_EQ(read->path, reference.path);
    EXPECT_EQ(read->identity.device, reference.identity.device);
    EXPECT_EQ(read->identity.inode, reference.identity.inode);
    EXPECT_EQ(read->identity.birth, reference.identity.birth);
}

TEST(FileReferenceData, IsNothingWithAnyPartMissingOrOfAnotherType) {
    const auto data =
        fileReferenceData({.path = "/a", .identity = {.device = 1, .inode = 2, .birth = {}}});
    const Dictionary whole = *readBinaryPropertyList(data)->dictionary();
    for (const char* key : {"version", "path", "device", "inode"}) {
        Dictionary changed = whole;
        changed.remove(key);
        EXPECT_FALSE(readFileReference(writeBinaryPropertyList(Value(changed)))) << key;
        for (const Value& wrong : {Value("1"), Value(1.0), Value(true), Value(Array()),
                                   Value(Dictionary()), Value(Date{NAN}), Value(7.5)}) {
            changed.set(key, wrong);
            EXPECT_FALSE(readFileReference(writeBinaryPropertyList(Value(changed)))) << key;
        }
    }
    Dictionary later = whole;
    later.set("version", 2);
    EXPECT_FALSE(readFileReference(writeBinaryPropertyList(Value(later))));
    EXPECT_FALSE(readFileReference(writeBinaryPropertyList(Value(Array{Value(whole)}))));
}

TEST(AFileIdentity, IsTheBirthTimeWhereThereIsOneAndElseTheDevice) {
    const FileIdentity file{
        .device = 1, .inode = 2, .birth = BirthTime{.seconds = 3, .nanoseconds = 4}};
    FileIdentity other = file;
    EXPECT_TRUE(isSameFile(file, other));
    other.device = 9;
    EXPECT_TRUE(isSameFile(file, other)) << "the number of a device changes";
    other.birth->nanoseconds = 5;
    EXPECT_FALSE(isSameFile(file, other)) << "the inode is used again";
    other.birth.reset();
    EXPECT_FALSE(isSameFile(file, other));
    other.device = 1;
    EXPECT_TRUE(isSameFile(file, other));
    other.inode = 3;
    EXPECT_FALSE(isSameFile(file, other));
}

TEST(FileReferencesOfSystem, FollowLinks) {
    const TemporaryFolder folder;
    const FileReferencesOfSystem references;
    std::ofstream(folder.file("file")) << "x";
    fs::create_symlink(folder.file("file"), folder.file("link"));
    const auto reference = references.referenceToFile(folder.file("link"));
    EXPECT_EQ(references.resolve(reference.value()).path, folder.file("link"));
    fs::remove(folder.file("link"));
    fs::create_symlink(folder.path(), folder.file("link"));
    EXPECT_EQ(references.resolve(*reference).state, ReferenceState::Stale);
    EXPECT_EQ(references.kindAtPath(folder.file("link")), FileKind::Folder);
    fs::create_symlink(folder.file("loop"), folder.file("loop"));
    EXPECT_EQ(references.kindAtPath(folder.file("loop")), FileKind::None);
}

TEST(FileReferencesOfSystem, KnowWhatTheUserMayNotRead) {
    if (::geteuid() == 0) {
        GTEST_SKIP() << "root may read everything";
    }
    const TemporaryFolder folder;
    std::ofstream(folder.file("file")) << "x";
    ASSERT_EQ(::chmod(folder.file("file").c_str(), 0), 0);
    EXPECT_FALSE(FileReferencesOfSystem().isReadable(folder.file("file")));
    EXPECT_EQ(FileReferencesOfSystem().kindAtPath(folder.file("file")), FileKind::File);
}

TEST(FileReferencesOfSystem, KeepATildeWithoutAHomeFolder) {
    const FileReferencesOfSystem references;
    for (const char* home : {static_cast<const char*>(nullptr), "", "relative"}) {
        const EnvironmentVariable variable("HOME", home);
        EXPECT_EQ(references.expandingTilde("~/a"), "~/a");
    }
}

} // namespace
} // namespace plenzo
