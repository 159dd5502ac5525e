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

/** A decoded frame, and what a movie has between it and the one before. */
struct MovieFrame {
    std::int64_t number = 0;   ///< from 0 at the movie's first
    std::int64_t time = 0;     ///< from the movie's start, in MovieForm::timeBase
    std::int64_t duration = 0; ///< in the same
    AvFrame frame{};
    std::vector<AvPacket> others{}; ///< of sound and the like, as they stand in the file
};

/**
 * Decodes a movie frame by frame. What is damaged is skipped or shown as far as it goes, and noted;
 * a movie whose pictures change their size ends there, which counts as damage.
 *
 *     MovieReader reader("clip.mp4");
 *     while (std::optional<MovieFrame> frame = reader.read()) {
 *         reader.unpack(*frame, ViewOf(world));
 *     }
 */
class MovieReader {
public:
    /// "-" is standard input. Throws Error if no picture can be decoded.
    explicit MovieReader(const std::filesystem::path& file);

    const MovieForm& form() const { return mForm; }

    /// Whether frames consist of two fields.
    bool isInterlaced() const { return mInterlaced; }

    /// How many frames the file says that it has, or its length suggests; 0 if it is silent.
    std::int64_t framesExpected() const;

    /// Goes to frame `number`, before anything is read. Throws Error if the movie ends before it.
    void seek(std::int64_t number);

    /// The next frame; nothing after the last.
    std::optional<MovieFrame> read();

    /// What follows the last frame that was read, up to `end`, a time as in MovieFrame.
    std::vector<AvPacket> readOthers(std::int64_t end);

    /// Fills `out`, of an effect's own form, the movie's upright size and any depth. May be called
    /// from several threads at a time, beside `read`.
    void unpack(const MovieFrame& frame, const PixelView& out) {
        mUnpacker->unpack(*frame.frame, out);
    }

    const MovieDamage& damage() const { return mDamage; }

    /// Why reading ended before the movie did; empty if it didn't.
    const std::string& endedEarly() const { return mEndedEarly; }

    /// What stands in the file beside the pictures: streams, chapters, metadata.
    const AVFormatContext& source() const { return *mMovie; }
    int videoStream() const { return mStream; }

    /// The file's time, in microseconds, at which the movie starts.
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
    std::optional<MovieFrame> mFirst; ///< decoded to learn the form, not read yet
    std::int64_t mNumber = 0;         ///< of the next frame
    std::int64_t mEnd = 0;            ///< of the last frame, in the movie's time
    std::int64_t mLastSent = 0;       ///< the time of the packet that was decoded last
    std::vector<AvPacket> mOthers;
    MovieDamage mDamage;
    std::size_t mErrors = 0; ///< of LogWatch
    std::string mEndedEarly;
    bool mInputEnded = false;
    bool mHasEnded = false;
};

} // namespace Kerovane::Host
