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

/// A frame, with layers of 8 bits unless its colour is to be converted.
using SharedPicture = std::shared_ptr<const Picture>;

enum class FootageKind { Picture, Sequence, Movie };

/** What a panel shows the effect on. May be used on several threads. */
class Footage {
public:
    virtual ~Footage() = default;
    Footage(const Footage&) = delete;
    Footage& operator=(const Footage&) = delete;

    FootageKind kind() const { return mKind; }
    const FrameList& frames() const { return mFrames; }
    FrameRate rate() const { return mRate; }

    /// As the command takes it.
    const std::filesystem::path& input() const { return mInput; }

    /// Of the first frame, in pixels.
    A_long width() const { return mWidth; }
    A_long height() const { return mHeight; }

    /// Of what was rendered, before it is shown; null if colour stays as it is.
    const ColourConversion* conversion() const { return mConversion ? &*mConversion : nullptr; }

    /// Whether its own files have more than 8 bits a channel.
    bool isDeep() const { return mIsDeep; }

    /// Throws Error if there is no such frame, or it can't be read.
    virtual SharedPicture frame(A_long number) = 0;

    /// When a frame is shown; exactly of those that were read.
    virtual double secondsOf(double frame) const;

    /// The picture for other programs of this process's making, if it is no file of its own; else
    /// -1.
    virtual int descriptor() const { return -1; }

protected:
    Footage(FootageKind kind, std::filesystem::path input)
        : mKind(kind), mInput(std::move(input)) {}

    /// Takes over what the first frame tells of all.
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
    std::optional<FrameList> frames{}; ///< else all that there are
    std::optional<FrameRate> rate{};   ///< of pictures
    MissingFrames missing = MissingFrames::Error;
    ReadSetting reading{.depth = Depth::Bits8};
    std::optional<ColourConversion> conversion{};
};

/// Throws Error if there is nothing to show.
std::unique_ptr<Footage> OpenFootage(const FootageRequest& request);

/// A picture from memory, under the name that it had. Throws Error if it is none.
std::unique_ptr<Footage> FootageFrom(const std::string& content, const std::string& name);

} // namespace Kerovane::Host
