#include "Host/Panel/Footage.h"

#include "Host/Panel/FrameCache.h"
#include "Host/Pictures/MemoryFile.h"
#include "Host/Pictures/PictureReader.h"
#include "Host/Text/Error.h"
#include "Host/Video/MovieFiles.h"
#include "Host/Video/MovieShot.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <map>
#include <mutex>

namespace Kerovane::Host {

namespace {

SharedPicture Share(Picture picture) {
    return std::make_shared<const Picture>(std::move(picture));
}

[[noreturn]] void FailToFind(A_long number) {
    throw Error(fmt::format("there is no frame {}", number));
}

/// The files of a shot, or one file for all frames.
class FileFootage : public Footage {
public:
    FileFootage(const FootageRequest& request, FootageKind kind, const Shot& shot)
        : Footage(kind, request.input), mShot(shot), mReading(request.reading) {
        mConversion = request.conversion;
        mRate = request.rate.value_or(FrameRate());
        for (const ShotFrame& frame : mShot.frames) {
            mFrames.push_back(frame.number);
        }
        if (mFrames.empty()) {
            throw Error(fmt::format("'{}' has no frame to show", request.input.string()));
        }
        learnFrom(*frame(mFrames.front()));
    }

    SharedPicture frame(A_long number) override {
        const auto found = std::ranges::lower_bound(mShot.frames, number, {}, &ShotFrame::number);
        if (found == mShot.frames.end() || found->number != number) {
            FailToFind(number);
        }
        const std::lock_guard lock(mMutex);
        if (mLast != nullptr && mLastFile == found->input) {
            return mLast;
        }
        SharedPicture picture = mCache.find(number);
        if (picture == nullptr) {
            picture = Share(ReadPicture(found->input, mReading));
            mCache.add(number, picture);
        }
        mLast = picture;
        mLastFile = found->input;
        return picture;
    }

private:
    Shot mShot;
    ReadSetting mReading;
    std::mutex mMutex;
    FrameCache mCache;
    SharedPicture mLast; ///< the picture in mLastFile; reused, because frames may share a file
    std::filesystem::path mLastFile;
};

class MovieFootage : public Footage {
public:
    explicit MovieFootage(const FootageRequest& request)
        : Footage(FootageKind::Movie, request.input), mReading(request.reading) {
        mConversion = request.conversion;
        if (request.rate) {
            throw Error(fmt::format("--fps is for pictures: '{}' has times of its own",
                                    request.input.string()));
        }
        openAt(0);
        mRate = mReader->form().rate();
        const A_long count = static_cast<A_long>(
            std::clamp<std::int64_t>(mReader->framesExpected(), 1, kMostFrames));
        mFrames = request.frames ? *request.frames : FramesBetween(0, count - 1);
        learnFrom(*frame(mFrames.front()));
        mIsDeep = mReader->form().depth() != Depth::Bits8;
    }

    SharedPicture frame(A_long number) override {
        if (!std::ranges::binary_search(mFrames, number)) {
            FailToFind(number);
        }
        const std::lock_guard lock(mMutex);
        SharedPicture picture = mCache.find(number);
        return picture != nullptr ? picture : decode(number);
    }

    double secondsOf(double frame) const override {
        const std::lock_guard lock(mMutex);
        const auto found = mTimes.find(static_cast<A_long>(std::lround(frame)));
        return found != mTimes.end() ? found->second : Footage::secondsOf(frame);
    }

private:
    static constexpr std::int64_t kMostFrames = 1'000'000;

    void openAt(A_long number) {
        mSource.reset();
        mReader.reset();
        mReader.emplace(input());
        if (number > 0) {
            mReader->seek(number);
        }
        mSource.emplace(*mReader, input(), std::nullopt,
                        [](A_long) { return std::filesystem::path(); });
        mNext = number;
    }

    SharedPicture decode(A_long number) {
        constexpr A_long kNear = 48; // frames to decode on the way; seeks if there are more
        if (number < mNext || number > mNext + kNear) {
            openAt(number);
        }
        while (const std::unique_ptr<SourceFrame> frame = mSource->next()) {
            mNext = frame->shotFrame().number + 1;
            if (frame->shotFrame().number >= number) {
                mTimes[number] = mSource->secondsOf(number);
                SharedPicture picture = Share(frame->read(mReading));
                mCache.add(number, picture);
                return picture;
            }
        }
        openAt(0);
        throw Error(fmt::format("the movie ends before frame {}", number));
    }

    ReadSetting mReading;
    mutable std::mutex mMutex;
    std::optional<MovieReader> mReader;
    std::optional<MovieSource> mSource;
    A_long mNext = 0;
    FrameCache mCache;
    std::map<A_long, double> mTimes; ///< in seconds, by number of the frames that were read
};

/** A picture received over the network. */
class MemoryFootage : public Footage {
public:
    MemoryFootage(const std::string& content, const std::string& name)
        : Footage(FootageKind::Picture, name) {
        std::ofstream file(mFile.path(), std::ios::binary);
        file.write(content.data(), static_cast<std::streamsize>(content.size()));
        file.close();
        mPicture = Share(read(name));
        mFrames = {0};
        learnFrom(*mPicture);
        mDescriptor = std::stoi(mFile.path().filename().string());
    }

    SharedPicture frame(A_long number) override {
        if (number != 0) {
            FailToFind(number);
        }
        return mPicture;
    }

    int descriptor() const override { return mDescriptor; }

private:
    Picture read(const std::string& name) const {
        const std::string path = mFile.path().string();
        try {
            return ReadPicture(path, {.depth = Depth::Bits8});
        } catch (const Error& error) {
            // Replaces the path of the file in memory, which means nothing to the user.
            std::string text = error.what();
            const std::size_t place = text.find(path);
            throw Error(place == std::string::npos ? text : text.replace(place, path.size(), name));
        }
    }

    MemoryFile mFile;
    SharedPicture mPicture;
    int mDescriptor = -1;
};

/// Returns the input files of `shot`. If it is not for a sequence, returns one picture as frame 0.
Shot ShotOf(const FootageRequest& request, const ShotRequest& shot) {
    if (AsksForShot(shot)) {
        return PlanShot(shot);
    }
    Shot single;
    single.frames.push_back({.number = 0, .input = request.input, .output = {}});
    return single;
}

} // namespace

void Footage::learnFrom(const Picture& first) {
    mWidth = first.first().world.width();
    mHeight = first.first().world.height();
    mIsDeep = first.origin().format != OIIO::TypeDesc::UINT8;
}

double Footage::secondsOf(double frame) const {
    return frame * mRate.timeStep() / mRate.timeScale();
}

std::unique_ptr<Footage> OpenFootage(const FootageRequest& request) {
    if (IsMovieFile(request.input, !IsAnimated(request.input))) {
        return std::make_unique<MovieFootage>(request);
    }
    const ShotRequest shot{.input = request.input,
                           .output = {},
                           .frames = request.frames,
                           .missing = request.missing,
                           .chunk = {},
                           .toOneFile = true};
    const FootageKind kind = AsksForShot(shot) ? FootageKind::Sequence : FootageKind::Picture;
    return std::make_unique<FileFootage>(request, kind, ShotOf(request, shot));
}

std::unique_ptr<Footage> FootageFrom(const std::string& content, const std::string& name) {
    return std::make_unique<MemoryFootage>(content, name);
}

} // namespace Kerovane::Host
