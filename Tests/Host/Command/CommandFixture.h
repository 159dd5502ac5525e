#pragma once

#include "Tests/Support/RawPicture.h"
#include "Tests/Support/TemporaryFolder.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

struct Outcome {
    int status; ///< exit status; -1 if a signal ended the command
    std::string output;
    std::string error;
};

/// Runs the command in a folder of the test's own.
class Command : public testing::Test {
protected:
    using Words = std::vector<std::string>;

    Outcome run(Words arguments, Words environment = {}, const char* command = TESSELUNE_COMMAND) {
        return finish(start(std::move(arguments), std::move(environment), command));
    }

    /// Runs the command with the fake effect, which shows `fault`.
    Outcome runFake(Words arguments, const std::string& fault = "", Words environment = {}) {
        return finish(startFake(std::move(arguments), fault, std::move(environment)));
    }

    pid_t startFake(Words arguments, const std::string& fault = "", Words environment = {}) {
        arguments.insert(arguments.begin(), {"--effect", FAKE_EFFECT});
        environment.push_back("FAKE_EFFECT=" + fault);
        return start(std::move(arguments), std::move(environment));
    }

    pid_t start(Words arguments, Words environment = {}, const char* command = TESSELUNE_COMMAND) {
        arguments.insert(arguments.begin(), command);
        for (char** inherited = environ; *inherited != nullptr; ++inherited) {
            environment.emplace_back(*inherited);
        }
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_addchdir_np(&actions, (mFolder / "").c_str());
        constexpr int kFlags = O_WRONLY | O_CREAT | O_TRUNC | O_NOCTTY;
        posix_spawn_file_actions_addopen(&actions, 1, (mStreams / "out").c_str(), kFlags, 0600);
        posix_spawn_file_actions_addopen(&actions, 2, mErrorFile.c_str(), kFlags, 0600);
        pid_t child = 0;
        EXPECT_EQ(posix_spawn(&child, command, &actions, nullptr, pointers(arguments).data(),
                              pointers(environment).data()),
                  0);
        posix_spawn_file_actions_destroy(&actions);
        return child;
    }

    Outcome finish(pid_t child) {
        int status = 0;
        waitpid(child, &status, 0);
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, mStreams.contentOf("out"),
                mStreams.contentOf("err")};
    }

    void makePicture(const std::string& name, std::vector<float> pixel,
                     const OIIO::TypeDesc& type) {
        const int alpha = pixel.size() == 4 ? 3 : -1;
        RawPicture::of(std::move(pixel), type, alpha, 32, 24).write(mFolder / name);
    }

    static std::vector<char*> pointers(Words& words) {
        std::vector<char*> pointers;
        for (std::string& word : words) {
            pointers.push_back(word.data());
        }
        pointers.push_back(nullptr);
        return pointers;
    }

    TemporaryFolder mFolder;
    TemporaryFolder mStreams;
    std::string mErrorFile = mStreams / "err"; ///< takes standard error
};

/// Expects a refusal: one line on standard error that names the command, and status 1.
inline void ExpectOneLine(const Outcome& outcome, const std::string& text) {
    EXPECT_EQ(outcome.status, 1) << text;
    EXPECT_EQ(outcome.output, "") << text;
    EXPECT_EQ(std::ranges::count(outcome.error, '\n'), 1) << outcome.error;
    EXPECT_EQ(outcome.error.find("tesselune: "), 0U) << outcome.error;
    EXPECT_NE(outcome.error.find(text), std::string::npos) << outcome.error;
}
