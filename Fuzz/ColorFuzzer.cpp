// Colour texts: each gives channels within 0 to 1, or one of the exceptions that the constructor
// documents.
#include "Fuzz/Oracle.h"
#include "Fuzz/TextInput.h"
#include "Plugins/Shared/Math/Color.h"

#include <cctype>
#include <stdexcept>
#include <string>

namespace Kerovane::Fuzz {

namespace {

using Tesselune::Color;

std::optional<Color> ColorOf(const std::string& text) {
    try {
        return Color(text);
    } catch (const std::invalid_argument&) {
        return std::nullopt;
    } catch (const std::out_of_range&) {
        return std::nullopt;
    }
}

bool IsWithinRange(const Color& color) {
    const double channels[] = {color.r(), color.g(), color.b(), color.a()};
    return std::ranges::all_of(channels, [](double c) { return 0 <= c && c <= 1; });
}

/// Returns whether three, four, six or eight hexadecimal digits follow the "#" that `text` must
/// begin with.
bool HasAForm(const std::string& text) {
    const std::string_view digits = std::string_view(text).substr(1);
    const bool isCount =
        digits.size() == 3 || digits.size() == 4 || digits.size() == 6 || digits.size() == 8;
    return isCount && std::ranges::all_of(
                          digits, [](unsigned char digit) { return std::isxdigit(digit) != 0; });
}

/// Returns the channel written as `width` digits at `place`.
double ChannelAt(const std::string& text, std::size_t place, std::size_t width) {
    const auto value = static_cast<float>(std::stoi(text.substr(place, width), nullptr, 16));
    return value / (width == 1 ? 15.0F : 255.0F);
}

/// Reads the colour of `text` channel by channel, independently of the constructor.
Color ReadByDigits(const std::string& text) {
    const std::size_t digits = text.size() - 1;
    const std::size_t width = digits < 6 ? 1 : 2;
    const bool hasAlpha = digits % 4 == 0;
    const std::size_t red = hasAlpha ? 1 + width : 1;
    return {ChannelAt(text, red, width), ChannelAt(text, red + width, width),
            ChannelAt(text, red + 2 * width, width), hasAlpha ? ChannelAt(text, 1, width) : 1.0};
}

void CheckWrittenText(const Color& color) {
    const std::string text = color.toHexString();
    Expect(text.size() >= 4 && text.size() <= 9 && text.front() == '#',
           "a colour is written as # and one or two digits a channel");
    const std::size_t whole = color.a() < 1 ? 9 : 7;
    if (text.size() == whole) {
        Expect(Color(text).toHexString() == text, "a text with two digits a channel is read back");
    }
}

} // namespace

} // namespace Kerovane::Fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace Kerovane::Fuzz;
    const std::string text(TextOf(data, size));
    const auto color = ColorOf(text);
    if (!color) {
        Expect(text.starts_with('#'), "only what follows a # is refused");
        return 0;
    }
    Expect(IsWithinRange(*color), "channels are within 0 to 1");
    if (!text.starts_with('#')) {
        Expect(*color == Kerovane::Tesselune::Color(), "a text without # is opaque white");
    } else if (HasAForm(text)) {
        Expect(*color == ReadByDigits(text), "a form is read digit by digit");
    }
    CheckWrittenText(*color);
    return 0;
}
