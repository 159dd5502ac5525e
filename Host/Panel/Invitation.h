#pragma once

#include "Host/Panel/Child.h"

#include <filesystem>
#include <optional>
#include <string>

namespace Kerovane::Host {

/// Whether there is a desktop to show a page on.
bool HasDesktop();

/**
 * Opens an address in the desktop's browser. The address is a secret, and other users see the words
 * that programs are started with: so the browser is given a file that leads on, in a folder that
 * only this user can read. Gone with the object.
 */
class Invitation {
public:
    /// Throws Error if it can't be made.
    explicit Invitation(const std::string& address);
    ~Invitation();
    Invitation(const Invitation&) = delete;
    Invitation& operator=(const Invitation&) = delete;

private:
    std::filesystem::path mFolder;
    std::optional<Child> mOpener;
};

} // namespace Kerovane::Host
