// Tests with signals, a terminal or a mounted folder. Transcripts have the rest.
#include "Tests/Host/Command/CommandFixture.h"

#include <gtest/gtest.h>
#include <sys/mount.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <map>
#include <thread>

namespace {

using OIIO::TypeDesc;

/// A folder that nothing can be written to.
class ReadOnlyFolder {
public:
    explicit ReadOnlyFolder(std::filesystem::path place) : mPlace(std::move(place)) {
        std::filesystem::create_directory(mPlace);
        mIsMounted = mount("tmpfs", mPlace.c_str(), "tmpfs", MS_RDONLY, nullptr) == 0;
        if (!mIsMounted) {
            std::filesystem::permissions(mPlace, std::filesystem::perms(0555));
        }
    }
    ~ReadOnlyFolder() {
        if (mIsMounted) {
            umount2(mPlace.c_str(), MNT_DETACH);
        }
    }
    ReadOnlyFolder(const ReadOnlyFolder&) = delete;
    ReadOnlyFolder& operator=(const ReadOnlyFolder&) = delete;

    bool isWritable() const { return access(mPlace.c_str(), W_OK) == 0; }

private:
    std::filesystem::path mPlace;
    bool mIsMounted;
};

class RenderCommand : public Command {
protected:
    /// Makes in.1.png, in.2.png and so on, each of a single colour.
    void makeShot(int frames) {
        for (int frame = 1; frame <= frames; ++frame) {
            makePicture("in." + std::to_string(frame) + ".png",
                        {static_cast<float>(frame) / 255, 0, 1, 1}, TypeDesc::UINT8);
        }
    }

    /// Waits until `isSo` returns true, for 20 s at most.
    template <typename Condition>
    static void waitUntil(Condition isSo) {
        const auto start = std::chrono::steady_clock::now();
        while (!isSo()) {
            ASSERT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
        }
    }

    /// Returns the contents of the files whose names begin with `beginning`, by the rest of their
    /// names.
    std::map<std::string, std::string> filesNamed(const std::string& beginning) const {
        std::map<std::string, std::string> files;
        for (const std::string& name : mFolder.files()) {
            if (name.starts_with(beginning)) {
                files[name.substr(beginning.size())] = mFolder.contentOf(name);
            }
        }
        return files;
    }

    std::string shell(const std::string& line) { return run({"-c", line}, {}, "/bin/sh").output; }
};

void ExpectIn(const std::string& part, const std::string& whole) {
    EXPECT_NE(whole.find(part), std::string::npos) << part << "\nis not in\n" << whole;
}

TEST_F(RenderCommand, ResumesAnInterruptedShotToTheSameBytes) {
    makeShot(30);
    EXPECT_EQ(runFake({"render", "in.@.png", "out.@.png", "--quiet"}).status, 0);
    for (const int signal : {SIGINT, SIGTERM}) {
        const Words words{"render", "in.@.png", "part.@.png"};
        const pid_t running = startFake(words, "slow");
        waitUntil([this] { return std::filesystem::exists(mFolder / "part.3.png"); });
        kill(running, signal);
        const Outcome interrupted = finish(running);
        EXPECT_EQ(interrupted.status, 130);
        ExpectIn("the same command with --resume does the rest", interrupted.error);
        EXPECT_TRUE(filesNamed(".").empty()) << "partial files";
        const std::size_t done = filesNamed("part.").size();
        EXPECT_LT(done, 30U);

        Words again = words;
        again.push_back("--resume");
        const Outcome resumed = runFake(again);
        EXPECT_EQ(resumed.status, 0);
        ExpectIn("; " + std::to_string(done) + " kept", resumed.error);
        EXPECT_EQ(filesNamed("part."), filesNamed("out."));
        for (const auto& [name, bytes] : filesNamed("part.")) {
            std::filesystem::remove(mFolder / ("part." + name));
        }
    }
}

TEST_F(RenderCommand, FinishesAnInterruptedMovieWithTheFramesDone) {
    shell("ffmpeg -v error -f lavfi -i testsrc2=size=96x64:rate=25:duration=2 -c:v libx264 in.mp4");
    const pid_t running = startFake(
        {"render", "in.mp4", "out.mp4", "--threads", "1", "--codec-options", "rc-lookahead=0:bf=0"},
        "slow");
    waitUntil([this] {
        const std::string lines = mStreams.contentOf("err");
        return std::ranges::count(lines, '\n') >= 3;
    });
    kill(running, SIGINT);
    const Outcome outcome = finish(running);
    EXPECT_EQ(outcome.status, 130) << outcome.error;
    ExpectIn("the frames done are in 'out.partial.mp4'", outcome.error);
    std::vector<std::string> files = mFolder.files();
    std::ranges::sort(files);
    EXPECT_EQ(files, (std::vector<std::string>{"in.mp4", "out.partial.mp4"}));
    const int frames = std::stoi(shell("ffprobe -v error -count_frames -show_entries "
                                       "stream=nb_read_frames -of csv=p=0 out.partial.mp4"));
    EXPECT_EQ(frames, std::ranges::count(outcome.error, '\n') - 3); // a line a frame, and 3 others
}

TEST_F(RenderCommand, RefusesAReadOnlyFolderBeforeItBegins) {
    makeShot(2);
    const ReadOnlyFolder folder(mFolder / "fixed");
    if (folder.isWritable()) {
        GTEST_SKIP() << "root may write to it, and may not mount here";
    }
    ExpectOneLine(runFake({"render", "in.@.png", "fixed/out.@.png"}),
                  "cannot write 'fixed/out.1.png': ");
}

TEST_F(RenderCommand, DrawsAProgressBarOnATerminal) {
    makeShot(3);
    const int terminal = posix_openpt(O_RDWR | O_NOCTTY);
    ASSERT_GE(terminal, 0);
    grantpt(terminal);
    unlockpt(terminal);
    mErrorFile = ptsname(terminal);
    EXPECT_EQ(runFake({"render", "in.@.png", "out.@.png"}).status, 0);
    std::string shown(4096, '\0');
    const ssize_t size = read(terminal, shown.data(), shown.size());
    close(terminal);
    ASSERT_GT(size, 0);
    shown.resize(static_cast<std::size_t>(size));
    ExpectIn("[########################################] 3/3 ", shown);
    ExpectIn(" fps, 0:00 left\r\x1b[K", shown);
    EXPECT_EQ(shown.find("frame 1 rendered"), std::string::npos) << shown;
    ExpectIn("tesselune: 3 of 3 frames rendered", shown);
}

} // namespace
