#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace Kerovane::Host {

/** The one folder that a panel writes into, and nowhere else. */
class OutputFolder {
public:
    /// Throws Error if there is no such folder.
    explicit OutputFolder(const std::filesystem::path& folder);

    const std::filesystem::path& path() const { return mFolder; }

    /// The file that `name` stands for. Throws Error if it is no plain name of a file, or if that
    /// is there and must not be replaced.
    std::filesystem::path fileFor(const std::string& name, bool replace) const;

    void write(const std::string& name, const std::string& content, bool replace) const;

    /// Files with that extension, sorted.
    std::vector<std::filesystem::path> files(const std::string& extension) const;

private:
    std::filesystem::path mFolder;
};

} // namespace Kerovane::Host
