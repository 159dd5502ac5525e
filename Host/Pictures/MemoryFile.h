#pragma once

#include <cstddef>
#include <filesystem>
#include <span>

namespace Kerovane::Host {

/**
 * A file in memory, for libraries that write to a file by name: it never meets a full disk, only
 * the limit that the process may have on the size of files. Gone with the object.
 */
class MemoryFile {
public:
    /// Throws Error if the system gives none.
    MemoryFile();
    ~MemoryFile();
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    /// A name under which this process can open it.
    std::filesystem::path path() const;

    /// What was written so far, until something more is. Asked once. Throws Error if it can't be
    /// had, or the limit cut it off.
    std::span<const std::byte> content();

private:
    void checkNotCut() const;

    int mDescriptor;
    void* mMapped = nullptr; ///< null until content() is asked for
    std::size_t mSize = 0;
};

} // namespace Kerovane::Host
