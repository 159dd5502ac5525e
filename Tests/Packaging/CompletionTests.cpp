#include "Tests/Host/Command/CommandFixture.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

namespace {

class Completion : public Command {
protected:
    void SetUp() override {
        makePicture("photo.png", {1, 0, 0}, OIIO::TypeDesc::UINT8);
        std::filesystem::create_directory(mFolder / "zsh");
        std::ofstream(mFolder / "tesselune") << run({"completion", "bash"}).output;
        std::ofstream(mFolder / "zsh/_tesselune") << run({"completion", "zsh"}).output;
    }

    /// Returns bash's completions for the last word of `words`, the content of a shell array.
    std::string offers(const std::string& words) {
        const Outcome outcome =
            run({"-c", "set -u; source ./tesselune; compopt() { :; }; COMP_WORDS=(" + words +
                           "); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _tesselune; "
                           "echo \"${COMPREPLY[*]}\""},
                {}, BASH);
        EXPECT_EQ(outcome.error, "") << words;
        return outcome.output;
    }
};

TEST_F(Completion, OffersMatchingWordsInBash) {
    struct Row {
        const char* words;
        const char* offers;
    };
    constexpr Row kRows[] = {
        {"tesselune re", "render\n"},
        {"tesselune --eff", "--effect\n"},
        {"tesselune render --shape-type t", "triangle\n"},
        {"tesselune render --transition-type ''", "linear radial-in radial-out\n"},
        {"tesselune render --transition-type = radial-o", "radial-out\n"},
        {"tesselune render --use-alpha =", "true false\n"},
        {"tesselune render --size-r", "--size-random --size-random-seed\n"},
        {"tesselune render --size ''", "\n"},
        {"tesselune render ph", "photo.png\n"},
        {"tesselune render --size 3 photo.png --verb", "--verbose\n"},
        {"tesselune params --j", "--json\n"},
        {"tesselune params --size", "\n"},
        {"tesselune params transition-", "transition-type transition-progress\n"},
        {"tesselune render --preset ph", "photo.png\n"},
        {"tesselune render --preset low", "low-poly\n"},
        {"tesselune render --missing s", "skip\n"},
        {"tesselune sheet --vary siz", "size= size-random= size-level= size-random-seed=\n"},
        {"tesselune sheet --vary size = 8", "\n"},
        {"tesselune panel --o", "--output-folder\n"},
        {"tesselune --effect ph", "photo.png\n"},
        {"tesselune completion ''", "bash zsh\n"},
    };
    for (const Row& row : kRows) {
        EXPECT_EQ(offers(row.words), row.offers) << row.words;
    }
}

TEST_F(Completion, OffersMatchingWordsInZsh) {
    struct Row {
        const char* line;
        const char* text;
    };
    constexpr Row kRows[] = {{"tesselune she", "sheet"},
                             {"tesselune render --shape-type t", "triangle"},
                             {"tesselune render --transition-type=radial-o", "radial-out"},
                             {"tesselune render ph", "photo.png"},
                             {"tesselune render --preset ph", "photo.png"},
                             {"tesselune render --preset ribb", "ribbed-glass"},
                             {"tesselune completion b", "bash"}};
    for (const Row& row : kRows) {
        const Outcome outcome =
            run({"10", ZSH, "-f", ZSH_DRIVER, mFolder / "zsh", row.line, row.text}, {},
                "/usr/bin/timeout");
        EXPECT_EQ(outcome.status, 0) << row.line << outcome.error;
    }
}

TEST_F(Completion, RefusesUnknownShells) {
    ExpectOneLine(run({"completion", "fish"}), "completion is for bash or zsh, not 'fish'");
    ExpectOneLine(run({"completion"}), "SHELL is required");
}

} // namespace
