#include "Host/Panel/AccessToken.h"

#include "Host/Text/Error.h"

#include <fmt/format.h>
#include <sys/random.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <system_error>

namespace Kerovane::Host {

AccessToken::AccessToken() {
    constexpr std::size_t kBytes = 20;
    std::array<unsigned char, kBytes> bytes{};
    if (getrandom(bytes.data(), bytes.size(), 0) != static_cast<ssize_t>(bytes.size())) {
        throw Error(fmt::format("no random numbers: {}", std::generic_category().message(errno)));
    }
    for (const unsigned char byte : bytes) {
        mText += fmt::format("{:02x}", byte);
    }
}

bool AccessToken::is(std::string_view text) const {
    if (text.size() != mText.size()) {
        return false;
    }
    unsigned difference = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        difference |= static_cast<unsigned char>(text[i]) ^ static_cast<unsigned char>(mText[i]);
    }
    return difference == 0;
}

} // namespace Kerovane::Host
