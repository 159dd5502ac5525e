#pragma once

#include <cstddef>
#include <filesystem>
#include <span>

namespace Kerovane::Host {

/**
 * A new file in the target's folder, which replaces the target completely or not at all. The file
 * is removed unless it takes the target's place. Operations throw Error, which names the target, if
 * they fail.
 */
class FileBeside {
public:
    /// If `target` is a symbolic link, the file that it points to is replaced.
    explicit FileBeside(const std::filesystem::path& target);
    ~FileBeside();
    FileBeside(const FileBeside&) = delete;
    FileBeside& operator=(const FileBeside&) = delete;

    /// The new file's path, for libraries that write to a file by name.
    const std::filesystem::path& path() const { return mPath; }

    void write(std::span<const std::byte> content);

    /// Replaces the target.
    void takePlace() { takePlaceOf(mTarget); }

    /// Replaces the file `other` in the same folder.
    void takePlaceOf(const std::filesystem::path& other);

private:
    void check(bool success) const;

    std::filesystem::path mTarget;
    std::filesystem::path mPath; ///< empty after takePlace()
    int mDescriptor = -1;
};

} // namespace Kerovane::Host
