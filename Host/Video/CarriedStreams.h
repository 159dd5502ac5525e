#pragma once

#include "Host/Video/LibAv.h"
#include "Host/Video/StreamCarrier.h"

#include <cstdint>
#include <deque>
#include <limits>
#include <memory>
#include <string>
#include <vector>

namespace Kerovane::Host {

/**
 * What a movie has beside its pictures, sound, subtitles, chapters and metadata, on its way into
 * another that may be a cut of it. What the new container can't hold is converted to what it holds,
 * or left out if it can't be. Times are in microseconds from the movie's start.
 */
class CarriedStreams {
public:
    /// Adds to `target`, which hasn't begun, what it takes of `source`, whose pictures are in
    /// `video` and whose time is `start` at the movie's start. `sink` writes packets to `target`.
    CarriedStreams(const AVFormatContext& source, int video, std::int64_t start,
                   AVFormatContext& target, const PacketSink& sink);

    /// What was converted or left out, a line each.
    const std::vector<std::string>& notes() const { return mNotes; }

    /// The new movie starts at `time`. If it is a cut, what lies before is left out, and chapters
    /// end with its `length`, as far as that is known. Before `target` begins.
    void startAt(std::int64_t time, bool isCut, std::int64_t length);

    /// Takes packets as they stand in the source.
    void add(std::vector<AvPacket> packets);

    /// Writes what lies before `time`, up to which there are pictures.
    void writeUntil(std::int64_t time);

    /// Writes the rest, up to `end`.
    void finish(std::int64_t end = std::numeric_limits<std::int64_t>::max());

private:
    struct Stream {
        const AVStream* from = nullptr;
        AVStream* to = nullptr;
        std::unique_ptr<StreamCarrier> carrier; ///< null if it is left out
        std::deque<AvPacket> waiting;
    };

    void addStream(const AVStream& from, const PacketSink& sink);
    std::unique_ptr<StreamCarrier> converterFor(const AVStream& from, AVStream& to, AVCodecID codec,
                                                const PacketSink& sink) const;
    void addChapters(const AVFormatContext& source);
    void write(Stream& stream, std::int64_t end);

    AVFormatContext& mTarget;
    std::vector<Stream> mStreams; ///< by their place in the source
    std::vector<std::string> mNotes;
    std::int64_t mFileStart; ///< of the source, in its own time
    std::int64_t mStart = 0; ///< of the new movie
    bool mIsCut = false;
};

} // namespace Kerovane::Host
