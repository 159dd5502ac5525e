#include "Host/Pictures/ReplaceFile.h"

#include "Host/Pictures/FileBeside.h"

namespace Kerovane::Host {

void ReplaceFile(const std::filesystem::path& target, std::span<const std::byte> content) {
    FileBeside file(target);
    file.write(content);
    file.takePlace();
}

} // namespace Kerovane::Host
