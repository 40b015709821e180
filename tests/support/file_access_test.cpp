#include "support/bookmark_utilities.h"
#include "support/fake_actions.h"
#include "support/fake_desktop.h"
#include "support/fake_file_references.h"
#include "support/fake_user_defaults.h"
#include "support/file_access_contract.h"

#include <span>

namespace plenzo {
namespace {

class FakeAccessUnderContract final : public FileAccessContract {
public:
    FileAccess& access() override { return m_access; }
    void put(const std::string& path) override { m_access.files.insert(path); }
    void remove(const std::string& path) override { m_access.files.erase(path); }
    std::vector<std::byte> transportData(const std::string& path) override {
        const auto bytes = std::as_bytes(std::span(path));
        return {bytes.begin(), bytes.end()};
    }

private:
    FakeFileAccess m_access;
};

class BookmarksUnderContract final : public FileAccessContract {
public:
    FileAccess& access() override { return m_bookmarks; }
    void put(const std::string& path) override { m_references.put(path); }
    void remove(const std::string& path) override { m_references.remove(path); }
    std::vector<std::byte> transportData(const std::string& path) override {
        return m_bookmarks.transportDataForSecureFileURL(path).value();
    }

private:
    FakeUserDefaults m_defaults;
    FakeFileReferences m_references;
    FakeLocalizedStrings m_strings;
    BookmarkUtilities m_bookmarks{{.defaults = m_defaults,
                                   .references = m_references,
                                   .strings = m_strings,
                                   .openPanel = nullptr,
                                   .programName = "Agent"}};
};

template <typename Contract>
class AFileAccess : public testing::Test {
protected:
    Contract contract;
};

using Accesses = testing::Types<FakeAccessUnderContract, BookmarksUnderContract>;
TYPED_TEST_SUITE(AFileAccess, Accesses);

TYPED_TEST(AFileAccess, FindsTheFileThatTheHostNames) {
    this->contract.findsTheFileThatTheHostNames();
}

TYPED_TEST(AFileAccess, KeepsTheAccessThatWasSavedUntilTheFileIsGone) {
    this->contract.keepsTheAccessThatWasSavedUntilTheFileIsGone();
}

TYPED_TEST(AFileAccess, GivesAFileThatCanBeReadWithoutKeepingIt) {
    this->contract.givesAFileThatCanBeReadWithoutKeepingIt();
}

TYPED_TEST(AFileAccess, KnowsWhatIsSavedTogetherAtOnceAndAfterwards) {
    this->contract.knowsWhatIsSavedTogetherAtOnceAndAfterwards();
}

} // namespace
} // namespace plenzo
