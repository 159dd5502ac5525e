#include "Host/Frames/SilentThread.h"

#include <iostream>
#include <streambuf>

namespace Kerovane::Host {

namespace {

/// The number of SilentThread objects on this thread.
thread_local int mSilent = 0;

/// An unbuffered filter in front of std::cout's own buffer. Drops the text of threads that have a
/// SilentThread. Never removed or destroyed, because other threads may be writing and std::cout is
/// flushed at the very end of the process.
class ThreadFilter : public std::streambuf {
public:
    explicit ThreadFilter(std::streambuf& next) : mNext(next) {}

protected:
    int_type overflow(int_type byte) override {
        if (isSilent() || traits_type::eq_int_type(byte, traits_type::eof())) {
            return traits_type::not_eof(byte);
        }
        return mNext.sputc(traits_type::to_char_type(byte));
    }

    std::streamsize xsputn(const char* text, std::streamsize size) override {
        return isSilent() ? size : mNext.sputn(text, size);
    }

    int sync() override { return isSilent() ? 0 : mNext.pubsync(); }

private:
    static bool isSilent() { return mSilent > 0; }

    std::streambuf& mNext;
};

void InstallFilter() {
    [[maybe_unused]] static const auto& kFilter = []() -> ThreadFilter& {
        auto& filter = *new ThreadFilter(*std::cout.rdbuf());
        std::cout.rdbuf(&filter);
        return filter;
    }();
}

} // namespace

SilentThread::SilentThread() {
    InstallFilter();
    ++mSilent;
}

SilentThread::~SilentThread() {
    --mSilent;
}

} // namespace Kerovane::Host
