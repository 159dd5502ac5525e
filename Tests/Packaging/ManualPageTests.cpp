#include "Tests/Host/Command/CommandFixture.h"

#include <gtest/gtest.h>

#include <fstream>
#include <string>

namespace {

class ManualPage : public Command {};

TEST_F(ManualPage, NamesEveryCommandAndEveryOption) {
    const std::string page = runFake({"manual"}).output;
    for (const char* text :
         {".SS render\n", ".SS sheet\n", ".SS params\n", ".B \\-\\-amount\\-px\n",
          ".B \\-\\-depth\\-5\none, number\\-two or 3rd [number\\-two]\n", ".B \\-\\-vary\n"}) {
        EXPECT_EQ(page.find(text), page.rfind(text)) << text << "\nstands there twice";
        EXPECT_NE(page.find(text), std::string::npos) << text << "\nis missing";
    }
    EXPECT_EQ(page.find('@'), std::string::npos) << "a place was left unfilled";
}

TEST_F(ManualPage, IsWellFormed) {
    std::ofstream(mFolder / "tesselune.1") << run({"manual"}).output;
    const Outcome outcome = run({"-T", "lint", "-W", "error", "tesselune.1"}, {}, MANDOC);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.output + outcome.error, "");
}

} // namespace
