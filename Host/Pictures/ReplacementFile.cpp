#include "Host/Pictures/ReplacementFile.h"

#include "Host/Error.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <unistd.h>

#include <cerrno>
#include <random>
#include <system_error>
#include <utility>

namespace Kerovane::Host {

namespace {

/// What a symbolic link names, so that the link itself stays.
std::filesystem::path Resolved(const std::filesystem::path& target) {
    return std::filesystem::is_symlink(target) ? std::filesystem::weakly_canonical(target) : target;
}

[[noreturn]] void ThrowError(const std::filesystem::path& target, const std::error_code& error) {
    throw Error(fmt::format("cannot write '{}': {}", target.string(), error.message()));
}

} // namespace

ReplacementFile::ReplacementFile(std::filesystem::path target)
    : mTarget(Resolved(target)),
      mPath(mTarget.parent_path() / fmt::format(".{}.{:08x}.partial", mTarget.filename().string(),
                                                std::random_device()())) {
    constexpr mode_t kLeftToUmask = 0666;
    const int file = open(mPath.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, kLeftToUmask);
    if (file < 0) {
        ThrowError(target, std::error_code(errno, std::generic_category()));
    }
    close(file);
}

ReplacementFile::~ReplacementFile() {
    if (!mPath.empty()) {
        std::error_code ignored;
        std::filesystem::remove(mPath, ignored);
    }
}

void ReplacementFile::takePlace() {
    std::error_code error;
    std::filesystem::rename(mPath, mTarget, error);
    if (error) {
        ThrowError(mTarget, error);
    }
    mPath.clear();
}

} // namespace Kerovane::Host
