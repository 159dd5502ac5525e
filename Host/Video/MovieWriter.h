#pragma once

#include "Host/Pictures/FileBeside.h"
#include "Host/Pixels/PixelView.h"
#include "Host/Video/CarriedStreams.h"
#include "Host/Video/FramePixels.h"
#include "Host/Video/LibAv.h"
#include "Host/Video/MovieForm.h"
#include "Host/Video/MovieReader.h"
#include "Host/Video/VideoCodec.h"

#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace Kerovane::Host {

/// The user's choices for a movie. Choices left empty follow the container's defaults.
struct MovieSettings {
    std::string codec{};          ///< a name for CodecNamed
    std::string container{};      ///< FFmpeg's name, such as "matroska"; empty: by extension
    std::optional<int> quality{}; ///< 1 to 100 (best)
    std::optional<std::int64_t> bitRate{}; ///< bits per second
    std::optional<int> bits{};             ///< bits per channel
    std::string codecOptions{};            ///< for the encoder: "preset=ultrafast:tune=grain"
    bool alpha = false;                    ///< whether frames can be transparent
};

/**
 * Encodes frames to a movie, with the sound, subtitles, chapters and metadata of a source movie.
 * The movie is written to a temporary file beside the target, which replaces the target when it is
 * complete.
 *
 *     MovieWriter writer("cells.mp4", reader.form(), settings);
 *     writer.carryFrom(reader, std::nullopt);
 *     writer.write(writer.pack(view), frame.time, frame.duration, std::move(frame.others));
 *     writer.finish(reader.readOthers(end));
 */
class MovieWriter {
public:
    /// Opens the movie; "-" as `target` means the file descriptor `standardOutput`. Throws Error if
    /// the movie cannot be created; the text names the option that asks for something unsupported.
    MovieWriter(const std::filesystem::path& target, const MovieForm& form,
                const MovieSettings& settings, int standardOutput = 1);
    ~MovieWriter();
    MovieWriter(const MovieWriter&) = delete;
    MovieWriter& operator=(const MovieWriter&) = delete;

    /// Carries the other streams and metadata of `reader`, which must outlive the writer. Call
    /// before the first frame. If `cutFrames` is given, the movie is a cut of that many frames of
    /// the source, and starts with the first frame written.
    void carryFrom(const MovieReader& reader, std::optional<std::int64_t> cutFrames);

    /// The encoder's pixel format and colour tags.
    const PixelCoding& coding() const { return mCoding; }

    /// Converts a picture for write(). Thread-safe, also during `write`.
    AvFrame pack(const ConstPixelView& view) { return mPacker->pack(view); }

    /// Writes the next frame; times are in MovieForm::timeBase. Throws Error if writing fails.
    void write(AvFrame frame, std::int64_t time, std::int64_t duration,
               std::vector<AvPacket> others = {});

    /// Completes the movie and replaces the target. `others` are the packets after the last frame.
    /// If the movie is a cut or `endsEarly` is true, packets beyond the last frame are dropped.
    /// Throws Error if writing fails.
    void finish(std::vector<AvPacket> others = {}, bool endsEarly = false);

    /// Completes the movie with the frames written so far, renames it to NAME.partial.EXT and
    /// returns that name. Returns an empty path if there are no frames, and the target if it is a
    /// pipe. Throws Error if writing fails.
    std::filesystem::path finishPartial();

    /// Descriptions of what differs from the source or the settings, one line each. Finishing the
    /// movie may add some.
    const std::vector<std::string>& notes() const { return mNotes; }

private:
    /// When a frame is shown in the new movie, and for how long, in MovieForm::timeBase.
    struct FrameSpan {
        std::int64_t time = 0;
        std::int64_t duration = 0;
    };

    void chooseCodec(const MovieSettings& settings);
    void choosePixels(const MovieSettings& settings);
    void openEncoder(const MovieSettings& settings);
    void begin(std::int64_t time);
    void copyMetadata(std::int64_t time);
    void encode(const AVFrame* frame);
    void setTimes(AVPacket& packet);
    void send(AVPacket& packet);
    std::int64_t microseconds(std::int64_t time) const;
    void end(std::vector<AvPacket> others, bool isWhole);
    void check(int code) const;

    std::filesystem::path mTarget;
    MovieForm mForm;
    std::optional<FileBeside> mFile; ///< nothing if the target is a pipe
    AvOutput mMovie;
    const VideoCodec* mCodec = nullptr;
    PixelCoding mCoding;
    std::optional<FramePacker> mPacker;
    AvCodecContext mEncoder;
    AVStream* mStream = nullptr;
    const MovieReader* mSource = nullptr;
    bool mIsCut = false;
    std::int64_t mCutFrames = 0;
    std::optional<CarriedStreams> mCarried;
    std::optional<std::int64_t> mStart;       ///< the source's time at which the movie starts
    std::int64_t mWritten = 0;                ///< number of frames, also the encoder's timestamp
    std::map<std::int64_t, FrameSpan> mTimes; ///< frames in the encoder, by their timestamp
    std::int64_t mLast = 0;                   ///< time of the last frame
    std::int64_t mEnd = 0;                    ///< end of the last frame
    std::vector<std::string> mNotes;
};

} // namespace Kerovane::Host
