#include "Tests/Host/Video/MovieFixture.h"
#include "Tests/Support/ErrorText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <fstream>

namespace Kerovane::Host {

namespace {

const std::string kPictures = "-f lavfi -i testsrc2=size=96x64:rate=25:duration=2 ";
const std::string kSound = "-f lavfi -i sine=frequency=440:duration=2 ";
// In seconds. Some containers round times to milliseconds; allows a little more than that.
constexpr double kMillisecond = 0.0011;

struct Journey {
    std::string made; ///< options of the ffmpeg command that makes the movie `from`
    std::string from;
    std::string to;
    bool soundIsCopied = true;
};

TEST_F(Movies, KeepTimesAndSound) {
    const std::string h264 = "-c:v libx264 -g 12 ";
    const std::string uneven = "-vf \"settb=1/1000,setpts='(N/25+mod(N*7,11)/400)/TB'\" "
                               "-vsync passthrough -enc_time_base 1/1000 ";
    const std::vector<Journey> journeys{
        {h264 + "-c:a aac", "in.mp4", "out.mp4"},
        {h264 + "-c:a aac -bf 0", "low.mp4", "low.mkv"},
        {h264 + "-c:a mp2", "in.ts", "ts.mp4"},
        {uneven + h264 + "-c:a pcm_s16le", "uneven.mkv", "uneven2.mkv"},
        {uneven + h264 + "-c:a aac", "unevenly.mkv", "uneven.mp4"},
        {uneven + h264 + "-c:a flac", "unevenest.mkv", "uneven.mov", false},
        {h264 + "-c:a aac", "web.mkv", "web.webm", false},
    };
    for (const auto& [made, from, to, soundIsCopied] : journeys) {
        ffmpeg(kPictures + kSound + made + " " + from);
        copy(from, to);
        const std::vector<double> before = timesOf(from);
        const std::vector<double> after = timesOf(to);
        ASSERT_EQ(after.size(), before.size()) << to;
        for (std::size_t i = 0; i < after.size(); ++i) { // some containers shift all times
            EXPECT_NEAR(after[i] - after[0], before[i] - before[0], kMillisecond) << from << i;
        }
        EXPECT_EQ(sumOf(to, "0:a", "-c copy") == sumOf(from, "0:a", "-c copy"), soundIsCopied)
            << from;
        EXPECT_EQ(mNotes.empty(), soundIsCopied) << from;
        EXPECT_TRUE(mDamage.isEmpty()) << from << mDamage.text();
    }
}

struct Encoding {
    std::string source; ///< pixel format of the source movie
    std::string to;
    MovieSettings settings;
    std::string compared; ///< pixel format in which the movies are compared
    double leastLikeness; ///< in dB; 0: the pictures must be equal to the bit
};

TEST_F(Movies, KeepPicturesInEachCodec) {
    const std::vector<Encoding> encodings{
        {"bgr0", "a.mkv", {.codec = "ffv1"}, "rgb24", 0},
        {"bgra", "b.mkv", {.codec = "ffv1", .alpha = true}, "rgba", 0},
        {"gbrp16le", "c.mkv", {.codec = "ffv1"}, "rgb48le", 0},
        {"bgra", "d.mov", {.codec = "png", .alpha = true}, "rgba", 0},
        {"bgra", "e.mov", {.codec = "qtrle", .alpha = true}, "rgba", 0},
        {"bgra", "f.nut", {.alpha = true}, "rgba", 0},
        {"bgra", "g.mov", {.alpha = true}, "gbrap10le", 35},
        {"bgr0", "h.mov", {}, "gbrp10le", 35},
        {"bgr0", "i.mp4", {.quality = 90}, "gbrp", 35},
        {"gbrp16le", "j.mkv", {.codec = "hevc", .quality = 90, .bits = 10}, "gbrp10le", 35},
        {"bgr0", "k.webm", {.quality = 90}, "gbrp", 35},
    };
    for (const auto& [source, to, settings, compared, leastLikeness] : encodings) {
        ffmpeg("-f lavfi -i "
               "\"testsrc2=size=96x64:rate=25:duration=0.4,gblur=sigma=4,format=rgba64le,geq=r='r("
               "X,Y)'"
               ":g='g(X,Y)':b='b(X,Y)':a='X*600'\" -c:v ffv1 -pix_fmt " +
               source + " in.mkv");
        copy("in.mkv", to, settings);
        if (leastLikeness == 0) {
            const std::string options = "-pix_fmt " + compared + " -c:v rawvideo";
            EXPECT_EQ(sumOf(to, "0:v", options), sumOf("in.mkv", "0:v", options)) << to;
        } else {
            EXPECT_GT(likeness("in.mkv", to, compared), leastLikeness) << to;
        }
    }
}

TEST_F(Movies, KeepColoursInEachMatrixAndRange) {
    for (const std::string matrix : {"bt709", "smpte170m", "bt2020nc"}) {
        for (const std::string range : {"tv", "pc"}) {
            ffmpeg("-f lavfi -i \"testsrc2=size=96x64:rate=25:duration=0.4,gblur=sigma=4,"
                   "scale=out_color_matrix=" +
                   (matrix == "smpte170m"  ? "bt601"
                    : matrix == "bt2020nc" ? "bt2020"
                                           : matrix) +
                   ":out_range=" + range + ",format=yuv420p\" -c:v ffv1 -colorspace " + matrix +
                   " -color_range " + range + " in.mkv");
            copy("in.mkv", "out.mkv", {.quality = 100});
            EXPECT_GT(likeness("in.mkv", "out.mkv", "gbrp"), 40) << matrix << ' ' << range;
        }
    }
}

TEST_F(Movies, AreTurnedByTheirRotationTag) {
    ffmpeg(kPictures + "-c:v libx264 -frames:v 5 flat.mp4");
    for (const char* angle : {"90", "180", "270"}) {
        ffmpeg(std::string("-i flat.mp4 -c copy -metadata:s:v rotate=") + angle + " turned.mp4");
        copy("turned.mp4", "out.mkv", {.codec = "ffv1"});
        const std::string options = "-pix_fmt rgb24 -c:v rawvideo";
        EXPECT_EQ(sumOf("out.mkv", "0:v", options), sumOf("turned.mp4", "0:v", options)) << angle;
    }
}

TEST_F(Movies, AreCutToTheFrameAndTheSample) {
    ffmpeg(kPictures + kSound +
           "-c:v libx264 -g 12 -bf 3 -c:a pcm_s16le -timecode 01:00:00:00 in.mov");
    copy("in.mov", "out.mkv", {.codec = "ffv1"}, {29, 11});
    const std::string pictures = "-pix_fmt rgb24 -c:v rawvideo -vsync passthrough";
    EXPECT_EQ(sumOf("out.mkv", "0:v", pictures),
              sumOf("in.mov", "0:v", "-vf \"select='between(n,29,39)'\" " + pictures));
    // 29 / 25 s and 40 / 25 s of 44100 samples a second
    EXPECT_EQ(sumOf("out.mkv", "0:a"),
              sumOf("in.mov", "0:a", "-af atrim=start_sample=51156:end_sample=70560"));
    copy("in.mov", "out.mov", {}, {29, 11});
    EXPECT_NE(probe("out.mov", "v", "stream_tags=timecode").find("01:00:01:04"), std::string::npos);
    EXPECT_THROW(copy("in.mov", "none.mov", {}, {50, 1}), Error);
}

TEST_F(Movies, KeepSubtitlesChaptersAndMetadataIfCut) {
    std::ofstream(path("in.srt")) << "1\n00:00:01,000 --> 00:00:01,500\nHello\n";
    std::ofstream(path("in.txt"))
        << ";FFMETADATA1\ntitle=A title\n[CHAPTER]\nTIMEBASE=1/1000\nSTART=0\nEND=500\ntitle=One\n"
           "[CHAPTER]\nTIMEBASE=1/1000\nSTART=500\nEND=2000\ntitle=Two\n";
    ffmpeg(kPictures + kSound +
           "-i in.srt -i in.txt -map 0 -map 1 -map 2 -map_metadata 3 "
           "-c:v libx264 -c:a aac -metadata:s:a language=fra in.mkv");
    for (const char* to : {"out.mkv", "out.mp4", "out.webm"}) {
        copy("in.mkv", to, {}, {20, 20});
        const std::string told = outputOf(std::string("ffprobe -v error -of compact -show_chapters "
                                                      "-show_entries format_tags=title:stream_tags="
                                                      "language ") +
                                          to);
        for (const char* kept : {"title=A title", "language=fra", "title=Two",
                                 "start_time=0.000000|", "end_time=0.800000|"}) {
            EXPECT_NE(told.find(kept), std::string::npos) << kept << told;
        }
        EXPECT_EQ(told.find("title=One"), std::string::npos) << told;
        EXPECT_NE(probe(to, "s", "packet=pts_time").find("0.200000"), std::string::npos) << to;
    }
}

TEST_F(Movies, ReportWhereTheyAreDamaged) {
    const std::vector<Journey> movies{
        {"-c:v libx264 -g 10", "a.mp4", "-movflags +faststart"},
        {"-c:v libx264 -g 10", "b.mkv", ""},
        {"-c:v ffv1 -level 3 -slicecrc 1", "c.mkv", ""},
        {"-c:v prores_ks", "d.mov", "-movflags +faststart"},
        {"-c:v libvpx-vp9 -deadline realtime -cpu-used 8 -g 10", "e.webm", ""},
    };
    for (const auto& [made, name, options, copied] : movies) {
        ffmpeg(kPictures + made + " " + options + " " + name);
        const std::string whole = mFolder.contentOf(name);
        std::string scratched = whole;
        std::fill_n(scratched.begin() + static_cast<std::ptrdiff_t>(whole.size() / 2),
                    whole.size() / 20, '\x5a');
        for (const std::string& content : {scratched, whole.substr(0, whole.size() * 6 / 10)}) {
            std::ofstream(path("damaged-" + name), std::ios::binary) << content;
            copy("damaged-" + name, "out.mkv", {.codec = "ffv1"});
            EXPECT_GE(timesOf("out.mkv").size(), 20U) << name;
            ASSERT_FALSE(mDamage.isEmpty()) << name;
            EXPECT_GT(mDamage.stretches().front().from, 0.5) << name << mDamage.text();
            EXPECT_LT(mDamage.stretches().front().from, 1.5) << name << mDamage.text();
        }
    }
}

TEST_F(Movies, EndIfPicturesChangeSize) {
    ffmpeg(kPictures + "-c:v libx264 a.ts");
    ffmpeg("-f lavfi -i testsrc2=size=64x64:rate=25:duration=1 -c:v libx264 -output_ts_offset 2 "
           "b.ts");
    outputOf("cat a.ts b.ts > in.ts");
    copy("in.ts", "out.mp4");
    EXPECT_EQ(timesOf("out.mp4").size(), 50U);
    EXPECT_NE(mEndedEarly.find("64 x 64"), std::string::npos) << mEndedEarly;
}

TEST_F(Movies, KeepAFewColoursAndHolesAsGif) {
    ffmpeg("-f lavfi -i \"color=red:size=32x32:rate=10:duration=0.5,format=rgba,"
           "geq=r='if(lt(X,16),200,30)':g=90:b=7:a='255*gte(Y,16)'\" -c:v png in.mov");
    copy("in.mov", "out.gif");
    EXPECT_EQ(sumOf("out.gif", "0:v", "-pix_fmt rgba -c:v rawvideo -vf crop=32:16:0:16"),
              sumOf("in.mov", "0:v", "-pix_fmt rgba -c:v rawvideo -vf crop=32:16:0:16"));
    EXPECT_EQ(sumOf("out.gif", "0:v", "-vf crop=32:16:0:0,alphaextract -c:v rawvideo"),
              sumOf("in.mov", "0:v", "-vf crop=32:16:0:0,alphaextract -c:v rawvideo"));
    EXPECT_EQ(timesOf("out.gif"), timesOf("in.mov"));
}

TEST_F(Movies, RefuseUnknownExtensions) {
    ffmpeg(kPictures + "-frames:v 2 -c:v libx264 in.mp4");
    const std::string error = ErrorOf([this] { copy("in.mp4", "out.xyz"); });
    EXPECT_NE(error.find("no movie has the extension '.xyz'"), std::string::npos) << error;
}

} // namespace

} // namespace Kerovane::Host
