#include "Host/Panel/Invitation.h"

#include "Host/Text/Error.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <system_error>

namespace Kerovane::Host {

namespace {

bool IsSet(const char* variable) {
    const char* value = std::getenv(variable);
    return value != nullptr && *value != '\0';
}

void WriteFor(const std::filesystem::path& file, const std::string& content) {
    const int descriptor =
        open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR);
    const bool isWritten = descriptor >= 0 && write(descriptor, content.data(), content.size()) ==
                                                  static_cast<ssize_t>(content.size());
    if (descriptor >= 0) {
        close(descriptor);
    }
    if (!isWritten) {
        throw Error(fmt::format("cannot write '{}': {}", file.string(),
                                std::generic_category().message(errno)));
    }
}

} // namespace

bool HasDesktop() {
    return IsSet("DISPLAY") || IsSet("WAYLAND_DISPLAY");
}

Invitation::Invitation(const std::string& address) {
    std::string folder = (std::filesystem::temp_directory_path() / "tesselune-XXXXXX").string();
    if (mkdtemp(folder.data()) == nullptr) {
        throw Error(fmt::format("no temporary folder: {}", std::generic_category().message(errno)));
    }
    mFolder = folder;
    const std::filesystem::path file = mFolder / "panel.html";
    try {
        WriteFor(file, fmt::format("<!doctype html><meta charset=utf-8><title>Tesselune</title>"
                                   "<meta http-equiv=refresh content=\"0; url={}\">\n",
                                   address));
        mOpener.emplace(ChildSetting{.program = "xdg-open", .words = {file.string()}});
    } catch (...) {
        std::error_code ignored;
        std::filesystem::remove_all(mFolder, ignored);
        throw;
    }
}

Invitation::~Invitation() {
    mOpener.reset();
    std::error_code ignored; // nothing can be done about a failure
    std::filesystem::remove_all(mFolder, ignored);
}

} // namespace Kerovane::Host
