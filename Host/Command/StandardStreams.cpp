#include "Host/Command/StandardStreams.h"

#include "Host/Text/Error.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <string>

namespace Kerovane::Host {

StandardStreams::StandardStreams() : mOutput(keep(STDOUT_FILENO)), mError(keep(STDERR_FILENO)) {
    const int nowhere = open("/dev/null", O_RDWR | O_CLOEXEC);
    if (nowhere >= 0) {
        dup2(nowhere, STDOUT_FILENO);
        dup2(nowhere, STDERR_FILENO);
        if (nowhere > STDERR_FILENO) {
            close(nowhere);
        }
    }
}

void StandardStreams::showOthers() {
    if (mError != nullptr) {
        dup2(fileno(mError.get()), STDOUT_FILENO);
        dup2(fileno(mError.get()), STDERR_FILENO);
    }
}

void StandardStreams::print(std::string_view text) {
    if (mOutput == nullptr ||
        std::fwrite(text.data(), 1, text.size(), mOutput.get()) != text.size() ||
        std::fflush(mOutput.get()) != 0) {
        throw Error("cannot write to standard output");
    }
}

int StandardStreams::outputDescriptor() const {
    return mOutput != nullptr ? fileno(mOutput.get()) : -1;
}

void StandardStreams::complain(std::string_view message) {
    draw(fmt::format("tesselune: {}\n", OneLine(std::string(message))));
}

void StandardStreams::draw(std::string_view text) {
    if (mError != nullptr) {
        // A failure of standard error cannot be reported anywhere.
        static_cast<void>(std::fwrite(text.data(), 1, text.size(), mError.get()));
        static_cast<void>(std::fflush(mError.get()));
    }
}

std::optional<int> StandardStreams::terminalColumns() const {
    if (mError == nullptr || isatty(fileno(mError.get())) == 0) {
        return std::nullopt;
    }
    constexpr int kUsualColumns = 80;
    winsize size{};
    const bool known = ioctl(fileno(mError.get()), TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return known ? size.ws_col : kUsualColumns;
}

StandardStreams::File StandardStreams::keep(int descriptor) {
    // Takes a number above the standard descriptors, even if one of them is closed and so free.
    const int own = fcntl(descriptor, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    return File(own >= 0 ? fdopen(own, "w") : nullptr);
}

} // namespace Kerovane::Host
