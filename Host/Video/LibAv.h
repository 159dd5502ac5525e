#pragma once

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/audio_fifo.h>
#include <libavutil/avutil.h>
#include <libavutil/display.h>
#include <libavutil/opt.h>
#include <libavutil/pixdesc.h>
#include <libavutil/timecode.h>
#include <libswresample/swresample.h>
#include <libswscale/swscale.h>
}

#include "Host/Text/Error.h"

#include <array>
#include <memory>
#include <new>
#include <string>
#include <utility>

namespace Kerovane::Host {

// Owners of FFmpeg's objects.

template <auto kFree>
struct AvFree {
    template <typename Object>
    void operator()(Object* object) const {
        kFree(object);
    }
};

/// Frees an object with a function that takes the address of the pointer and sets the pointer to
/// null.
template <auto kFree>
struct AvFreeAt {
    template <typename Object>
    void operator()(Object* object) const {
        kFree(&object);
    }
};

using AvInput = std::unique_ptr<AVFormatContext, AvFreeAt<avformat_close_input>>;
using AvOutput = std::unique_ptr<AVFormatContext, AvFree<avformat_free_context>>;
using AvCodecContext = std::unique_ptr<AVCodecContext, AvFreeAt<avcodec_free_context>>;
using AvFrame = std::unique_ptr<AVFrame, AvFreeAt<av_frame_free>>;
using AvPacket = std::unique_ptr<AVPacket, AvFreeAt<av_packet_free>>;
using AvBufferPool = std::unique_ptr<AVBufferPool, AvFreeAt<av_buffer_pool_uninit>>;
using AvScaler = std::unique_ptr<SwsContext, AvFree<sws_freeContext>>;
using AvResampler = std::unique_ptr<SwrContext, AvFreeAt<swr_free>>;
using AvSampleQueue = std::unique_ptr<AVAudioFifo, AvFree<av_audio_fifo_free>>;

/** Named options in the form FFmpeg takes them. FFmpeg removes the options that it accepts. */
class AvOptions {
public:
    AvOptions() = default;
    ~AvOptions() { av_dict_free(&mEntries); }
    AvOptions(const AvOptions&) = delete;
    AvOptions& operator=(const AvOptions&) = delete;

    void set(const char* name, const std::string& value) {
        av_dict_set(&mEntries, name, value.c_str(), 0);
    }
    AVDictionary** address() { return &mEntries; }

    /// Returns the name of an option that was not accepted, or an empty text.
    std::string left() const {
        const AVDictionaryEntry* entry = av_dict_get(mEntries, "", nullptr, AV_DICT_IGNORE_SUFFIX);
        return entry != nullptr ? entry->key : "";
    }

private:
    AVDictionary* mEntries = nullptr;
};

/// Returns `object`. Throws std::bad_alloc if it is null.
template <typename Object>
Object* Allocated(Object* object) {
    if (object == nullptr) {
        throw std::bad_alloc();
    }
    return object;
}

inline AvFrame NewFrame() {
    return AvFrame(Allocated(av_frame_alloc()));
}

inline AvPacket NewPacket() {
    return AvPacket(Allocated(av_packet_alloc()));
}

/// Returns the message of an FFmpeg error code: "No space left on device".
inline std::string AvErrorText(int code) {
    std::array<char, AV_ERROR_MAX_STRING_SIZE> text{};
    av_strerror(code, text.data(), text.size());
    return text.data();
}

/// Returns `code` if it is not negative. Otherwise throws Error with `what` and the code's message.
inline int CheckAv(int code, const std::string& what) {
    if (code < 0) {
        throw Error(what + ": " + AvErrorText(code));
    }
    return code;
}

inline constexpr AVRational kAvMicroseconds{1, AV_TIME_BASE};

} // namespace Kerovane::Host
