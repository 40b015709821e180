#pragma once

#include "linux/wire/file_descriptor.h"

#include <sys/types.h>

#include <cstddef>
#include <optional>
#include <span>
#include <string>

namespace plenzo {

/// Python's reader and writer of property lists, in a process of its own that works when it is told
/// to.
class Plistlib {
public:
    /// Hands it a file of records.
    explicit Plistlib(std::span<const std::byte> file);
    Plistlib(const Plistlib&) = delete;
    Plistlib& operator=(const Plistlib&) = delete;
    ~Plistlib();

    enum class Work { Read, Write };
    /// The processor's time that it took to read or write the file once. Nothing without Python.
    std::optional<double> secondsOf(Work work);

private:
    void start(const std::string& filePath);

    FileDescriptor m_orders;
    FileDescriptor m_answers;
    std::optional<FileDescriptor> m_file;
    pid_t m_process = -1;
};

} // namespace plenzo
