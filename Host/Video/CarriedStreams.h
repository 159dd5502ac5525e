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
 * Carries sound, subtitles, chapters and metadata of a source movie into a target movie, which may
 * be a cut of the source. Streams that the target's container cannot hold are converted to what it
 * can hold, or else left out. Times are in microseconds from the source movie's start.
 */
class CarriedStreams {
public:
    /// Adds streams and chapters of `source` to `target`, whose header is not written yet. `video`
    /// is the index of the source's picture stream, which is not carried; `start` is the file time
    /// at which the source starts. `sink` writes packets to `target`.
    CarriedStreams(const AVFormatContext& source, int video, std::int64_t start,
                   AVFormatContext& target, const PacketSink& sink);

    /// Descriptions of the streams that are converted or left out, one line each.
    const std::vector<std::string>& notes() const { return mNotes; }

    /// Makes `time` the start of the target movie. If the movie is a cut, earlier packets are
    /// dropped and chapters are limited to the movie's `length`. Call before the target's header is
    /// written.
    void startAt(std::int64_t time, bool isCut, std::int64_t length);

    /// Queues packets as read from the source.
    void add(std::vector<AvPacket> packets);

    /// Writes the queued packets that end by `time`, the end of the pictures written so far.
    void writeUntil(std::int64_t time);

    /// Writes the remaining packets up to `end`.
    void finish(std::int64_t end = std::numeric_limits<std::int64_t>::max());

private:
    struct Stream {
        const AVStream* from = nullptr;
        AVStream* to = nullptr;
        std::unique_ptr<StreamCarrier> carrier; ///< null if the stream is left out
        std::deque<AvPacket> waiting;
    };

    void addStream(const AVStream& from, const PacketSink& sink);
    std::unique_ptr<StreamCarrier> converterFor(const AVStream& from, AVStream& to, AVCodecID codec,
                                                const PacketSink& sink) const;
    void addChapters(const AVFormatContext& source);
    void write(Stream& stream, std::int64_t end);

    AVFormatContext& mTarget;
    std::vector<Stream> mStreams; ///< by the stream's index in the source
    std::vector<std::string> mNotes;
    std::int64_t mFileStart; ///< the file time at which the source starts
    std::int64_t mStart = 0; ///< the source's time at which the target starts
    bool mIsCut = false;
};

} // namespace Kerovane::Host
