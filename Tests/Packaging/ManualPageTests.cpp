#include "Tests/Host/Command/CommandFixture.h"

#include <gtest/gtest.h>

#include <regex>
#include <string>

namespace {

class ManualPages : public Command {};

TEST_F(ManualPages, AreWellFormedAndDocumentEveryOption) {
    struct Row {
        const char* page;
        const char* texts[3];
    };
    constexpr Row kRows[] = {
        {"tesselune.1", {"--effect FILE", "Render a movie", "EXIT STATUS"}},
        {"tesselune-panel.1", {"--no-open", "--output-folder", "--size"}},
        {"tesselune-render.1", {"--frames", "--size", "--use-alpha"}},
        {"tesselune-sheet.1", {"--vary", "--size", "EXIT STATUS"}},
    };
    for (const auto& [page, texts] : kRows) {
        const std::string path = std::string(MANUAL_PAGES) + '/' + page;
        const Outcome lint = run({"-T", "lint", "-W", "error", path}, {}, MANDOC);
        EXPECT_EQ(lint.status, 0) << page;
        EXPECT_EQ(lint.output + lint.error, "") << page;
        const std::string bold = run({"-T", "ascii", "-O", "width=100", path}, {}, MANDOC).output;
        const std::string text =
            std::regex_replace(bold, std::regex(".\b"), ""); // removes overstriking
        for (const char* expected : texts) {
            EXPECT_NE(text.find(expected), std::string::npos) << page << " lacks " << expected;
        }
    }
}

} // namespace
