#include "Host/Panel/Gate.h"

#include <algorithm>
#include <array>
#include <cctype>

namespace Kerovane::Host {

namespace {

constexpr std::size_t kLongestTarget = 4096;
constexpr std::size_t kMostFields = 32;

int HexDigit(char digit) {
    return digit >= '0' && digit <= '9'   ? digit - '0'
           : digit >= 'a' && digit <= 'f' ? digit - 'a' + 10
           : digit >= 'A' && digit <= 'F' ? digit - 'A' + 10
                                          : -1;
}

std::optional<std::string> Decode(std::string_view text) {
    constexpr int kBase = 16;
    std::string decoded;
    for (std::size_t i = 0; i < text.size(); ++i) {
        char byte = text[i] == '+' ? ' ' : text[i];
        if (byte == '%') {
            if (i + 2 >= text.size() || HexDigit(text[i + 1]) < 0 || HexDigit(text[i + 2]) < 0) {
                return std::nullopt;
            }
            byte = static_cast<char>(HexDigit(text[i + 1]) * kBase + HexDigit(text[i + 2]));
            i += 2;
        }
        if (static_cast<unsigned char>(byte) < ' ') {
            return std::nullopt;
        }
        decoded += byte;
    }
    return decoded;
}

bool ReadField(std::string_view field, PanelTarget& target) {
    const std::size_t equals = field.find('=');
    const std::optional<std::string> name = Decode(field.substr(0, equals));
    const std::optional<std::string> value =
        Decode(equals < field.size() ? field.substr(equals + 1) : std::string_view());
    return name && value && target.query.emplace(*name, *value).second;
}

/// Returns whether a Host header names this machine. Accepts any port, because a tunnel may lead
/// here from another port.
bool IsThisMachine(std::string_view host) {
    static constexpr std::array<std::string_view, 3> kNames{"127.0.0.1", "localhost", "[::1]"};
    return std::ranges::any_of(kNames, [host](std::string_view name) {
        if (!host.starts_with(name)) {
            return false;
        }
        const std::string_view port = host.substr(name.size());
        return port.empty() || (port.front() == ':' && port.size() > 1 &&
                                std::ranges::all_of(port.substr(1), [](unsigned char c) {
                                    return std::isdigit(c);
                                }));
    });
}

bool IsOwnPage(const HttpHead& head) {
    constexpr std::string_view kScheme = "http://";
    const std::string_view origin = head.origin;
    return origin.empty() ||
           (origin.starts_with(kScheme) && origin.substr(kScheme.size()) == head.host);
}

} // namespace

std::optional<PanelTarget> ParseTarget(std::string_view target) {
    if (target.size() > kLongestTarget) {
        return std::nullopt;
    }
    const std::size_t question = target.find('?');
    PanelTarget parsed{.path = std::string(target.substr(0, question))};
    std::string_view query =
        question < target.size() ? target.substr(question + 1) : std::string_view();
    while (!query.empty()) {
        const std::size_t end = std::min(query.find('&'), query.size());
        if (parsed.query.size() == kMostFields || !ReadField(query.substr(0, end), parsed)) {
            return std::nullopt;
        }
        query.remove_prefix(std::min(end + 1, query.size()));
    }
    return parsed;
}

std::optional<PanelTarget> Gate::admit(const HttpHead& head) const {
    if (!IsThisMachine(head.host) || !IsOwnPage(head)) {
        return std::nullopt;
    }
    std::string_view target = head.target;
    if (!target.starts_with('/')) {
        return std::nullopt;
    }
    target.remove_prefix(1);
    const std::size_t slash = target.find('/');
    if (slash == std::string_view::npos || !mToken.is(target.substr(0, slash))) {
        return std::nullopt;
    }
    return ParseTarget(target.substr(slash + 1));
}

} // namespace Kerovane::Host
