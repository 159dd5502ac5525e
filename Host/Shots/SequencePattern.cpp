#include "Host/Shots/SequencePattern.h"

#include "Host/Text/Error.h"
#include "Host/Text/NumberText.h"

#include <fmt/format.h>

#include <algorithm>
#include <system_error>

namespace Kerovane::Host {

namespace {

/// The position of the placeholder in a name.
struct Place {
    std::size_t start = 0;
    std::size_t length = 0;
    int digits = 0;
};

bool IsDigit(char byte) {
    return byte >= '0' && byte <= '9';
}

/// Returns the placeholder at `start` if it consists of # and @.
std::optional<Place> MarksAt(std::string_view name, std::size_t start) {
    constexpr int kDigitsOfOneHash = 4;
    const std::string_view text = name.substr(start);
    const std::string_view marks = text.substr(0, text.find_first_not_of("#@"));
    if (marks.empty()) {
        return std::nullopt;
    }
    const auto hashes = static_cast<int>(std::ranges::count(marks, '#'));
    const int others = static_cast<int>(marks.size()) - hashes;
    return Place{.start = start,
                 .length = marks.size(),
                 .digits = others + (hashes == 1 ? kDigitsOfOneHash : hashes)};
}

/// Returns the placeholder at `start` if it has the form $F or $F4.
std::optional<Place> VariableAt(std::string_view name, std::size_t start) {
    constexpr std::string_view kName = "$F";
    const std::string_view text = name.substr(start);
    if (!text.starts_with(kName)) {
        return std::nullopt;
    }
    const bool hasDigits = text.size() > kName.size() && IsDigit(text[kName.size()]);
    return Place{.start = start,
                 .length = kName.size() + (hasDigits ? 1 : 0),
                 .digits = hasDigits ? text[kName.size()] - '0' : 1};
}

/// Returns the placeholder at `start` if it has the form %d or %04d.
std::optional<Place> ConversionAt(std::string_view name, std::size_t start) {
    const std::string_view text = name.substr(start);
    if (!text.starts_with('%')) {
        return std::nullopt;
    }
    const auto end =
        static_cast<std::size_t>(std::ranges::find_if_not(text.substr(1), IsDigit) - text.begin());
    const std::string_view width = text.substr(1, end - 1);
    const bool zeros = width.size() == 2 && width.front() == '0';
    if (end == text.size() || text[end] != 'd' || (!width.empty() && !zeros)) {
        return std::nullopt;
    }
    return Place{.start = start,
                 .length = end + 1,
                 .digits = static_cast<int>(ParseWhole(width).value_or(1))};
}

std::optional<Place> NextPlace(std::string_view name, std::size_t from) {
    for (std::size_t start = from; start < name.size(); ++start) {
        for (const auto placeAt : {MarksAt, VariableAt, ConversionAt}) {
            if (const std::optional<Place> place = placeAt(name, start)) {
                return place;
            }
        }
    }
    return std::nullopt;
}

} // namespace

std::optional<SequencePattern> SequencePattern::parse(const std::filesystem::path& pattern) {
    const std::string name = pattern.filename().string();
    const std::optional<Place> place = NextPlace(name, 0);
    if (!place) {
        return std::nullopt;
    }
    const std::size_t end = place->start + place->length;
    constexpr int kMostDigits = 64;
    if (NextPlace(name, end) || place->digits > kMostDigits) {
        throw Error(
            fmt::format("'{}' has more than one place for the frame's number", pattern.string()));
    }
    SequencePattern sequence;
    sequence.mFolder = pattern.parent_path();
    sequence.mBefore = name.substr(0, place->start);
    sequence.mBehind = name.substr(end);
    sequence.mDigits = place->digits;
    return sequence;
}

std::filesystem::path SequencePattern::pathOf(A_long frame) const {
    return mFolder / nameOf(frame);
}

FrameList SequencePattern::framesOnDisk() const {
    const std::filesystem::path folder = mFolder.empty() ? "." : mFolder;
    FrameList frames;
    try {
        for (const auto& entry : std::filesystem::directory_iterator(folder)) {
            if (const auto frame = frameOf(entry.path().filename().string())) {
                frames.push_back(*frame);
            }
        }
    } catch (const std::filesystem::filesystem_error& error) {
        throw Error(fmt::format("cannot read '{}': {}", folder.string(), error.code().message()));
    }
    std::ranges::sort(frames);
    return frames;
}

std::optional<A_long> SequencePattern::frameOf(std::string_view fileName) const {
    if (fileName.size() <= mBefore.size() + mBehind.size()) {
        return std::nullopt;
    }
    const std::string_view number =
        fileName.substr(mBefore.size(), fileName.size() - mBefore.size() - mBehind.size());
    const std::optional<A_long> frame = ParseWhole(number);
    return frame && nameOf(*frame) == fileName ? frame : std::nullopt;
}

std::string SequencePattern::nameOf(A_long frame) const {
    return fmt::format("{}{:0{}}{}", mBefore, frame, mDigits, mBehind);
}

} // namespace Kerovane::Host
