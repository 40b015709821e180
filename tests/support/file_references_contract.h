#pragma once

#include "platform/file_references.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace plenzo {

/// What every implementation of FileReferences keeps to. A subclass gives the references, a folder
/// that they are tried in, and the means to change what is there.
class FileReferencesContract {
public:
    FileReferencesContract() = default;
    FileReferencesContract(const FileReferencesContract&) = delete;
    FileReferencesContract& operator=(const FileReferencesContract&) = delete;
    virtual ~FileReferencesContract() = default;

    virtual FileReferences& references() = 0;
    virtual std::string folder() = 0;
    /// Puts a new file there, in place of one that is there.
    virtual void putFile(const std::string& path) = 0;
    virtual void move(const std::string& from, const std::string& to) = 0;
    virtual void remove(const std::string& path) = 0;

    void findsTheFileAgain() {
        for (const char* name : {"file", "with space", "Größe.txt", "not UTF-8 \xFF"}) {
            putFile(path(name));
            const auto reference = references().referenceToFile(path(name));
            ASSERT_TRUE(reference) << name;
            const ResolvedReference resolved = references().resolve(*reference);
            EXPECT_EQ(resolved.state, ReferenceState::Resolved) << name;
            EXPECT_EQ(resolved.path, path(name));
        }
        ASSERT_TRUE(references().createFolder(path("sub")));
        const auto reference = references().referenceToFile(path("sub"));
        EXPECT_EQ(references().resolve(reference.value()).path, path("sub"));
    }

    void tellsAnotherFileOfTheSameNameFromTheFile() {
        putFile(path("file"));
        const auto reference = references().referenceToFile(path("file")).value();
        putFile(path("file"));
        EXPECT_EQ(state(reference), ReferenceState::Stale) << "replaced";
        const auto second = references().referenceToFile(path("file")).value();
        EXPECT_EQ(state(second), ReferenceState::Resolved);
        putFile(path("beside"));
        move(path("file"), path("moved"));
        EXPECT_EQ(state(second), ReferenceState::NotThere) << "moved";
        move(path("beside"), path("file"));
        EXPECT_EQ(state(second), ReferenceState::Stale) << "moved, with another in its place";
        move(path("moved"), path("file"));
        EXPECT_EQ(state(second), ReferenceState::Resolved) << "it is back";
        remove(path("file"));
        EXPECT_EQ(state(second), ReferenceState::NotThere);
    }

    void makesNoReferenceToWhatIsNotThere() {
        putFile(path("file"));
        for (const std::string& missing :
             {path("missing"), path("file/below"), std::string(), std::string("file"),
              std::string("~"), path("file") + std::string("\0", 1),
              path(std::string(5000, 'x'))}) {
            EXPECT_EQ(references().referenceToFile(missing), std::nullopt) << missing;
            EXPECT_EQ(references().kindAtPath(missing), FileKind::None) << missing;
            EXPECT_FALSE(references().isReadable(missing)) << missing;
        }
    }

    void readsHostileDataAsNoReference() {
        putFile(path("file"));
        const auto whole = references().referenceToFile(path("file")).value();
        for (const std::string_view text : {"", ":", "bplist00", "/etc/passwd", "\xFF\xFF"}) {
            EXPECT_EQ(state(std::as_bytes(std::span(text))), ReferenceState::NotThere) << text;
        }
        for (std::size_t size = 0; size < whole.size(); ++size) {
            EXPECT_NE(state(std::span(whole).first(size)), ReferenceState::Resolved) << size;
        }
    }

    void knowsFilesFromFoldersAndMakesTheLastFolderOnly() {
        putFile(path("file"));
        EXPECT_FALSE(references().createFolder(path("new/below"))) << "none above it is made";
        EXPECT_EQ(references().kindAtPath(path("new")), FileKind::None);
        EXPECT_TRUE(references().createFolder(path("new")));
        EXPECT_FALSE(references().createFolder(path("new"))) << "it is there";
        EXPECT_FALSE(references().createFolder(path("file")));
        EXPECT_FALSE(references().createFolder(""));
        EXPECT_FALSE(references().createFolder("relative"));
        EXPECT_TRUE(references().createFolder(path("new/below")));
        EXPECT_EQ(references().kindAtPath(path("new")), FileKind::Folder);
        EXPECT_EQ(references().kindAtPath(path("file")), FileKind::File);
        EXPECT_TRUE(references().isReadable(path("file")));
        EXPECT_TRUE(references().isReadable(path("new")));
    }

    void putsTheHomeFolderInPlaceOfATilde() {
        const std::string home = references().expandingTilde("~");
        EXPECT_TRUE(home.starts_with("/"));
        EXPECT_EQ(references().expandingTilde("~/a/~"), home + "/a/~");
        for (const char* kept : {"", "/a", "a", "~ana", "~ana/a", "/~/a", " ~"}) {
            EXPECT_EQ(references().expandingTilde(kept), kept);
        }
    }

protected:
    std::string path(const std::string& name) { return folder() + "/" + name; }
    ReferenceState state(std::span<const std::byte> reference) {
        return references().resolve(reference).state;
    }
};

} // namespace plenzo
