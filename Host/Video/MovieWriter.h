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

/// What users choose of a movie that is written. Empty: as the container usually has it.
struct MovieSettings {
    std::string codec{};          ///< as CodecNamed takes it
    std::string container{};      ///< FFmpeg's name: "matroska"; else as the extension says
    std::optional<int> quality{}; ///< 1 to 100, the best
    std::optional<std::int64_t> bitRate{}; ///< bits a second
    std::optional<int> bits{};             ///< of a channel
    std::string codecOptions{};            ///< of the encoder's own: "preset=ultrafast:tune=grain"
    bool alpha = false;                    ///< whether there can be holes
};

/**
 * Encodes frames to a movie, with all that another movie has beside its pictures. The file is
 * written beside the target and takes its place when it is whole.
 *
 *     MovieWriter writer("cells.mp4", reader.form(), settings);
 *     writer.carryFrom(reader, std::nullopt);
 *     writer.write(writer.pack(view), frame.time, frame.duration, std::move(frame.others));
 *     writer.finish(reader.readOthers(end));
 */
class MovieWriter {
public:
    /// "-" as `target` is written to the descriptor `standardOutput`. Throws Error if there can be
    /// no such movie; its text names the option that asks for what there isn't.
    MovieWriter(const std::filesystem::path& target, const MovieForm& form,
                const MovieSettings& settings, int standardOutput = 1);
    ~MovieWriter();
    MovieWriter(const MovieWriter&) = delete;
    MovieWriter& operator=(const MovieWriter&) = delete;

    /// Before the first frame: has the movie take from `reader`, which outlives the writing, what
    /// it has beside its pictures. A cut, of so many frames of the source's, starts with its first
    /// frame.
    void carryFrom(const MovieReader& reader, std::optional<std::int64_t> cutFrames);

    /// What the encoder takes.
    const PixelCoding& coding() const { return mCoding; }

    /// May be called from several threads at a time, beside `write`.
    AvFrame pack(const ConstPixelView& view) { return mPacker->pack(view); }

    /// Writes the next frame. Throws Error if it can't be written.
    void write(AvFrame frame, std::int64_t time, std::int64_t duration,
               std::vector<AvPacket> others = {});

    /// Ends the movie, which takes the target's place. `others` is what followed the last frame; of
    /// a cut, or if the pictures end early, what lies behind them is left out. Throws Error if it
    /// can't be written.
    void finish(std::vector<AvPacket> others = {}, bool endsEarly = false);

    /// Ends the movie with the frames so far as NAME.partial.EXT and returns that name; empty if
    /// there is no frame. Throws Error if it can't be written.
    std::filesystem::path finishPartial();

    /// What became other than asked for or than it was, a line each; more once the movie has ended.
    const std::vector<std::string>& notes() const { return mNotes; }

private:
    /// When a frame is shown in the new movie, and for how long.
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
    std::optional<FileBeside> mFile; ///< nothing on a pipe
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
    std::int64_t mWritten = 0;                ///< frames; what the encoder takes for their times
    std::map<std::int64_t, FrameSpan> mTimes; ///< of frames in the encoder, by their counts
    std::int64_t mLast = 0;                   ///< time of the last frame
    std::int64_t mEnd = 0;                    ///< where that ends
    std::vector<std::string> mNotes;
};

} // namespace Kerovane::Host
