#include "Host/Panel/OutputFolder.h"

#include "Host/Pictures/ReplaceFile.h"
#include "Host/Text/Error.h"

#include <fmt/format.h>

#include <algorithm>
#include <cctype>
#include <span>
#include <string_view>
#include <system_error>

namespace Kerovane::Host {

namespace {

bool IsPlainName(std::string_view name) {
    constexpr std::size_t kLongest = 100;
    constexpr std::string_view kOthers = " ._#-";
    return !name.empty() && name.size() <= kLongest && name.front() != '.' && name.front() != '-' &&
           std::ranges::all_of(name, [kOthers](unsigned char c) {
               return std::isalnum(c) != 0 || kOthers.find(static_cast<char>(c)) != kOthers.npos;
           });
}

} // namespace

OutputFolder::OutputFolder(const std::filesystem::path& folder) {
    std::error_code error;
    mFolder = std::filesystem::canonical(folder, error);
    if (error || !std::filesystem::is_directory(mFolder, error)) {
        throw Error(fmt::format("--output-folder: there is no folder '{}'", folder.string()));
    }
}

std::filesystem::path OutputFolder::fileFor(const std::string& name, bool replace) const {
    if (!IsPlainName(name)) {
        throw Error("a file's name has letters, digits, blanks and . _ # - here, and doesn't start "
                    "with a dot");
    }
    std::filesystem::path file = mFolder / name;
    std::error_code error; // a file that cannot be examined counts as absent
    if (std::filesystem::is_symlink(file, error)) {
        throw Error(fmt::format("'{}' is a link, which is not followed", name));
    }
    if (!replace && std::filesystem::exists(file, error)) {
        throw Error(fmt::format("'{}' is there already", name));
    }
    return file;
}

void OutputFolder::write(const std::string& name, const std::string& content, bool replace) const {
    ReplaceFile(fileFor(name, replace), std::as_bytes(std::span(content)));
}

std::vector<std::filesystem::path> OutputFolder::files(const std::string& extension) const {
    std::vector<std::filesystem::path> found;
    std::error_code error; // ends the loop; the files found before it are returned
    for (std::filesystem::directory_iterator entry(mFolder, error);
         !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
        if (entry->path().extension() == extension && entry->is_regular_file(error)) {
            found.push_back(entry->path());
        }
    }
    std::ranges::sort(found);
    return found;
}

} // namespace Kerovane::Host
