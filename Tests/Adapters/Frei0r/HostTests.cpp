// Runs the filter inside other programs, as users do, and compares with the command's picture of
// the same frame.

#include "Tests/Support/RawPicture.h"
#include "Tests/Support/TemporaryFolder.h"

#include <fmt/format.h>
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <limits>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

constexpr int kWidth = 160;
constexpr int kHeight = 96;
constexpr int kFrames = 5;

/// Tolerance for the hosts' pixel conversions, in levels of 255.
constexpr double kTolerance = 2;

/// Returns the largest difference of a channel, in levels of 255. Pictures without alpha count as
/// opaque.
double Difference(const RawPicture& one, const RawPicture& other) {
    if (one.spec.width != other.spec.width || one.spec.height != other.spec.height) {
        return std::numeric_limits<double>::infinity();
    }
    const auto channel = [](const RawPicture& picture, std::size_t pixel, int place) {
        const auto channels = static_cast<std::size_t>(picture.spec.nchannels);
        return place < picture.spec.nchannels
                   ? picture.values[pixel * channels + static_cast<std::size_t>(place)]
                   : 1.0F;
    };
    double difference = 0;
    for (std::size_t pixel = 0; pixel < one.spec.image_pixels(); ++pixel) {
        for (int place = 0; place < 4; ++place) {
            difference = std::max(difference, 255.0 * std::abs(channel(one, pixel, place) -
                                                               channel(other, pixel, place)));
        }
    }
    return difference;
}

/// A test with a clip, in_1.png to in_5.png, in a temporary folder that also takes the results.
class Hosts : public testing::Test {
protected:
    Hosts() {
        setenv("FREI0R_PATH", FREI0R_FOLDER, 1);
        setenv("GST_REGISTRY", (mFolder / "gst-registry").c_str(), 1);
        setenv("QT_QPA_PLATFORM", "offscreen", 1);
        setenv("FFMPEG", FFMPEG_PROGRAM " -hide_banner -nostdin -y -loglevel error", 1);
        setenv("MELT", MELT_PROGRAM " -silent -profile profile", 1);
        setenv("GST_LAUNCH", GST_LAUNCH_PROGRAM " -q", 1);
        setenv("PNG", "vcodec=png pix_fmt=rgb24", 1);
        std::ofstream(mFolder / "profile") << fmt::format(
            "description=test\nframe_rate_num=25\nframe_rate_den=1\nwidth={}\nheight={}\n"
            "progressive=1\nsample_aspect_num=1\nsample_aspect_den=1\n"
            "display_aspect_num=5\ndisplay_aspect_den=3\ncolorspace=601\n",
            kWidth, kHeight);
        run(fmt::format("$FFMPEG -f lavfi -i testsrc2=size={}x{}:rate=25 -frames:v {} in_%d.png",
                        kWidth, kHeight, kFrames));
    }

    /// Runs a shell line in the test's folder. Expects it to succeed within a minute.
    void run(const std::string& line) {
        std::ofstream(mFolder / "line") << line << '\n';
        const std::string command =
            fmt::format("cd {} && timeout 60 sh -e ./line >out 2>err", (mFolder / "").string());
        // NOLINTNEXTLINE(cert-env33-c): users type shell lines
        const int status = std::system(command.c_str());
        ASSERT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0)
            << line << "\nended with " << status << "\n"
            << mFolder.contentOf("err");
    }

    /// Returns what the filter printed to standard error in the last run.
    std::string complaints() const {
        std::string lines;
        std::istringstream error(mFolder.contentOf("err"));
        for (std::string line; std::getline(error, line);) {
            if (line.starts_with("tesselune: ")) {
                lines += line + '\n';
            }
        }
        return lines;
    }

    RawPicture picture(const std::string& name) { return RawPicture::read(mFolder / name); }

    /// Returns the command's picture of a frame, counted from 1.
    RawPicture reference(int frame, const std::string& options) {
        run(fmt::format("{} render in_{}.png reference.png {}", TESSELUNE_COMMAND, frame, options));
        return picture("reference.png");
    }

    TemporaryFolder mFolder;
};

class Ffmpeg : public Hosts {};

TEST_F(Ffmpeg, MakesTheCommandsPictures) {
    const std::pair<const char*, const char*> rows[] = {
        {"frei0r=tesselune", ""},
        {"frei0r=tesselune:1|0.0441767|0.1991992|0.7|0.25|0.0024",
         "--shape-type triangle --size 24 --ratio 2 --size-random 70 --size-level 2 "
         "--size-random-seed 12"},
        {"frei0r=tesselune:0|0.02|0.0990991|0|0.5|0|0.4|0.001|0|0|0.5|0|y",
         "--size 12 --dissolve 40 --dissolve-random-seed 5"},
        {"frei0r=tesselune:0|0.02|0.0990991|0|0.5|0|0|0|0|0.4|0.2|0.125|n",
         "--size 12 --transition-progress 40 --feather 100 --direction 45 --use-alpha false"},
        {"frei0r=tesselune:0|0.02|0.0990991|0|0.5|0|0|0|1|0.4|0.2",
         "--size 12 --transition-type radial-out --transition-progress 40 --feather 100"},
    };
    for (const auto& [filter, options] : rows) {
        run(fmt::format("$FFMPEG -i in_%d.png -vf '{}' out_%d.png", filter));
        EXPECT_EQ(complaints(), "") << filter;
        EXPECT_EQ(mFolder.contentOf("out"), "") << "a video there would be spoilt";
        EXPECT_LE(Difference(picture("out_3.png"), reference(3, options)), kTolerance) << filter;
    }
}

TEST_F(Ffmpeg, UsesTheChosenRendererOrFallsBackToSoftware) {
    const std::pair<const char*, int> rows[] = {
        {"TESSELUNE_RENDERER=software", 0},
        {"", 1},
        {"__EGL_VENDOR_LIBRARY_FILENAMES=/nowhere", 0}, // OpenGL cannot be used
    };
    std::vector<RawPicture> drawn;
    for (const auto& [environment, renderer] : rows) {
        run(fmt::format("{} $FFMPEG -i in_1.png -vf "
                        "'frei0r=tesselune:0|0.02|0.1|0|0|0|0.5|0|0|0|0|0|y|{}' out_1.png",
                        environment, renderer));
        drawn.push_back(picture("out_1.png"));
        EXPECT_EQ(Difference(drawn.back(), drawn.front()), 0) << environment;
    }
    EXPECT_NE(complaints().find("the software renderer draws"), std::string::npos);
    EXPECT_GT(Difference(drawn.front(), picture("in_1.png")), 0);
}

class Melt : public Hosts {
protected:
    /**
     * Runs melt until it has written `last`. On a busy machine, melt with consumer threads
     * sometimes ends or hangs without writing a frame. It does so with any filter, frei0r's own
     * invert0r included.
     */
    void runMelt(const std::string& arguments, const std::string& last) {
        constexpr int kAttempts = 5;
        for (int attempt = 0; attempt < kAttempts; ++attempt) {
            std::filesystem::remove(mFolder / last);
            run("timeout 20 $MELT " + arguments + " || test $? = 124");
            if (std::filesystem::exists(mFolder / last)) {
                return;
            }
        }
        FAIL() << "melt wrote no " << last << " in " << kAttempts << " attempts";
    }
};

TEST_F(Melt, FollowsKeyframesWithAnyNumberOfThreads) {
    // Animates Size from 12 to 44 pixels in four frames, and Direction, set by its name, from 0 to
    // 90 degrees.
    constexpr std::string_view kFilter =
        "-filter frei0r.tesselune 1='0=0.0200803;4=0.0843373' 9=0.5 10=0 "
        "Direction='0=0;4=0.25' 'Use Alpha=0'";
    const std::pair<const char*, int> threads[] = {
        {"", -1}, {"", -4}, {"threads=0", -1}, {"threads=2", -1}, {"threads=2", -4}};
    std::vector<RawPicture> expected;
    for (int frame = 1; frame <= kFrames; ++frame) {
        expected.push_back(reference(
            1, fmt::format("--size {} --transition-progress 50 --feather 0 --direction {} "
                           "--use-alpha false",
                           12 + 8 * (frame - 1), 22.5 * (frame - 1))));
    }
    for (const auto& [ofFilter, ofConsumer] : threads) {
        runMelt(fmt::format("in_1.png out={} {} {} -consumer avformat:out_%d.png $PNG real_time={}",
                            kFrames - 1, kFilter, ofFilter, ofConsumer),
                fmt::format("out_{}.png", kFrames));
        EXPECT_EQ(complaints(), "") << ofFilter;
        for (int frame = 1; frame <= kFrames; ++frame) {
            EXPECT_LE(Difference(picture(fmt::format("out_{}.png", frame)),
                                 expected[static_cast<std::size_t>(frame - 1)]),
                      kTolerance)
                << ofFilter << ' ' << ofConsumer << ", frame " << frame;
        }
    }
}

TEST_F(Melt, ListsTheParametersAndStartsNoOpenGL) {
    run("EGL_LOG_LEVEL=debug $MELT -query filter=frei0r.tesselune");
    const std::string listing = mFolder.contentOf("out");
    EXPECT_NE(listing.find("title: Transition Progress\n"), std::string::npos) << listing;
    EXPECT_NE(listing.find("2 to 500 pixels: (pixels - 2) / 498"), std::string::npos);
    EXPECT_EQ(mFolder.contentOf("err").find("libEGL"), std::string::npos);

    run("EGL_LOG_LEVEL=debug $FFMPEG -i in_1.png -vf frei0r=tesselune out.png");
    EXPECT_NE(mFolder.contentOf("err").find("libEGL"), std::string::npos) << "that tells nothing";
}

class GStreamer : public Hosts {};

TEST_F(GStreamer, MakesTheCommandsPicture) {
    run("$GST_LAUNCH filesrc location=in_4.png ! pngdec ! videoconvert ! "
        "frei0r-filter-tesselune shape-type=1 size=0.0441767 size-random=0.7 use-alpha=false "
        "dissolve=0.3 ! videoconvert ! pngenc ! filesink location=out.png");
    EXPECT_EQ(complaints(), "");
    EXPECT_LE(Difference(picture("out.png"),
                         reference(4, "--shape-type triangle --size 24 --size-random 70 "
                                      "--dissolve 30 --use-alpha false")),
              kTolerance);
}

} // namespace
