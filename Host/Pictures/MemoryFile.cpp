#include "Host/Pictures/MemoryFile.h"

#include "Host/Text/Error.h"

#include <fmt/format.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

namespace Kerovane::Host {

namespace {

void Check(bool success) {
    if (!success) {
        throw Error(
            fmt::format("no memory for a file: {}", std::generic_category().message(errno)));
    }
}

} // namespace

MemoryFile::MemoryFile() : mDescriptor(memfd_create("tesselune", MFD_CLOEXEC)) {
    Check(mDescriptor >= 0);
}

MemoryFile::~MemoryFile() {
    if (mMapped != nullptr) {
        munmap(mMapped, mSize);
    }
    close(mDescriptor);
}

std::filesystem::path MemoryFile::path() const {
    return fmt::format("/proc/self/fd/{}", mDescriptor);
}

std::span<const std::byte> MemoryFile::content() {
    struct stat status {};
    Check(fstat(mDescriptor, &status) == 0);
    if (status.st_size == 0) {
        return {};
    }
    mSize = static_cast<std::size_t>(status.st_size);
    checkNotCut();
    void* mapped = mmap(nullptr, mSize, PROT_READ, MAP_SHARED, mDescriptor, 0);
    Check(mapped != MAP_FAILED);
    mMapped = mapped;
    return {static_cast<const std::byte*>(mMapped), mSize};
}

void MemoryFile::checkNotCut() const {
    rlimit limit{};
    Check(getrlimit(RLIMIT_FSIZE, &limit) == 0);
    if (mSize >= limit.rlim_cur) {
        errno = EFBIG;
        Check(false);
    }
}

} // namespace Kerovane::Host
