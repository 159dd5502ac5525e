#pragma once

#include "Host/Pixels/PixelView.h"
#include "Host/Video/FramePixels.h"
#include "Host/Video/LibAv.h"
#include "Host/Video/MovieDamage.h"
#include "Host/Video/MovieForm.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace Kerovane::Host {

/** A decoded frame, and the packets of other streams since the previous frame. */
struct MovieFrame {
    std::int64_t number = 0;   ///< counted from 0
    std::int64_t time = 0;     ///< from the movie's start, in MovieForm::timeBase
    std::int64_t duration = 0; ///< in MovieForm::timeBase
    AvFrame frame{};
    std::vector<AvPacket> others{}; ///< packets of other streams, such as sound, as in the file
};

/**
 * Decodes a movie frame by frame. Damaged frames are skipped or shown as far as they can be
 * decoded, and recorded in damage(). If the picture size changes, reading ends there, and
 * endedEarly() says so.
 *
 *     MovieReader reader("clip.mp4");
 *     while (std::optional<MovieFrame> frame = reader.read()) {
 *         reader.unpack(*frame, ViewOf(world));
 *     }
 */
class MovieReader {
public:
    /// Opens a movie; "-" is standard input. Throws Error if no picture can be decoded.
    explicit MovieReader(const std::filesystem::path& file);

    const MovieForm& form() const { return mForm; }

    /// Returns whether frames consist of two interlaced fields.
    bool isInterlaced() const { return mInterlaced; }

    /// Returns the number of frames stated in the file or estimated from its length; 0 if unknown.
    std::int64_t framesExpected() const;

    /// Skips to frame `number`. Call before the first read(). Throws Error if the movie ends
    /// earlier.
    void seek(std::int64_t number);

    /// Returns the next frame, or nothing after the last.
    std::optional<MovieFrame> read();

    /// Returns the packets of other streams after the last frame, at least those up to `end`. The
    /// time `end` is in MovieForm::timeBase.
    std::vector<AvPacket> readOthers(std::int64_t end);

    /// Fills `out`, which has a layer's channel order and alpha, any depth, and the size of the
    /// upright picture. Thread-safe, also during `read`.
    void unpack(const MovieFrame& frame, const PixelView& out) {
        mUnpacker->unpack(*frame.frame, out);
    }

    const MovieDamage& damage() const { return mDamage; }

    /// The reason why reading ended before the movie's end; empty if it did not.
    const std::string& endedEarly() const { return mEndedEarly; }

    /// The file's streams, chapters and metadata.
    const AVFormatContext& source() const { return *mMovie; }
    int videoStream() const { return mStream; }

    /// The file time at which the movie starts, in microseconds.
    std::int64_t startTime() const { return mStart; }

private:
    AVStream& stream() const { return *mMovie->streams[mStream]; }

    void openDecoder();
    void learnForm(const AVFrame& frame);
    std::optional<MovieFrame> decode();
    std::optional<MovieFrame> accept(AvFrame frame);
    void feed();
    void endInput();
    bool isSeekable() const;
    void restartAt(std::int64_t time);
    std::int64_t fileTime(std::int64_t time) const;
    double seconds(std::int64_t time) const;
    void noteDamage(std::int64_t from, std::int64_t to);
    void noteLoggedDamage(const MovieFrame& frame);
    void noteMissingEnd();

    std::filesystem::path mPath;
    AvInput mMovie;
    int mStream = 0;
    AvCodecContext mDecoder;
    std::int64_t mStart = 0;
    MovieForm mForm;
    bool mInterlaced = false;
    std::optional<FrameUnpacker> mUnpacker;
    AvPacket mPacket = NewPacket();
    std::optional<MovieFrame> mFirst; ///< decoded but not returned by read() yet
    std::int64_t mNumber = 0;         ///< number of the next frame
    std::int64_t mEnd = 0;            ///< end of the last frame, in the movie's time
    std::int64_t mLastSent = 0;       ///< time of the packet last sent to the decoder
    std::vector<AvPacket> mOthers;
    MovieDamage mDamage;
    std::size_t mErrors = 0; ///< LogWatch::errors() already accounted for
    std::string mEndedEarly;
    bool mInputEnded = false;
    bool mHasEnded = false;
};

} // namespace Kerovane::Host
