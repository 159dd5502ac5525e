#pragma once

#include "Host/Panel/Child.h"

#include <cstddef>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace Kerovane::Host {

/** A rendering by the command itself, in a process of its own. */
class RenderJob {
public:
    struct Progress {
        std::size_t done = 0; ///< frames
        std::size_t failed = 0;
        std::optional<int> status{}; ///< once it has ended: the command's exit status
        std::string lines{};         ///< what the command told
    };

    /// `words` are those behind the program's name; `picture` as in ChildSetting. Throws Error if
    /// it can't be started.
    RenderJob(const std::string& program, std::vector<std::string> words, int picture);

    /// Stops it.
    ~RenderJob();
    RenderJob(const RenderJob&) = delete;
    RenderJob& operator=(const RenderJob&) = delete;

    Progress progress() const;

    /// Has it end after the frames in flight, as Ctrl-C does.
    void stop();

private:
    struct Pipe {
        Pipe();
        ~Pipe();
        Pipe(const Pipe&) = delete;
        Pipe& operator=(const Pipe&) = delete;

        void closeWriting();

        int reading = -1;
        int writing = -1;
    };

    void follow();
    void readLog(const std::string& line);

    Pipe mLog;
    Pipe mErrors;
    Child mChild;
    mutable std::mutex mMutex;
    Progress mProgress;
    bool mIsStopped = false;
    std::thread mFollower;
};

} // namespace Kerovane::Host
