#include "Host/Command/StandardOutput.h"

#include "Host/Error.h"

#include <fcntl.h>
#include <unistd.h>

namespace Kerovane::Host {

StandardOutput::StandardOutput(Others others) {
    // Above the standard descriptors, which may be closed.
    const int own = fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    mFile.reset(own >= 0 ? fdopen(own, "w") : nullptr);
    if (others == Others::StandardError && dup2(STDERR_FILENO, STDOUT_FILENO) >= 0) {
        return;
    }
    const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
    if (nowhere >= 0 && nowhere != STDOUT_FILENO) {
        dup2(nowhere, STDOUT_FILENO);
        close(nowhere);
    }
}

void StandardOutput::print(std::string_view text) {
    if (mFile == nullptr || std::fwrite(text.data(), 1, text.size(), mFile.get()) != text.size() ||
        std::fflush(mFile.get()) != 0) {
        throw Error("cannot write to standard output");
    }
}

} // namespace Kerovane::Host
