#include "Plugins/Shared/Math/Color.h"

#include <cstdio>

namespace Kerovane::Tesselune {

namespace {

/// Clamps a channel to 0 to 1, scales it to 255 and truncates. Returns 0 for NaN.
unsigned int toByte(double channel) {
    return channel > 0.0 ? static_cast<unsigned int>(std::min(channel, 1.0) * 255.0) : 0U;
}

} // namespace

Color::Color(const std::string& text) {
    if (!text.starts_with('#')) {
        return;
    }
    const std::string digits = text.substr(1);
    const std::uint64_t value = std::stoull(digits, nullptr, 16);
    switch (digits.size()) {
    case 3:
        *this = unpacked(value | 0xF000U, 4);
        break;
    case 4:
        *this = unpacked(value, 4);
        break;
    case 6:
        *this = unpacked(value | 0xFF000000U, 8);
        break;
    case 8:
        *this = unpacked(value, 8);
        break;
    default:
        break;
    }
}

std::string Color::toHexString() const {
    char text[sizeof("#FFFFFFFF")];
    if (mA >= 1.0) {
        static_cast<void>(
            std::snprintf(text, sizeof(text), "#%X%X%X", toByte(mR), toByte(mG), toByte(mB)));
    } else {
        static_cast<void>(std::snprintf(text, sizeof(text), "#%X%X%X%X", toByte(mA), toByte(mR),
                                        toByte(mG), toByte(mB)));
    }
    return text;
}

} // namespace Kerovane::Tesselune
