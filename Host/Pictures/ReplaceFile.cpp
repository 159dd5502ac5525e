#include "Host/Pictures/ReplaceFile.h"

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

/// A new file under a name of its own beside a target; removed unless it takes the target's place.
class FileBeside {
public:
    explicit FileBeside(const std::filesystem::path& target)
        : mTarget(target),
          mPath(target.parent_path() / fmt::format(".{}.{:08x}.partial", target.filename().string(),
                                                   std::random_device()())) {
        constexpr mode_t kLeftToUmask = 0666;
        mDescriptor = open(mPath.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, kLeftToUmask);
        check(mDescriptor >= 0);
    }

    ~FileBeside() {
        if (mDescriptor >= 0) {
            close(mDescriptor);
        }
        if (!mPath.empty()) {
            unlink(mPath.c_str());
        }
    }

    FileBeside(const FileBeside&) = delete;
    FileBeside& operator=(const FileBeside&) = delete;

    void write(std::span<const std::byte> content) {
        while (!content.empty()) {
            const ssize_t written = ::write(mDescriptor, content.data(), content.size());
            check(written >= 0 || errno == EINTR);
            content = content.subspan(static_cast<std::size_t>(written > 0 ? written : 0));
        }
    }

    void takePlace() {
        // Some file systems report a failed write only here.
        check(close(std::exchange(mDescriptor, -1)) == 0);
        check(std::rename(mPath.c_str(), mTarget.c_str()) == 0);
        mPath.clear();
    }

private:
    void check(bool success) const {
        if (!success) {
            throw Error(fmt::format("cannot write '{}': {}", mTarget.string(),
                                    std::generic_category().message(errno)));
        }
    }

    std::filesystem::path mTarget;
    std::filesystem::path mPath; ///< empty once it has taken its place
    int mDescriptor = -1;
};

} // namespace

void ReplaceFile(const std::filesystem::path& target, std::span<const std::byte> content) {
    // A symbolic link stays, and what it names is replaced.
    FileBeside file(std::filesystem::is_symlink(target) ? std::filesystem::weakly_canonical(target)
                                                        : target);
    file.write(content);
    file.takePlace();
}

} // namespace Kerovane::Host
