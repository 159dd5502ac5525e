#include "Adapters/Frei0r/SilentThread.h"

#include <atomic>
#include <iostream>
#include <streambuf>
#include <thread>

namespace Kerovane::Frei0r {

namespace {

/// Stands before std::cout's own buffer, without any of its own. Never removed nor destroyed:
/// another thread may be writing, and std::cout is flushed at the very end of the process.
class ThreadFilter : public std::streambuf {
public:
    explicit ThreadFilter(std::streambuf& next) : mNext(next) {}

    void silence(std::thread::id thread) { mSilent = thread; }

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
    bool isSilent() const { return mSilent.load() == std::this_thread::get_id(); }

    std::streambuf& mNext;
    std::atomic<std::thread::id> mSilent;
};

ThreadFilter& InstalledFilter() {
    static ThreadFilter& filter = []() -> ThreadFilter& {
        auto& made = *new ThreadFilter(*std::cout.rdbuf());
        std::cout.rdbuf(&made);
        return made;
    }();
    return filter;
}

} // namespace

SilentThread::SilentThread() {
    InstalledFilter().silence(std::this_thread::get_id());
}

SilentThread::~SilentThread() {
    InstalledFilter().silence({});
}

} // namespace Kerovane::Frei0r
