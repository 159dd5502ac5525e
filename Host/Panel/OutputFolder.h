#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace Kerovane::Host {

/** The only folder that the panel writes to. */
class OutputFolder {
public:
    /// Throws Error if there is no such folder.
    explicit OutputFolder(const std::filesystem::path& folder);

    const std::filesystem::path& path() const { return mFolder; }

    /// Returns the path of the file `name` in the folder. Throws Error if `name` is not a plain
    /// file name, or if the file is a symbolic link or exists although `replace` is false.
    std::filesystem::path fileFor(const std::string& name, bool replace) const;

    void write(const std::string& name, const std::string& content, bool replace) const;

    /// Returns the paths of the regular files with `extension`, sorted.
    std::vector<std::filesystem::path> files(const std::string& extension) const;

private:
    std::filesystem::path mFolder;
};

} // namespace Kerovane::Host
