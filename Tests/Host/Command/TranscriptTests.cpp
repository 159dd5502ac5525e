// Follows the transcripts, files like this one:
//
//     # a comment
//     $ a command line, which may go on
//     > in lines like this
//     what it prints to both streams, with "..." for anything
//     ? 2
//     ! a command line that is refused
//     tesselune: the reason
//
// The line with "?" gives the exit status. Without it, a command line after "$" must end with
// status 0 and one after "!" with status 1. Each transcript has a folder of its own, with in.png
// and in.exr. Each step has a bash of its own, which knows the functions in functions.sh.
#include "Tests/Host/Command/CommandFixture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

namespace {

struct Step {
    std::string words;
    int usualStatus = 0;
    std::string expected; ///< the lines that follow the command, each with its line end
};

std::vector<Step> ReadTranscript(const std::filesystem::path& file) {
    std::vector<Step> steps;
    std::ifstream lines(file);
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("$ ") || line.starts_with("! ")) {
            steps.push_back({line.substr(2), line.starts_with('!') ? 1 : 0, ""});
        } else if (line.starts_with("> ")) {
            steps.back().words += '\n' + line.substr(2);
        } else if (!line.empty() && !line.starts_with('#')) {
            steps.back().expected += line + '\n';
        }
    }
    return steps;
}

/// Returns whether `text` is `pattern`, with anything in the place of each "...".
bool Matches(std::string_view text, std::string_view pattern) {
    constexpr std::string_view kAnything = "...";
    const std::size_t gap = pattern.find(kAnything);
    if (gap == std::string_view::npos) {
        return text == pattern;
    }
    if (!text.starts_with(pattern.substr(0, gap))) {
        return false;
    }
    const std::string_view rest = pattern.substr(gap + kAnything.size());
    for (std::size_t place = gap; place <= text.size(); ++place) {
        if (Matches(text.substr(place), rest)) {
            return true;
        }
    }
    return false;
}

class Transcript : public Command, public testing::WithParamInterface<std::string> {
protected:
    Transcript() {
        makePicture("in.png", {1, 0, 0, 1}, OIIO::TypeDesc::UINT8);
        makePicture("in.exr", {0.5F, 0.25F, 0, 1}, OIIO::TypeDesc::FLOAT);
    }

    /// Runs a step, and returns what it prints and its status in the form of a transcript.
    std::string resultOf(const Step& step) {
        const Outcome outcome =
            run({"-c", "exec 2>&1; . '" TRANSCRIPTS "/functions.sh'\n" + step.words},
                {"TESSELUNE=" TESSELUNE_COMMAND, "FAKE_MODULE=" FAKE_EFFECT,
                 "MODULE_PATH=" TESSELUNE_MODULE_PATH},
                "/bin/bash");
        return outcome.output + (outcome.status == step.usualStatus
                                     ? ""
                                     : "? " + std::to_string(outcome.status) + '\n');
    }
};

TEST_P(Transcript, IsFollowed) {
    const std::vector<Step> steps =
        ReadTranscript(std::filesystem::path(TRANSCRIPTS) / (GetParam() + ".txt"));
    ASSERT_FALSE(steps.empty());
    for (const Step& step : steps) {
        const std::string result = resultOf(step);
        EXPECT_TRUE(Matches(result, step.expected)) << "$ " << step.words << '\n'
                                                    << result << "instead of\n"
                                                    << step.expected;
    }
}

std::vector<std::string> TranscriptNames() {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(TRANSCRIPTS)) {
        if (entry.path().extension() == ".txt") {
            names.push_back(entry.path().stem());
        }
    }
    std::ranges::sort(names);
    return names;
}

INSTANTIATE_TEST_SUITE_P(, Transcript, testing::ValuesIn(TranscriptNames()),
                         [](const auto& named) { return named.param; });

} // namespace
