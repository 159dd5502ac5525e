#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace Kerovane::Host {

/// What a program is started with.
struct ChildSetting {
    std::string program; ///< found as a shell would
    std::vector<std::string> words;
    int output = -1;  ///< a descriptor that becomes its standard output; -1: nowhere
    int error = -1;   ///< the same
    int picture = -1; ///< a descriptor that becomes its descriptor 3; -1: none
};

/** Another program, which has nothing of this one's open files but those that it is given. */
class Child {
public:
    /// Throws Error if it can't be started.
    explicit Child(const ChildSetting& setting);

    /// Ends it, if it hasn't ended, and waits for that.
    ~Child();
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

    /// Asks it to end, as Ctrl-C does.
    void interrupt() const;

    /// Waits for its end. Returns its exit status, -1 if a signal ended it. Once.
    int wait();

private:
    pid_t mId = -1; ///< -1 once it was waited for
};

} // namespace Kerovane::Host
