#pragma once

#include "Host/Parameters/FrameRate.h"
#include "Host/Pictures/ColourConversion.h"
#include "Host/Pictures/PictureReader.h"
#include "Host/Shots/FrameList.h"
#include "Host/Shots/Shot.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

namespace Kerovane::Host {

/// A frame's picture. Its layers have 8 bits unless its colour is to be converted.
using SharedPicture = std::shared_ptr<const Picture>;

enum class FootageKind { Picture, Sequence, Movie };

/** The input that a panel shows the effect on. Thread-safe. */
class Footage {
public:
    virtual ~Footage() = default;
    Footage(const Footage&) = delete;
    Footage& operator=(const Footage&) = delete;

    FootageKind kind() const { return mKind; }
    const FrameList& frames() const { return mFrames; }
    FrameRate rate() const { return mRate; }

    /// The input as given on the command line. If it was received as bytes, its file name.
    const std::filesystem::path& input() const { return mInput; }

    /// The first frame's width and height, in pixels.
    A_long width() const { return mWidth; }
    A_long height() const { return mHeight; }

    /// The conversion to apply to rendered pictures before they are shown, or null.
    const ColourConversion* conversion() const { return mConversion ? &*mConversion : nullptr; }

    /// Whether the input's files have more than 8 bits per channel.
    bool isDeep() const { return mIsDeep; }

    /// Returns a frame. Throws Error if it does not exist or cannot be read.
    virtual SharedPicture frame(A_long number) = 0;

    /// Returns the time in seconds at which a frame is shown. A movie's times are exact for frames
    /// that were read, and otherwise estimated from the frame rate.
    virtual double secondsOf(double frame) const;

    /// The file descriptor of a picture that is only in memory, for child processes; otherwise -1.
    virtual int descriptor() const { return -1; }

protected:
    Footage(FootageKind kind, std::filesystem::path input)
        : mKind(kind), mInput(std::move(input)) {}

    /// Sets the members that the first frame determines.
    void learnFrom(const Picture& first);

    FrameList mFrames;
    FrameRate mRate;
    std::optional<ColourConversion> mConversion;
    A_long mWidth = 0;
    A_long mHeight = 0;
    bool mIsDeep = false;

private:
    FootageKind mKind;
    std::filesystem::path mInput;
};

struct FootageRequest {
    std::filesystem::path input;
    std::optional<FrameList> frames{}; ///< default: all frames
    std::optional<FrameRate> rate{};   ///< frame rate of pictures; FrameRate's default if absent
    MissingFrames missing = MissingFrames::Error;
    ReadSetting reading{.depth = Depth::Bits8};
    std::optional<ColourConversion> conversion{};
};

/// Opens the requested input. Throws Error if it has no frame to show or cannot be read.
std::unique_ptr<Footage> OpenFootage(const FootageRequest& request);

/// Returns a picture received as bytes; `name` is its file name. Throws Error if it is not a
/// picture.
std::unique_ptr<Footage> FootageFrom(const std::string& content, const std::string& name);

} // namespace Kerovane::Host
