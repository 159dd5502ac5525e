#pragma once

#include <cstddef>
#include <filesystem>
#include <span>

namespace Kerovane::Host {

/**
 * A new file under a name of its own beside a target, so that the target is replaced whole or not
 * at all: removed unless it takes a place. Operations throw Error, which names the target, if they
 * fail.
 */
class FileBeside {
public:
    /// If `target` is a symbolic link, it stays and what it names is replaced.
    explicit FileBeside(const std::filesystem::path& target);
    ~FileBeside();
    FileBeside(const FileBeside&) = delete;
    FileBeside& operator=(const FileBeside&) = delete;

    /// For libraries that write to a file by name.
    const std::filesystem::path& path() const { return mPath; }

    void write(std::span<const std::byte> content);

    /// Becomes the target.
    void takePlace() { takePlaceOf(mTarget); }

    /// Becomes the file `other` of the same folder.
    void takePlaceOf(const std::filesystem::path& other);

private:
    void check(bool success) const;

    std::filesystem::path mTarget;
    std::filesystem::path mPath; ///< empty once it has taken its place
    int mDescriptor = -1;
};

} // namespace Kerovane::Host
