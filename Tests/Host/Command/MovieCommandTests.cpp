#include "Tests/Host/Command/CommandFixture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstddef>
#include <fstream>
#include <string>
#include <thread>

namespace {

/// Movies are made and looked at by FFmpeg's own commands.
class MovieCommand : public Command {
protected:
    Outcome shell(const std::string& line) {
        return run({"-c", line}, {"T=" TESSELUNE_COMMAND}, "/bin/sh");
    }

    void make(const std::string& options, const std::string& name) {
        const Outcome made = shell("ffmpeg -nostdin -v error -f lavfi -i "
                                   "testsrc2=size=96x64:rate=25:duration=2 -f lavfi -i "
                                   "sine=duration=2 " +
                                   options + " " + name);
        ASSERT_EQ(made.status, 0) << made.error;
    }

    /// The sum over what `input` decodes to, of the pictures or of the sound.
    std::string sumOf(const std::string& input, const std::string& stream = "v") {
        const std::string format = stream == "v" ? " -pix_fmt rgba -c:v rawvideo" : " -c copy";
        return shell("ffmpeg -nostdin -v error -i " + input + " -map 0:" + stream + format +
                     " -vsync passthrough -f md5 -")
            .output;
    }

    std::string framesOf(const std::string& name) {
        return shell("ffprobe -v error -count_frames -select_streams v -show_entries "
                     "stream=nb_read_frames -of csv=p=0 " +
                     name)
            .output;
    }
};

TEST_F(MovieCommand, RendersTheFramesThatPicturesWouldGive) {
    make("-c:v ffv1 -pix_fmt bgr0 -c:a flac", "in.mkv");
    const std::string look = " --size 8 --dissolve '10:0 30:100' --quiet ";
    const Outcome outcome = shell(
        "ffmpeg -v error -i in.mkv -start_number 0 f.%04d.png && $T render f.#.png g.#.png" + look +
        "&& $T render in.mkv out.mkv --codec ffv1" + look + "&& $T render in.mkv h.#.png" + look +
        "&& $T render f.#.png i.mkv --codec ffv1 --fps 25" + look +
        "&& $T render in.mkv one.png --frames 20" + look +
        "&& $T render in.mkv cut.mkv --codec ffv1 --frames 20-20" + look +
        "&& $T render in.mkv late.mkv --codec ffv1 --size 8 --quiet --dissolve '0.4s:0 1.2s:100'");
    ASSERT_EQ(outcome.status, 0) << outcome.error;
    EXPECT_EQ(outcome.error, "");
    const std::string wanted = sumOf("g.%04d.png");
    EXPECT_EQ(sumOf("out.mkv"), wanted);
    EXPECT_EQ(sumOf("h.%04d.png"), wanted);
    EXPECT_EQ(sumOf("i.mkv"), wanted);
    EXPECT_EQ(sumOf("late.mkv"), wanted);
    EXPECT_EQ(sumOf("one.png"), sumOf("g.0020.png"));
    EXPECT_EQ(sumOf("cut.mkv"), sumOf("g.0020.png"));
    EXPECT_EQ(sumOf("out.mkv", "a"), sumOf("in.mkv", "a"));
}

TEST_F(MovieCommand, StandsInAPipe) {
    make("-c:v ffv1 -pix_fmt bgra -c:a pcm_s16le", "in.nut");
    const Outcome outcome =
        shell("cat in.nut | $T --effect " FAKE_EFFECT " render - - --quiet | cat > out.nut");
    EXPECT_EQ(outcome.error, "");
    EXPECT_EQ(sumOf("out.nut"), sumOf("in.nut"));
    EXPECT_EQ(sumOf("out.nut", "a"), sumOf("in.nut", "a"));
}

TEST_F(MovieCommand, SaysThatHolesAreBlackIfTheCodecHasNoAlpha) {
    make("-vf format=rgba,colorchannelmixer=aa=0.5 -c:v ffv1 -pix_fmt bgra", "in.mkv");
    for (const auto& [output, text] : {std::pair("out.mp4", "h264 has no alpha here: holes are "
                                                            "black\n"),
                                       std::pair("out.mov", "")}) {
        const Outcome outcome = runFake({"render", "in.mkv", output, "--quiet"});
        EXPECT_EQ(outcome.status, 0);
        EXPECT_NE(outcome.error.find(text), std::string::npos) << outcome.error;
        EXPECT_EQ(outcome.error.empty(), *text == '\0') << outcome.error;
    }
}

TEST_F(MovieCommand, SaysWhichPartOfTheInputIsDamaged) {
    make("-c:v libx264 -g 10 -movflags +faststart", "in.mp4");
    const std::string whole = mFolder.contentOf("in.mp4");
    std::ofstream(mFolder / "half.mp4", std::ios::binary) << whole.substr(0, whole.size() / 2);
    const Outcome outcome = runFake({"render", "half.mp4", "out.mp4", "--quiet"});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.error.find("tesselune: 'half.mp4' is damaged from "), 0U) << outcome.error;
    EXPECT_NE(outcome.error.find(" to 2.000 s\n"), std::string::npos) << outcome.error;
    EXPECT_NE(framesOf("out.mp4"), "0\n");
}

TEST_F(MovieCommand, FinishesTheMovieWithTheFramesDoneIfInterrupted) {
    make("-c:v libx264", "in.mp4");
    const pid_t child = startFake(
        {"render", "in.mp4", "out.mp4", "--threads", "1", "--codec-options", "rc-lookahead=0:bf=0"},
        "slow");
    const auto told = [this] {
        const std::string lines = mStreams.contentOf("err");
        return std::ranges::count(lines, '\n');
    };
    constexpr int kPatience = 2000;
    for (int i = 0; told() < 3 && i < kPatience; ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    kill(child, SIGINT);
    const Outcome outcome = finish(child);
    EXPECT_EQ(outcome.status, 130) << outcome.error;
    EXPECT_NE(outcome.error.find("the frames done are in 'out.partial.mp4'"), std::string::npos);
    std::vector<std::string> files = mFolder.files();
    std::ranges::sort(files);
    EXPECT_EQ(files, (std::vector<std::string>{"in.mp4", "out.partial.mp4"}));
    const int frames = std::stoi(framesOf("out.partial.mp4"));
    EXPECT_EQ(frames, std::ranges::count(outcome.error, '\n') - 3); // a line each, and the summary
}

TEST_F(MovieCommand, LeavesNothingBehindIfTheDiskIsFull) {
    make("-c:v libx264", "in.mp4");
    const Outcome outcome =
        shell("ulimit -f 8; $T --effect " FAKE_EFFECT " render in.mp4 out.avi --quiet");
    ExpectOneLine(outcome, "cannot write 'out.avi': File too large");
    EXPECT_EQ(mFolder.files(), std::vector<std::string>{"in.mp4"});
}

} // namespace
