// Runs the files in Transcripts. Each begins in a folder with pictures of its own; a line "$ words"
// is given to the shell, where tesselune has the fake effect, and what it prints has to be the
// lines up to the next one, with "..." for anything. A status other than 0 stands in a last line "?
// 1"; after a line that begins with "tesselune: " it may be left out.
#include "Tests/Host/Command/CommandFixture.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

namespace {

struct Step {
    std::string words;
    std::string expected; ///< lines, each with its end
};

std::vector<Step> Read(const std::filesystem::path& file) {
    std::vector<Step> steps;
    std::ifstream lines(file);
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("$ ")) {
            steps.push_back({.words = line.substr(2), .expected = {}});
        } else if (!line.empty() && !line.starts_with('#')) {
            steps.back().expected += line + '\n';
        }
    }
    return steps;
}

/// Whether `text` is `pattern` with anything in the place of each "...".
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

    /// What the words print and end with, in the form of a transcript.
    std::string printed(const std::string& words) {
        const std::string script = std::string("tesselune() { ") + TESSELUNE_COMMAND +
                                   " --effect " + FAKE_EFFECT + " \"$@\"; }\n" + words + " 2>&1";
        const Outcome outcome = run({"-c", script}, {}, "/bin/sh");
        const bool isComplaint = outcome.status == 1 && outcome.output.starts_with("tesselune: ");
        return outcome.output + (outcome.status == 0 || isComplaint
                                     ? ""
                                     : "? " + std::to_string(outcome.status) + '\n');
    }
};

TEST_P(Transcript, IsWhatTheCommandDoes) {
    const std::vector<Step> steps =
        Read(std::filesystem::path(TRANSCRIPTS) / (GetParam() + ".txt"));
    ASSERT_FALSE(steps.empty());
    for (const Step& step : steps) {
        const std::string text = printed(step.words);
        EXPECT_TRUE(Matches(text, step.expected)) << "$ " << step.words << '\n'
                                                  << text << "instead of\n"
                                                  << step.expected;
    }
}

INSTANTIATE_TEST_SUITE_P(Of, Transcript,
                         testing::Values("Movies", "Pictures", "Refusals", "Sheets"),
                         [](const auto& named) { return named.param; });

} // namespace
