#pragma once

#include <cstdio>
#include <memory>
#include <optional>
#include <string_view>

namespace Kerovane::Host {

/**
 * The command's own standard output and error. The constructor moves them to new descriptors and
 * redirects descriptors 1 and 2 to /dev/null for the rest of the process. So what the effect,
 * drivers and libraries print, even in the last flush at exit, does not mix with the command's
 * output. Create one object per process, before anything else.
 */
class StandardStreams {
public:
    StandardStreams();

    /// Redirects what the effect, drivers and libraries print to the command's standard error
    /// instead of /dev/null.
    void showOthers();

    /// Writes to standard output. Throws Error if that fails.
    void print(std::string_view text);

    /// The descriptor of standard output for direct writing, or -1 if there is none.
    int outputDescriptor() const;

    /// Writes to standard error without changes, for terminal control.
    void draw(std::string_view text);

    /// Returns the terminal's width, or nothing if standard error is not a terminal.
    std::optional<int> terminalColumns() const;

    /// Writes one line to standard error, after the command's name.
    void complain(std::string_view message);

private:
    struct Close {
        void operator()(std::FILE* file) const { static_cast<void>(std::fclose(file)); }
    };
    using File = std::unique_ptr<std::FILE, Close>;

    static File keep(int descriptor);

    File mOutput; ///< null if the process was started without standard output
    File mError;  ///< null if the process was started without standard error
};

} // namespace Kerovane::Host
