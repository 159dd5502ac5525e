#pragma once

#include <cstddef>
#include <filesystem>
#include <span>

namespace Kerovane::Host {

/**
 * A file in memory, for libraries that write to a file by name. It cannot run out of disk space,
 * but is subject to the process's limit on file sizes. Destroyed with the object.
 */
class MemoryFile {
public:
    /// Throws Error if the system cannot create the file.
    MemoryFile();
    ~MemoryFile();
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    /// Returns a path under which this process can open the file.
    std::filesystem::path path() const;

    /// Returns the bytes written so far, which are valid until the next write. Must be called at
    /// most once. Throws Error if they cannot be mapped, or if the limit on file sizes was reached.
    std::span<const std::byte> content();

private:
    void checkNotCut() const;

    int mDescriptor;
    void* mMapped = nullptr; ///< null until content() is called
    std::size_t mSize = 0;
};

} // namespace Kerovane::Host
