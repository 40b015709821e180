#include "support/access_request.h"
#include "support/bookmark_utilities.h"
#include "support/fake_desktop.h"
#include "support/fake_file_references.h"
#include "support/fake_open_panel.h"
#include "support/fake_user_defaults.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace plenzo {
namespace {

using Store = BookmarkUtilities::Store;
using PreferAppScoped = BookmarkUtilities::PreferAppScoped;
using Create = FileAccess::CreateIfFileExists;
using Path = std::optional<std::string>;
using Paths = std::vector<std::string>;

constexpr const char* plan = "/home/ana/plan.txt";
constexpr const char* list = "/home/ana/list.txt";

class Bookmarks : public testing::Test {
protected:
    Bookmarks() {
        references.put("/home/ana", FileKind::Folder);
        references.put(plan);
        references.put(list);
    }

    Paths kept(const char* key) const {
        const Value store = defaults.valueForKey(key);
        Paths paths;
        for (const auto& [path, data] : store.dictionary() ? *store.dictionary() : Dictionary()) {
            paths.emplace_back(path.name());
        }
        return paths;
    }
    Paths secure() const { return kept("secureBookmarks"); }
    Paths normal() const { return kept("normalBookmarks"); }

    FakeUserDefaults defaults;
    FakeFileReferences references;
    FakeLocalizedStrings strings;
    FakeOpenPanel panel;
    BookmarkUtilities bookmarks{{.defaults = defaults,
                                 .references = references,
                                 .strings = strings,
                                 .openPanel = &panel,
                                 .programName = "Agent"}};
};

TEST_F(Bookmarks, AreKeptInTwoStoresByPath) {
    EXPECT_TRUE(bookmarks.addSecureBookmark(plan));
    EXPECT_TRUE(bookmarks.addNormalBookmark(plan));
    EXPECT_TRUE(bookmarks.addNormalBookmark(list));
    EXPECT_FALSE(bookmarks.addSecureBookmark("/missing"));
    EXPECT_FALSE(bookmarks.addNormalBookmark(""));
    EXPECT_EQ(secure(), (Paths{plan}));
    EXPECT_EQ(normal(), (Paths{plan, list}));
    const Value store = defaults.valueForKey("secureBookmarks");
    EXPECT_EQ(store.dictionary()->find(plan)->type(), ValueType::Data);
    EXPECT_EQ(bookmarks.getSecureBookmark(plan), plan);
    EXPECT_EQ(bookmarks.getSecureBookmark(list), Path());
    EXPECT_EQ(bookmarks.getNormalBookmark(list), list);
    bookmarks.removeNormalBookmark(plan);
    EXPECT_EQ(bookmarks.getNormalBookmark(plan), Path());
    EXPECT_EQ(bookmarks.getSecureBookmark(plan), plan);
    bookmarks.addNormalBookmark(plan);
    bookmarks.removeSecureFileURLWithPath(plan);
    EXPECT_EQ(secure(), Paths());
    EXPECT_EQ(normal(), (Paths{list}));
}

TEST_F(Bookmarks, AreThereAgainInTheNextSession) {
    ASSERT_TRUE(bookmarks.addSecureBookmark(plan));
    BookmarkUtilities next({.defaults = defaults,
                            .references = references,
                            .strings = strings,
                            .openPanel = nullptr,
                            .programName = {}});
    EXPECT_FALSE(next.isURLExpandedFromSecureBookmark(plan));
    EXPECT_EQ(next.secureFileURLFromPath(plan, Create::No), plan);
    EXPECT_TRUE(next.isURLExpandedFromSecureBookmark(plan));
}

TEST_F(Bookmarks, OfAStaleFileAreRemovedWhenMetAndTheNormalStoreIsNext) {
    ASSERT_TRUE(bookmarks.addSecureBookmark(plan));
    EXPECT_EQ(bookmarks.getSecureBookmark(plan), plan);
    references.put(plan);
    ASSERT_TRUE(bookmarks.addNormalBookmark(plan));
    EXPECT_EQ(bookmarks.getSecureBookmark(plan), Path());
    EXPECT_EQ(secure(), Paths());
    EXPECT_FALSE(bookmarks.isURLExpandedFromSecureBookmark(plan));
    EXPECT_EQ(bookmarks.secureFileURLFromPath(plan, Create::No), plan);
    EXPECT_FALSE(bookmarks.isURLExpandedFromSecureBookmark(plan)) << "of the normal store";
    references.move(plan, "/home/ana/elsewhere");
    EXPECT_EQ(bookmarks.secureFileURLFromPath(plan, Create::Yes), Path());
    EXPECT_EQ(normal(), Paths());
    EXPECT_TRUE(panel.requests.empty()) << "there is no file to ask for";
}

TEST_F(Bookmarks, ThatChangeTogetherAreReadAtOnceAndWrittenAtTheEnd) {
    ASSERT_TRUE(bookmarks.addSecureBookmark(plan));
    Handle together = bookmarks.changeTogether();
    EXPECT_FALSE(bookmarks.changeTogether()) << "once is enough";
    EXPECT_TRUE(bookmarks.addSecureBookmark(list));
    EXPECT_TRUE(bookmarks.addNormalBookmark(plan));
    references.put(plan);
    EXPECT_EQ(bookmarks.getSecureBookmark(plan), Path()) << "stale";
    EXPECT_EQ(bookmarks.getSecureBookmark(list), list);
    EXPECT_EQ(secure(), (Paths{plan}));
    EXPECT_EQ(normal(), Paths());
    together.reset();
    EXPECT_EQ(secure(), (Paths{list}));
    EXPECT_EQ(normal(), (Paths{plan}));
    EXPECT_TRUE(bookmarks.addSecureBookmark(plan));
    EXPECT_EQ(secure(), (Paths{list, plan})) << "written at once again";
}

TEST_F(Bookmarks, AreKeptOfNoMoreFilesThanTheSettingsCanBear) {
    const Handle together = bookmarks.changeTogether();
    std::string last;
    for (int number = 0; number < 30'000; ++number) {
        const std::string path = "/plans/" + std::to_string(number);
        references.put(path);
        last = bookmarks.saveSecureFile(path) ? path : last;
    }
    EXPECT_EQ(last, "/plans/19999");
    references.put(last);
    EXPECT_EQ(bookmarks.getSecureBookmark(last), Path()) << "stale";
    EXPECT_TRUE(bookmarks.saveSecureFile(last)) << "it has its place";
}

TEST_F(Bookmarks, OfTheNormalStoreThatAreFoundMakeTheStateToBeRestored) {
    Dictionary state;
    ASSERT_TRUE(bookmarks.addSecureBookmark(plan));
    bookmarks.willEncodeRestorableState(state);
    EXPECT_TRUE(state.empty());
    ASSERT_TRUE(bookmarks.addNormalBookmark(plan));
    ASSERT_TRUE(bookmarks.addNormalBookmark(list));
    references.put(plan);
    bookmarks.willEncodeRestorableState(state);
    EXPECT_EQ(state, (Dictionary{{Key("normalBookmarks"), Array{list}}}));
    EXPECT_EQ(normal(), (Paths{plan, list})) << "nothing is removed for that";
}

TEST_F(Bookmarks, PreferTheSecureStoreWhereAskedTo) {
    EXPECT_TRUE(bookmarks.saveSecureFileURL(plan, PreferAppScoped::Yes));
    EXPECT_TRUE(bookmarks.saveSecureFileURL(list, PreferAppScoped::No));
    EXPECT_FALSE(bookmarks.saveSecureFileURL("/missing", PreferAppScoped::Yes));
    EXPECT_EQ(secure(), (Paths{plan}));
    EXPECT_EQ(normal(), (Paths{list}));
    references.refusesReferences = true;
    EXPECT_FALSE(bookmarks.saveSecureFile(list));
    EXPECT_EQ(bookmarks.transportDataForSecureFileURL(plan), std::nullopt);
}

TEST_F(Bookmarks, SurviveSettingsThatHoldAnythingElse) {
    for (const Value& damaged : {Value(7), Value("text"), Value(Array{1, 2})}) {
        defaults.setValues({{"secureBookmarks", damaged}, {"normalBookmarks", damaged}});
        EXPECT_EQ(bookmarks.secureFileURLFromPath(plan, Create::No), Path());
        bookmarks.removeSecureFileURLWithPath(plan);
        bookmarks.cleanSecureFileURLs();
        EXPECT_TRUE(bookmarks.addSecureBookmark(plan));
        EXPECT_EQ(secure(), (Paths{plan}));
    }
    const Dictionary wrong{{plan, "no data"}, {list, Value(Dictionary())}};
    defaults.setValues({{"secureBookmarks", Value(wrong)}});
    EXPECT_EQ(bookmarks.getSecureBookmark(plan), Path());
    EXPECT_EQ(secure(), (Paths{list})) << "only the one that was met goes";
}

TEST_F(Bookmarks, OfMissingFilesGoFromBothStoresWhenCleaned) {
    for (const char* path : {plan, list}) {
        ASSERT_TRUE(bookmarks.addSecureBookmark(path));
        ASSERT_TRUE(bookmarks.addNormalBookmark(path));
        ASSERT_EQ(bookmarks.getSecureBookmark(path), path);
    }
    references.remove(plan);
    bookmarks.cleanSecureFiles();
    EXPECT_EQ(secure(), (Paths{list}));
    EXPECT_EQ(normal(), (Paths{list}));
    EXPECT_FALSE(bookmarks.isURLExpandedFromSecureBookmark(plan));
    EXPECT_TRUE(bookmarks.isURLExpandedFromSecureBookmark(list));
    EXPECT_EQ(defaults.synchronizeCount, 1) << "nothing else writes them at the session's end";
}

TEST_F(Bookmarks, NeedNoPanelForAFileThatCanBeRead) {
    EXPECT_EQ(bookmarks.secureFileFromPath("~/plan.txt", Create::Yes), plan);
    EXPECT_EQ(bookmarks.secureFileFromPath(plan, Create::No), Path());
    EXPECT_EQ(bookmarks.secureFileFromPath("/missing", Create::Yes), Path());
    EXPECT_TRUE(panel.requests.empty());
    EXPECT_EQ(secure(), Paths());
    ASSERT_TRUE(bookmarks.addSecureBookmark(plan));
    EXPECT_EQ(bookmarks.secureFileFromPath("~/plan.txt", Create::No), plan);
}

TEST_F(Bookmarks, KeepWhatTheUserGrants) {
    references.unreadable = {plan};
    EXPECT_EQ(bookmarks.secureFileFromPath(plan, Create::No), Path());
    EXPECT_EQ(bookmarks.secureFileFromPath(plan, Create::Yes), Path()) << "declined";
    panel.answer = list;
    EXPECT_EQ(bookmarks.secureFileFromPath(plan, Create::Yes), Path()) << "another file";
    EXPECT_EQ(secure(), Paths());
    panel.answer = plan;
    EXPECT_EQ(bookmarks.secureFileFromPath(plan, Create::Yes), plan);
    EXPECT_EQ(secure(), (Paths{plan}));
    EXPECT_EQ(bookmarks.secureFileFromPath(plan, Create::Yes), plan);
    EXPECT_EQ(panel.requests.size(), 3U) << "no more need to ask";
}

TEST_F(Bookmarks, AcceptTheChoiceInAnotherCaseOfLetters) {
    references.put("/home/ana/Größe.TXT");
    references.unreadable = {"/home/ana/größe.txt"};
    references.put("/home/ana/größe.txt");
    panel.answer = "/home/ana/Größe.TXT";
    EXPECT_EQ(bookmarks.secureFileFromPath("/home/ana/größe.txt", Create::Yes), panel.answer);
    EXPECT_EQ(secure(), (Paths{"/home/ana/Größe.TXT"}));
}

TEST_F(Bookmarks, AddedWhileThePanelIsShownAreNotLost) {
    references.unreadable = {plan};
    panel.answer = plan;
    panel.whileShown = [this] { bookmarks.saveSecureFile(list); };
    EXPECT_EQ(bookmarks.secureFileFromPath(plan, Create::Yes), plan);
    EXPECT_EQ(secure(), (Paths{list, plan}));
}

TEST_F(Bookmarks, AskNobodyWhereThereIsNoPanel) {
    references.unreadable = {plan};
    BookmarkUtilities alone({.defaults = defaults,
                             .references = references,
                             .strings = strings,
                             .openPanel = nullptr,
                             .programName = "Agent"});
    EXPECT_EQ(alone.secureFileFromPath(plan, Create::Yes), Path());
    EXPECT_EQ(bookmarks.askUserForSecureFileURLToPath("relative"), Path());
    EXPECT_EQ(bookmarks.askUserForSecureFileURLToPath(""), Path());
    EXPECT_TRUE(panel.requests.empty());
}

TEST_F(Bookmarks, MakeTheFolderThatTheUserAllows) {
    panel.answer = "/home/Ana";
    EXPECT_EQ(bookmarks.askUserForSecureFileURLToPath("/home/ana/new"), "/home/ana/new");
    EXPECT_EQ(references.kindAtPath("/home/ana/new"), FileKind::Folder);
    panel.answer = "/home/ana/none";
    EXPECT_EQ(bookmarks.askUserForSecureFileURLToPath("/home/ana/none/new"), Path());
    EXPECT_EQ(references.kindAtPath("/home/ana/none"), FileKind::None) << "none above it";
    panel.answer = "/home/ana/other";
    EXPECT_EQ(bookmarks.askUserForSecureFileURLToPath("/home/ana/other"), Path());
    EXPECT_EQ(references.kindAtPath("/home/ana/other"), FileKind::None) << "not its folder";
}

TEST_F(Bookmarks, TravelAsDataThatFindsTheFile) {
    const auto data = bookmarks.transportDataForSecureFileURL(plan);
    ASSERT_TRUE(data);
    EXPECT_EQ(bookmarks.secureFileFromTransportData(*data), plan);
    EXPECT_FALSE(bookmarks.isURLExpandedFromSecureBookmark(plan));
    EXPECT_EQ(bookmarks.secureFileFromTransportData({}), Path());
    references.put(plan);
    EXPECT_EQ(bookmarks.secureFileFromTransportData(*data), Path()) << "stale";
    EXPECT_EQ(bookmarks.transportDataForSecureFileURL("/missing"), std::nullopt);
}

TEST_F(Bookmarks, OfTheSecureStoreMayLoseTheirAccess) {
    references.unreadable = {plan};
    EXPECT_TRUE(bookmarks.startAccessing(plan)) << "not from a secure bookmark";
    ASSERT_TRUE(bookmarks.addSecureBookmark(plan));
    ASSERT_EQ(bookmarks.getSecureBookmark(plan), plan);
    EXPECT_FALSE(bookmarks.startAccessing(plan));
    references.unreadable.clear();
    EXPECT_TRUE(bookmarks.startAccessing(plan));
    bookmarks.stopAccessing(plan);
    EXPECT_TRUE(bookmarks.isURLExpandedFromSecureBookmark(plan));
    bookmarks.clearExpandedURLWithPath(plan);
    EXPECT_FALSE(bookmarks.isURLExpandedFromSecureBookmark(plan));
}

struct Asked {
    const char* path;
    FileKind kind;
    const char* title;
    const char* message;
    const char* target;
    const char* directory;
    const char* fileType;
};

TEST(AnAccessRequest, NamesTheFileOrTheFolderAndAllowsOnlyThat) {
    const char* file = "Agent: File Access Required";
    const char* folder = "Agent: Folder Access Required";
    const char* fileMessage = "Agent requires permission to access \"a.b.txt\".\n"
                              "Please select the file below and click the Allow button.";
    const Asked table[] = {
        {"/x/a.b.txt", FileKind::File, file, fileMessage, "/x/a.b.txt", "/x", "txt"},
        {"/.profile", FileKind::File, file,
         "Agent requires permission to access \".profile\".\n"
         "Please select the file below and click the Allow button.",
         "/.profile", "/", ""},
        {"/x.d/plain", FileKind::File, file,
         "Agent requires permission to access \"plain\".\n"
         "Please select the file below and click the Allow button.",
         "/x.d/plain", "/x.d", ""},
        {"/x/y.d//", FileKind::Folder, folder,
         "Agent requires permission to access \"y.d\".\nPlease click the Allow button.", "/x/y.d",
         "/x/y.d", ""},
        {"/", FileKind::Folder, folder,
         "Agent requires permission to access \"/\".\nPlease click the Allow button.", "/", "/",
         ""},
        {"/x/y/new", FileKind::None, folder,
         "Agent requires permission to create \"new\" in the folder \"y\".\n"
         "Please click the Allow button.",
         "/x/y", "/x/y", ""}};
    for (const Asked& asked : table) {
        const AccessRequest request =
            accessRequest(asked.path, asked.kind, "Agent", FakeLocalizedStrings());
        EXPECT_EQ(request.panel.title, asked.title) << asked.path;
        EXPECT_EQ(request.panel.message, asked.message) << asked.path;
        EXPECT_EQ(request.panel.prompt, "Allow");
        EXPECT_EQ(request.panel.mode == OpenPanelMode::File, asked.kind == FileKind::File);
        EXPECT_EQ(request.target, asked.target);
        EXPECT_EQ(request.panel.directory, asked.directory) << asked.path;
        EXPECT_EQ(request.panel.allowedFileType, asked.fileType) << asked.path;
        EXPECT_TRUE(request.panel.shouldEnable(asked.target));
        EXPECT_FALSE(request.panel.shouldEnable(std::string(asked.target) + "x"));
    }
}

TEST(APath, IsTheSameInAnotherCaseOfLetters) {
    EXPECT_TRUE(isSamePathIgnoringCase("/Home/ÄRGER", "/home/ärger"));
    EXPECT_TRUE(isSamePathIgnoringCase("/a/", "/a"));
    EXPECT_FALSE(isSamePathIgnoringCase("/a", "/ab"));
    EXPECT_FALSE(isSamePathIgnoringCase("", "/"));
}

} // namespace
} // namespace plenzo
