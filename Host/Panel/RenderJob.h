#pragma once

#include "Host/Panel/Child.h"

#include <cstddef>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace Kerovane::Host {

/** A rendering by the command in a process of its own. */
class RenderJob {
public:
    struct Progress {
        std::size_t done = 0; ///< number of frames that ended
        std::size_t failed = 0;
        std::optional<int> status{}; ///< the command's exit status once it has ended
        std::string lines{};         ///< the end of what the command printed to standard error
    };

    /// `words` are the program's arguments; `picture` is as in ChildSetting. Throws Error if the
    /// program cannot be started.
    RenderJob(const std::string& program, std::vector<std::string> words, int picture);

    /// Stops the rendering and waits for its end.
    ~RenderJob();
    RenderJob(const RenderJob&) = delete;
    RenderJob& operator=(const RenderJob&) = delete;

    Progress progress() const;

    /// Lets the command finish the frames that it has begun and then end, as Ctrl-C does.
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
