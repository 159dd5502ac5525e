#pragma once

#include <cstdio>
#include <memory>
#include <string_view>

namespace Kerovane::Host {

/**
 * The command's standard output, kept from the effect: while the object lives, file descriptor 1
 * leads elsewhere, so that whatever the effect or a driver prints there, now or at exit, does not
 * mix with what the command prints. One for a process, before anything else.
 */
class StandardOutput {
public:
    /// Where others' output goes.
    enum class Others { Nowhere, StandardError };

    explicit StandardOutput(Others others);

    /// Throws Error where it can't be written.
    void print(std::string_view text);

private:
    struct Close {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };

    std::unique_ptr<std::FILE, Close> mFile; ///< null where the process has no standard output
};

} // namespace Kerovane::Host
