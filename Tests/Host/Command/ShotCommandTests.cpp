#include "Tests/Host/Command/CommandFixture.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <sys/mount.h>
#include <sys/stat.h>

#include <chrono>
#include <csignal>
#include <fstream>
#include <map>
#include <random>
#include <sstream>
#include <thread>

namespace {

using OIIO::TypeDesc;

/// A file system mounted for a test; not there where the tests may not mount.
class Mounted {
public:
    Mounted(std::filesystem::path place, unsigned long flags, const char* options)
        : mPlace(std::move(place)) {
        std::filesystem::create_directory(mPlace);
        mThere = mount("tmpfs", mPlace.c_str(), "tmpfs", flags, options) == 0;
    }
    ~Mounted() {
        if (mThere) {
            umount2(mPlace.c_str(), MNT_DETACH);
        }
    }
    Mounted(const Mounted&) = delete;
    Mounted& operator=(const Mounted&) = delete;

    bool isThere() const { return mThere; }

private:
    std::filesystem::path mPlace;
    bool mThere;
};

/// Has a shot of its own: in.0001.png and so on.
class ShotCommand : public Command {
protected:
    static std::string nameOf(const std::string& before, int frame) {
        const std::string number = std::to_string(frame);
        return before + std::string(4 - number.size(), '0') + number + ".png";
    }

    /// Frames of noise, each its own.
    void makeShot(int last, int width = 48, int height = 32) {
        for (int frame = 1; frame <= last; ++frame) {
            makeFrame(frame, width, height);
        }
    }

    void makeFrame(int frame, int width, int height) {
        RawPicture picture = RawPicture::of({0, 0, 0, 1}, TypeDesc::UINT8, 3, width, height);
        std::minstd_rand random(static_cast<unsigned>(frame));
        for (float& value : picture.values) {
            value = static_cast<float>(random() % 256) / 255;
        }
        picture.write(mFolder / nameOf("in.", frame));
    }

    Outcome renderFake(Words options, const std::string& fault = "") {
        options.insert(options.begin(), {"render", "in.#.png", "out.#.png"});
        return runFake(options, fault);
    }

    void waitForFile(const std::string& name) const {
        constexpr auto kLongest = std::chrono::seconds(20);
        const auto start = std::chrono::steady_clock::now();
        while (!std::filesystem::exists(mFolder / name)) {
            ASSERT_LT(std::chrono::steady_clock::now() - start, kLongest) << name;
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
        }
    }

    /// The names and bytes of the files whose names begin so.
    std::map<std::string, std::string> filesNamed(const std::string& beginning) const {
        std::map<std::string, std::string> files;
        for (const std::string& name : mFolder.files()) {
            if (name.starts_with(beginning)) {
                files[name.substr(beginning.size())] = mFolder.contentOf(name);
            }
        }
        return files;
    }

    void expectNoPartialFiles() const {
        for (const std::string& name : mFolder.files()) {
            EXPECT_FALSE(name.starts_with('.')) << name;
        }
    }
};

void ExpectIn(const std::string& part, const std::string& whole) {
    EXPECT_NE(whole.find(part), std::string::npos) << part << "\nis not in\n" << whole;
}

TEST_F(ShotCommand, GivesTheSameBytesHoweverItIsDivided) {
    makeShot(9);
    const Words look{"--effect",
                     TESSELUNE_MODULE,
                     "--shape-type",
                     "triangle",
                     "--size",
                     "4",
                     "--size-random",
                     "60",
                     "--quiet",
                     "--frames",
                     "1-9",
                     "--transition-progress",
                     "1:0:smooth 9:90"};
    const auto render = [&](Words words) {
        words.insert(words.begin(), {"render", "in.#.png"});
        words.insert(words.end(), look.begin(), look.end());
        const Outcome outcome = run(words);
        EXPECT_EQ(outcome.status, 0) << outcome.error;
        EXPECT_EQ(outcome.output + outcome.error, "");
    };
    render({"one.%04d.png", "--threads", "1", "--max-frames-in-flight", "1"});
    render({"many.%04d.png", "--threads", "8", "--max-frames-in-flight", "20"});
    for (const char* chunk : {"3/3", "1/3", "2/3"}) {
        render({"chunk.#.png", "--chunk", chunk});
    }
    const auto one = filesNamed("one.");
    EXPECT_EQ(one.size(), 9U);
    EXPECT_NE(one.at("0002.png"), one.at("0003.png"));
    EXPECT_EQ(filesNamed("many."), one);
    EXPECT_EQ(filesNamed("chunk."), one);
}

TEST_F(ShotCommand, AnimatesParametersOverFrameNumbers) {
    makePicture("in.png", {1, 0, 0}, TypeDesc::UINT8);
    const Outcome outcome = runFake({"render", "in.png", "out.@.png", "--frames", "1-5x2",
                                     "--invert", "1:false 3:true 5:false"});
    EXPECT_EQ(outcome.status, 0) << outcome.error;
    for (const auto& [name, red] :
         {std::pair("out.1.png", 1), std::pair("out.3.png", 0), std::pair("out.5.png", 1)}) {
        EXPECT_EQ(RawPicture::read(mFolder / name).firstPixel()[0], red) << name;
    }
    EXPECT_FALSE(std::filesystem::exists(mFolder / "out.2.png"));
}

TEST_F(ShotCommand, TellsTheEffectTheTime) {
    makeShot(2);
    const Outcome outcome = renderFake({"--fps", "23.976", "--frames", "2"}, "report frame");
    EXPECT_EQ(outcome.status, 2);
    ExpectIn("tesselune: frame 2: the effect failed at rendering: time 2002/24000 step 1001",
             outcome.error);
}

TEST_F(ShotCommand, DealsWithMissingFramesAsTold) {
    makeShot(4);
    std::filesystem::remove(mFolder / "in.0003.png");
    ExpectOneLine(renderFake({}), "lacks the frames 3; --missing skip or --missing hold");
    EXPECT_TRUE(filesNamed("out.").empty());

    const Outcome skipped = renderFake({"--missing", "skip", "--quiet"});
    EXPECT_EQ(skipped.status, 0);
    EXPECT_EQ(skipped.error, "tesselune: missing frames skipped: 3\n");
    EXPECT_EQ(filesNamed("out.").size(), 3U);

    EXPECT_EQ(renderFake({"--missing", "hold"}).status, 0);
    EXPECT_EQ(filesNamed("out.").at("0003.png"), filesNamed("out.").at("0002.png"));
}

TEST_F(ShotCommand, GoesOnPastFramesThatFail) {
    makeShot(5);
    std::ofstream(mFolder / "in.0002.png") << "no picture";
    std::filesystem::resize_file(mFolder / "in.0004.png", 500);
    const Outcome outcome = renderFake({"--json-log", "log"});
    EXPECT_EQ(outcome.status, 2);
    ExpectIn("tesselune: frame 2: cannot read 'in.0002.png'", outcome.error);
    ExpectIn("tesselune: frame 4: cannot read 'in.0004.png'", outcome.error);
    ExpectIn("2 of 5 frames failed: 2, 4\n", outcome.error);
    EXPECT_EQ(filesNamed("out.").size(), 3U);
    expectNoPartialFiles();

    std::map<int, nlohmann::json> lines;
    std::istringstream log(mFolder.contentOf("log"));
    for (std::string line; std::getline(log, line);) {
        const auto json = nlohmann::json::parse(line);
        lines[json["frame"]] = json;
    }
    ASSERT_EQ(lines.size(), 5U);
    EXPECT_EQ(lines[1]["status"], "rendered");
    EXPECT_EQ(lines[1]["output"], "out.0001.png");
    EXPECT_EQ(lines[1]["width"], 48);
    EXPECT_GT(lines[1]["seconds"]["write"], 0);
    EXPECT_EQ(lines[2]["status"], "failed");
    ExpectIn("cannot read", lines[2]["reason"]);
}

TEST_F(ShotCommand, FailsOnlyTheFrameWhoseFileVanishes) {
    makeShot(6);
    const pid_t running = startFake(
        {"render", "in.#.png", "out.#.png", "--threads", "1", "--max-frames-in-flight", "1"},
        "slow");
    waitForFile("out.0001.png");
    std::filesystem::remove(mFolder / "in.0006.png");
    const Outcome outcome = finish(running);
    EXPECT_EQ(outcome.status, 2);
    ExpectIn("frame 6: cannot read 'in.0006.png': No such file", outcome.error);
    EXPECT_EQ(filesNamed("out.").size(), 5U);
}

TEST_F(ShotCommand, RendersFramesOfOtherSizesAndTells) {
    makeShot(3);
    makeFrame(2, 20, 10);
    const Outcome outcome = renderFake({});
    EXPECT_EQ(outcome.status, 0);
    ExpectIn("the frames differ in size: 20 x 10 (frame 2), 48 x 32 (frame 1)", outcome.error);
    EXPECT_EQ(RawPicture::read(mFolder / "out.0002.png").spec.width, 20);
    EXPECT_EQ(RawPicture::read(mFolder / "out.0003.png").spec.width, 48);
}

TEST_F(ShotCommand, EndsWhatHasBegunWhenInterruptedAndIsResumedToTheSameBytes) {
    makeShot(30);
    EXPECT_EQ(renderFake({"--quiet"}).status, 0);
    for (const int signal : {SIGINT, SIGTERM}) {
        const Words words{"render", "in.#.png", "part.#.png"};
        const pid_t running = startFake(words, "slow");
        waitForFile("part.0003.png");
        kill(running, signal);
        const Outcome interrupted = finish(running);
        EXPECT_EQ(interrupted.status, 130);
        ExpectIn("the same command with --resume does the rest", interrupted.error);
        expectNoPartialFiles();
        const auto done = filesNamed("part.");
        EXPECT_LT(done.size(), 30U);

        Words again = words;
        again.insert(again.end(), {"--resume"});
        const Outcome resumed = runFake(again);
        EXPECT_EQ(resumed.status, 0);
        ExpectIn("; " + std::to_string(done.size()) + " kept", resumed.error);
        EXPECT_EQ(filesNamed("part."), filesNamed("out."));
        for (const auto& [name, bytes] : filesNamed("part.")) {
            std::filesystem::remove(mFolder / ("part." + name));
        }
    }
}

TEST_F(ShotCommand, ResumesWhatIsNotWhole) {
    makeShot(5);
    EXPECT_EQ(renderFake({"--quiet"}).status, 0);
    const auto whole = filesNamed("out.");
    std::filesystem::copy(mFolder / "in.0005.png", mFolder / "out.0001.png",
                          std::filesystem::copy_options::overwrite_existing);
    std::filesystem::resize_file(mFolder / "out.0002.png", whole.at("0002.png").size() - 200);
    std::ofstream(mFolder / "out.0003.png") << "";
    makePicture("out.0004.png", {1, 1, 1}, TypeDesc::UINT8); // another size
    const Outcome outcome = renderFake({"--resume"});
    EXPECT_EQ(outcome.status, 0);
    ExpectIn("3 of 5 frames rendered", outcome.error);
    auto resumed = filesNamed("out.");
    EXPECT_EQ(resumed["0001.png"], mFolder.contentOf("in.0005.png")) << "whole, and so kept";
    resumed["0001.png"] = whole.at("0001.png");
    EXPECT_EQ(resumed, whole);
}

TEST_F(ShotCommand, FailsTheFramesThatAFullDiskDoesNotHold) {
    const Mounted disk(mFolder / "small", 0, "size=64k");
    if (!disk.isThere()) {
        GTEST_SKIP() << "no right to mount a small disk; the limit on file sizes is tested";
    }
    makeShot(8, 80, 60);
    const Outcome outcome = runFake({"render", "in.#.png", "small/out.#.png"});
    EXPECT_EQ(outcome.status, 2);
    ExpectIn("No space left on device", outcome.error);
    std::size_t files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(mFolder / "small")) {
        EXPECT_EQ(RawPicture::read(entry.path()).spec.width, 80) << entry.path();
        ++files;
    }
    EXPECT_GT(files, 0U);
    EXPECT_LT(files, 8U);
}

TEST_F(ShotCommand, FailsTheFramesThatMayNotBeWrittenSoLong) {
    makeShot(3, 80, 60);
    makeFrame(2, 8, 8);
    const Words words{"-c",
                      R"(ulimit -f 8 && exec "$0" "$@")",
                      TESSELUNE_COMMAND,
                      "--effect",
                      FAKE_EFFECT,
                      "render",
                      "in.#.png",
                      "out.#.png"};
    const Outcome outcome = run(words, {}, "/bin/bash");
    EXPECT_EQ(outcome.status, 2) << outcome.error;
    ExpectIn("2 of 3 frames failed: 1, 3", outcome.error);
    EXPECT_EQ(filesNamed("out.").size(), 1U);
    expectNoPartialFiles();
}

TEST_F(ShotCommand, RefusesAReadOnlyTargetBeforeItBegins) {
    makeShot(2);
    const Mounted disk(mFolder / "fixed", MS_RDONLY, "size=64k");
    if (!disk.isThere()) {
        ASSERT_NE(geteuid(), 0U) << "root writes where it has no right to";
        chmod((mFolder / "fixed").c_str(), 0555);
    }
    ExpectOneLine(runFake({"render", "in.#.png", "fixed/out.#.png"}),
                  "cannot write 'fixed/out.0001.png': ");
}

TEST_F(ShotCommand, KeepsPresets) {
    makePicture("in.png", {1, 0, 0}, TypeDesc::UINT8);
    EXPECT_EQ(runFake({"render", "in.png", "a.png", "--invert", "true", "--level", "0:0 9:50",
                       "--save-preset", "look.json"})
                  .status,
              0);
    const auto red = [this](const Words& options) {
        Words words{"render", "in.png", "b.png", "--preset", "look.json"};
        words.insert(words.end(), options.begin(), options.end());
        EXPECT_EQ(runFake(words).status, 0);
        return RawPicture::read(mFolder / "b.png").firstPixel()[0];
    };
    EXPECT_EQ(red({}), 0);
    EXPECT_EQ(red({"--invert", "false"}), 1) << "options win";
    const auto preset = nlohmann::json::parse(mFolder.contentOf("look.json"));
    EXPECT_EQ(preset["effect"]["version"], "2.3.4");
    EXPECT_EQ(preset["parameters"][2]["value"], "0:0 9:50");
    std::ofstream(mFolder / "bad.json") << R"({"parameters": [{"name": "Levl", "value": 3}]})";
    ExpectOneLine(
        runFake({"render", "in.png", "b.png", "--preset", "bad.json"}),
        R"('bad.json': parameters[0].name names no parameter: "Levl"; did you mean Level?)");
}

TEST_F(ShotCommand, SaysAsMuchAsIsAskedFor) {
    makeShot(2);
    EXPECT_EQ(renderFake({"--quiet"}).error, "");
    const std::string lines = renderFake({}).error;
    ExpectIn("tesselune: frame 1 rendered (", lines);
    ExpectIn("tesselune: 2 of 2 frames rendered in ", lines);
    EXPECT_EQ(lines.find("read "), std::string::npos) << lines;
    const std::string verbose = renderFake({"--verbose"}).error;
    ExpectIn(": read 0.", verbose);
    ExpectIn("tesselune: reading ", verbose);
    const Outcome log = renderFake({"--quiet", "--json-log", "-"});
    EXPECT_EQ(log.output.find("{\"frame\":"), 0U) << log.output;
}

TEST_F(ShotCommand, DrawsABarOnATerminal) {
    makeShot(3);
    const int terminal = posix_openpt(O_RDWR | O_NOCTTY);
    ASSERT_GE(terminal, 0);
    grantpt(terminal);
    unlockpt(terminal);
    mErrorFile = ptsname(terminal);
    EXPECT_EQ(renderFake({}).status, 0);
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

TEST_F(ShotCommand, MakesFoldersAndKeepsWhatIsThereIfAsked) {
    makeShot(3);
    const Words line{"render", "in.#.png", "a/b/out.#.png"};
    ExpectOneLine(runFake(line), "there is no folder 'a/b', which --mkdir makes");
    std::filesystem::create_directories(mFolder / "a/b");
    std::ofstream(mFolder / "a/b/out.0002.png") << "no picture";
    Words options = line;
    options.insert(options.end(), {"--mkdir", "--no-clobber", "--quiet"});
    EXPECT_EQ(runFake(options).status, 0);
    EXPECT_EQ(mFolder.contentOf("a/b/out.0002.png"), "no picture");
    EXPECT_EQ(RawPicture::read(mFolder / "a/b/out.0003.png").spec.width, 48);
    EXPECT_EQ(runFake({"render", "in.0001.png", "c/d.png", "--mkdir"}).status, 0);
    ExpectOneLine(runFake({"render", "in.0001.png", "c/d.png", "--no-clobber"}),
                  "'c/d.png' is there already, and --no-clobber keeps it");
    ExpectOneLine(runFake({"render", "in.0001.png", "in.0001.png/d.png", "--mkdir"}),
                  "--mkdir: cannot make 'in.0001.png'");
}

TEST_F(ShotCommand, IsNeverWrittenOntoItsInput) {
    makeShot(3);
    std::filesystem::create_hard_link(mFolder / "in.0003.png", mFolder / "out.0001.png");
    std::filesystem::create_symlink("in.0001.png", mFolder / "link.png");
    const std::string before = mFolder.contentOf("in.0003.png");
    ExpectOneLine(renderFake({}), "'out.0001.png' is input and output");
    ExpectOneLine(runFake({"render", "in.0001.png", "link.png"}), "'link.png' is input and output");
    ExpectOneLine(runFake({"render", "in.0001.png", "./in.0001.png"}), "is input and output");
    EXPECT_EQ(mFolder.contentOf("in.0003.png"), before);
}

} // namespace
