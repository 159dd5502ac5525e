#include "Host/Pictures/FileBeside.h"

#include "Host/Text/Error.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <random>
#include <system_error>
#include <utility>

namespace Kerovane::Host {

namespace {

std::filesystem::path Resolved(const std::filesystem::path& target) {
    return std::filesystem::is_symlink(target) ? std::filesystem::weakly_canonical(target) : target;
}

} // namespace

FileBeside::FileBeside(const std::filesystem::path& target)
    : mTarget(Resolved(target)),
      mPath(mTarget.parent_path() / fmt::format(".{}.{:08x}.partial", mTarget.filename().string(),
                                                std::random_device()())) {
    constexpr mode_t kLeftToUmask = 0666;
    mDescriptor = open(mPath.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, kLeftToUmask);
    check(mDescriptor >= 0);
}

FileBeside::~FileBeside() {
    if (mDescriptor >= 0) {
        close(mDescriptor);
    }
    if (!mPath.empty()) {
        unlink(mPath.c_str());
    }
}

void FileBeside::write(std::span<const std::byte> content) {
    while (!content.empty()) {
        const ssize_t written = ::write(mDescriptor, content.data(), content.size());
        check(written >= 0 || errno == EINTR);
        content = content.subspan(static_cast<std::size_t>(written > 0 ? written : 0));
    }
}

void FileBeside::takePlaceOf(const std::filesystem::path& other) {
    // Some file systems report a failed write only when the file is closed.
    check(close(std::exchange(mDescriptor, -1)) == 0);
    check(std::rename(mPath.c_str(), other.c_str()) == 0);
    mPath.clear();
}

void FileBeside::check(bool success) const {
    if (!success) {
        throw Error(fmt::format("cannot write '{}': {}", mTarget.string(),
                                std::generic_category().message(errno)));
    }
}

} // namespace Kerovane::Host
