#pragma once

#include <filesystem>

namespace Kerovane::Host {

/**
 * A new file beside a target, which takes the target's place when it is whole, and is removed
 * otherwise.
 */
class ReplacementFile {
public:
    /// Creates the file, empty, under a name of its own. Throws Error where that can't be done.
    explicit ReplacementFile(std::filesystem::path target);
    ~ReplacementFile();
    ReplacementFile(const ReplacementFile&) = delete;
    ReplacementFile& operator=(const ReplacementFile&) = delete;

    /// Where to write.
    const std::filesystem::path& path() const { return mPath; }

    /// Puts the file in the target's place. Throws Error where that can't be done.
    void takePlace();

private:
    std::filesystem::path mTarget;
    std::filesystem::path mPath; ///< empty once it has taken its place
};

} // namespace Kerovane::Host
