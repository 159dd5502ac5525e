#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace Kerovane::Host {

/// How to start a program.
struct ChildSetting {
    std::string program; ///< searched for in $PATH
    std::vector<std::string> words;
    int output = -1;  ///< descriptor that becomes the child's standard output; -1: /dev/null
    int error = -1;   ///< descriptor that becomes the child's standard error; -1: /dev/null
    int picture = -1; ///< descriptor that becomes the child's descriptor 3; -1: none
};

/** A child process. It inherits no open files except those given to it. */
class Child {
public:
    /// Throws Error if the program cannot be started.
    explicit Child(const ChildSetting& setting);

    /// Ends the child if it is still running, and waits for it.
    ~Child();
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

    /// Sends SIGINT, as Ctrl-C does.
    void interrupt() const;

    /// Waits for the child to end. Returns its exit status, or -1 if a signal ended it. Must be
    /// called at most once.
    int wait();

private:
    pid_t mId = -1; ///< the child's process id; -1 after wait()
};

} // namespace Kerovane::Host
