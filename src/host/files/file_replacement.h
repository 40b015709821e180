#pragma once

#include "host/files/file_attributes.h"
#include "host/files/file_stamp.h"

#include <string>

namespace plenzo {

/// A file as it was found.
struct FoundFile {
    FileStamp stamp; // taken before the text was read
    std::string text;
    FileAttributes attributes;
    bool isWritable = true;
    std::string error; // empty when it was read, or does not exist
};

/// The steps by which a file is replaced whole. Those that give a text say why they failed; an
/// empty one is success.
class FileReplacement {
public:
    FileReplacement() = default;
    FileReplacement(const FileReplacement&) = delete;
    FileReplacement& operator=(const FileReplacement&) = delete;
    virtual ~FileReplacement() = default;

    /// The path with every symbolic link followed.
    virtual std::string realPath(const std::string& path) = 0;
    virtual FoundFile read(const std::string& path) = 0;
    virtual FileStamp stamp(const std::string& path) = 0;

    /// Where to write what is to take the file's place: a path that no other process uses. What
    /// ended ones left there goes.
    virtual std::string pathForNew(const std::string& path) = 0;

    /// A new file with this text, written through to the disk. What stood there before goes.
    virtual std::string writeThrough(const std::string& path, const std::string& text,
                                     const FileAttributes& attributes) = 0;

    /// Puts `from` at the place of `to`. With `isNew` nothing may stand there.
    virtual std::string moveTo(const std::string& from, const std::string& to, bool isNew) = 0;

    virtual void remove(const std::string& path) = 0;

    /// Writes the folder's entries through to the disk.
    virtual std::string syncFolder(const std::string& folder) = 0;
};

/// The same on the machine's file systems.
class FileReplacementOnDisk final : public FileReplacement {
public:
    std::string realPath(const std::string& path) override;
    FoundFile read(const std::string& path) override;
    FileStamp stamp(const std::string& path) override;
    std::string pathForNew(const std::string& path) override;
    std::string writeThrough(const std::string& path, const std::string& text,
                             const FileAttributes& attributes) override;
    std::string moveTo(const std::string& from, const std::string& to, bool isNew) override;
    void remove(const std::string& path) override;
    std::string syncFolder(const std::string& folder) override;
};

} // namespace plenzo
