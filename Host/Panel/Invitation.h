#pragma once

#include "Host/Panel/Child.h"

#include <filesystem>
#include <optional>
#include <string>

namespace Kerovane::Host {

/// Returns whether there is a desktop to open a browser on.
bool HasDesktop();

/**
 * Opens an address in the desktop's browser. The address is secret, but other users can see the
 * arguments of processes. So the browser is started with a file that redirects to the address, in a
 * folder that only this user can read. The file is deleted with this object.
 */
class Invitation {
public:
    /// Throws Error if the file cannot be created, or if the program that opens it cannot be
    /// started.
    explicit Invitation(const std::string& address);
    ~Invitation();
    Invitation(const Invitation&) = delete;
    Invitation& operator=(const Invitation&) = delete;

private:
    std::filesystem::path mFolder;
    std::optional<Child> mOpener;
};

} // namespace Kerovane::Host
