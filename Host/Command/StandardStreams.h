#pragma once

#include <cstdio>
#include <memory>
#include <optional>
#include <string_view>

namespace Kerovane::Host {

/**
 * The command's standard output and error, kept from everybody else: once the object is made, file
 * descriptors 1 and 2 lead elsewhere for the rest of the process, so that what the effect, drivers
 * and picture libraries print, up to the last flush at exit, does not mix with what the command
 * prints. One for a process, before anything else.
 */
class StandardStreams {
public:
    StandardStreams();

    /// Sends what others print to the command's standard error. It goes nowhere otherwise.
    void showOthers();

    /// To standard output. Throws Error if it can't be written.
    void print(std::string_view text);

    /// Of standard output, for those who write it themselves; -1 if there is none.
    int outputDescriptor() const;

    /// To standard error as it is: what is drawn anew on a terminal.
    void draw(std::string_view text);

    /// Nothing if standard error is no terminal.
    std::optional<int> terminalColumns() const;

    /// To standard error, as one line with the command's name before it.
    void complain(std::string_view message);

private:
    struct Close {
        void operator()(std::FILE* file) const { static_cast<void>(std::fclose(file)); }
    };
    using File = std::unique_ptr<std::FILE, Close>;

    static File keep(int descriptor);

    File mOutput; ///< null if the process was given none, as below
    File mError;
};

} // namespace Kerovane::Host
