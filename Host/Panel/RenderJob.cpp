#include "Host/Panel/RenderJob.h"

#include "Host/Text/Error.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <nlohmann/json.hpp>
#include <poll.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <system_error>
#include <utility>

namespace Kerovane::Host {

namespace {

/// Appends what can be read from a pipe to `text`. Returns false at the pipe's end.
bool ReadSome(int descriptor, std::string& text) {
    constexpr std::size_t kPiece = 4096;
    std::array<char, kPiece> piece{};
    const ssize_t size = read(descriptor, piece.data(), piece.size());
    if (size > 0) {
        text.append(piece.data(), static_cast<std::size_t>(size));
    }
    return size > 0 || (size < 0 && errno == EINTR);
}

ChildSetting SettingOf(const std::string& program, std::vector<std::string> words, int log,
                       int errors, int picture) {
    words.insert(words.end(), {"--json-log", "-", "--quiet"});
    return {.program = program,
            .words = std::move(words),
            .output = log,
            .error = errors,
            .picture = picture};
}

} // namespace

RenderJob::Pipe::Pipe() {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) {
        throw Error(fmt::format("no pipe: {}", std::generic_category().message(errno)));
    }
    reading = ends[0];
    writing = ends[1];
}

RenderJob::Pipe::~Pipe() {
    closeWriting();
    close(reading);
}

void RenderJob::Pipe::closeWriting() {
    if (writing >= 0) {
        close(std::exchange(writing, -1));
    }
}

RenderJob::RenderJob(const std::string& program, std::vector<std::string> words, int picture)
    : mChild(SettingOf(program, std::move(words), mLog.writing, mErrors.writing, picture)) {
    mLog.closeWriting();
    mErrors.closeWriting();
    mFollower = std::thread([this] { follow(); });
}

RenderJob::~RenderJob() {
    stop();
    mFollower.join();
}

RenderJob::Progress RenderJob::progress() const {
    const std::lock_guard lock(mMutex);
    return mProgress;
}

void RenderJob::stop() {
    const std::lock_guard lock(mMutex);
    if (!mProgress.status && !mIsStopped) { // a second SIGINT would end the command at once
        mIsStopped = true;
        mChild.interrupt();
    }
}

void RenderJob::follow() {
    constexpr std::size_t kMostLines = 16U << 10U;
    std::string log;
    std::string errors;
    std::array<pollfd, 2> pipes{{{.fd = mLog.reading, .events = POLLIN, .revents = 0},
                                 {.fd = mErrors.reading, .events = POLLIN, .revents = 0}}};
    while (pipes[0].fd >= 0 || pipes[1].fd >= 0) {
        if (poll(pipes.data(), pipes.size(), -1) < 0) {
            continue;
        }
        if (pipes[0].revents != 0 && !ReadSome(mLog.reading, log)) {
            pipes[0].fd = -1;
        }
        if (pipes[1].revents != 0 && !ReadSome(mErrors.reading, errors)) {
            pipes[1].fd = -1;
        }
        for (std::size_t end = log.find('\n'); end != std::string::npos; end = log.find('\n')) {
            readLog(log.substr(0, end));
            log.erase(0, end + 1);
        }
        if (errors.size() > kMostLines) {
            errors.erase(0, errors.size() - kMostLines);
        }
    }
    const std::lock_guard lock(mMutex);
    constexpr int kInterrupted = 130; // reported also if a signal killed the stopped command
    const int status = mChild.wait();
    mProgress.lines = errors;
    mProgress.status = status < 0 && mIsStopped ? kInterrupted : status;
}

void RenderJob::readLog(const std::string& line) {
    const nlohmann::json frame = nlohmann::json::parse(line, nullptr, false);
    const std::lock_guard lock(mMutex);
    ++mProgress.done;
    if (frame.is_object() && frame.value("status", "") == "failed") {
        ++mProgress.failed;
    }
}

} // namespace Kerovane::Host
