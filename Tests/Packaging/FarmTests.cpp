#include "Tests/Host/Command/CommandFixture.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace {

/// A shot that one process has rendered, to compare with a rendering in shares.
class Farm : public Command {
protected:
    static constexpr int kFrames = 5;

    void SetUp() override {
        for (const char* folder : {"one", "many parts"}) {
            std::filesystem::create_directory(mFolder / folder);
        }
        for (int frame = 1; frame <= kFrames; ++frame) {
            const float red = static_cast<float>(frame) / kFrames;
            makePicture("shot in.000" + std::to_string(frame) + ".png", {red, 0.5F, 0},
                        OIIO::TypeDesc::UINT8);
        }
        Words arguments{"render"};
        const Words shot = shotInto("one/out.#.png");
        arguments.insert(arguments.end(), shot.begin(), shot.end());
        ASSERT_EQ(run(arguments).status, 0);
    }

    static Words shotInto(const std::string& output) {
        return {"shot in.#.png", output,      "--frames", "1-5",           "--size", "8",
                "--dissolve",    "1:0 5:100", "--effect", TESSELUNE_MODULE};
    }

    Outcome runScript(const std::string& script, Words environment) {
        environment.push_back(std::string("TESSELUNE=") + TESSELUNE_COMMAND);
        return run(shotInto("many parts/out.#.png"), environment,
                   (std::string(FARM) + '/' + script).c_str());
    }

    void expectSameFiles() {
        for (int frame = 1; frame <= kFrames; ++frame) {
            const std::string name = "/out.000" + std::to_string(frame) + ".png";
            EXPECT_NE(mFolder.contentOf("one" + name), "") << name;
            EXPECT_EQ(mFolder.contentOf("one" + name), mFolder.contentOf("many parts" + name))
                << name;
        }
    }
};

TEST_F(Farm, RendersTheSameBytesWithParallelJobs) {
    const Outcome outcome = runScript("parallel", {"CHUNKS=3", "JOBS=2"});
    EXPECT_EQ(outcome.status, 0) << outcome.error;
    expectSameFiles();
}

TEST_F(Farm, ReportsFailedSharesAndRendersTheOthers) {
    std::filesystem::resize_file(mFolder / "shot in.0004.png", 20);
    const Outcome outcome = runScript("parallel", {"CHUNKS=3", "JOBS=2"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(outcome.error.find("frame 4"), std::string::npos) << outcome.error;
    for (int frame = 1; frame <= kFrames; ++frame) {
        const std::string file = "many parts/out.000" + std::to_string(frame) + ".png";
        EXPECT_EQ(std::filesystem::exists(mFolder / file), frame != 4) << frame;
    }
}

TEST_F(Farm, RendersTheSameBytesAsTheTasksOfAJobArray) {
    for (const char* task : {"2", "3", "1"}) {
        const Outcome outcome = runScript(
            "slurm-array", {"SLURM_ARRAY_TASK_MAX=3", std::string("SLURM_ARRAY_TASK_ID=") + task});
        EXPECT_EQ(outcome.status, 0) << outcome.error;
    }
    expectSameFiles();
}

} // namespace
