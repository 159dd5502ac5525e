#include "Tests/Host/Command/CommandFixture.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <regex>
#include <string>

namespace {

namespace fs = std::filesystem;

/// A test with the build installed in the test's folder.
class Installation : public Command {
protected:
    void SetUp() override {
        const Outcome outcome =
            run({"--install", BUILD_DIRECTORY}, {"DESTDIR=" + (mFolder / "root").string()}, CMAKE);
        ASSERT_EQ(outcome.status, 0) << outcome.output << outcome.error;
    }

    fs::path root() const { return mFolder / (std::string("root") + INSTALL_PREFIX); }
};

TEST_F(Installation, PutsEverythingInItsUsualPlace) {
    for (const char* file :
         {"bin/tesselune", "share/man/man1/tesselune.1", "share/man/man1/tesselune-render.1",
          "share/bash-completion/completions/tesselune", "share/zsh/site-functions/_tesselune",
          "OFX/Plugins/Tesselune.ofx.bundle/Contents/Linux-x86-64/Tesselune.ofx",
          "OFX/Plugins/Tesselune.ofx.bundle/Contents/Linux-x86-64/Tesselune.so",
          "OFX/Plugins/Tesselune.ofx.bundle/Contents/Resources/com.kerovane.tesselune.png"}) {
        EXPECT_TRUE(fs::is_regular_file(root() / file)) << file;
        EXPECT_GT(fs::file_size(root() / file), 1000U) << file;
    }
}

TEST_F(Installation, AboutNamesTheInstalledBundle) {
    const Outcome outcome = run({"about"}, {}, (root() / "bin/tesselune").c_str());
    const fs::path bundle = fs::canonical(root() / "OFX/Plugins/Tesselune.ofx.bundle");
    EXPECT_NE(outcome.output.find("OpenFX bundle: " + bundle.string() + '\n'), std::string::npos)
        << outcome.output;
}

TEST_F(Installation, RendersFromAnywhere) {
    makePicture("in.png", {0.8F, 0.4F, 0.2F, 1}, OIIO::TypeDesc::UINT8);
    makePicture("in.exr", {1.8F, 0.4F, 0.2F, 1}, OIIO::TypeDesc::FLOAT);
    fs::create_symlink(root() / "bin/tesselune", mFolder / "link");
    for (const fs::path& command : {root() / "bin/tesselune", mFolder / "link"}) {
        const Outcome outcome = run({"render", "in.png", "out.png"}, {}, command.c_str());
        EXPECT_EQ(outcome.status, 0);
        EXPECT_EQ(outcome.output + outcome.error, "");
        EXPECT_NEAR(RawPicture::read(mFolder / "out.png").firstPixel()[0], 0.8, 0.005);
        fs::remove(mFolder / "out.png");
        run({"render", "in.exr", "out.exr"}, {}, command.c_str());
        EXPECT_NEAR(RawPicture::read(mFolder / "out.exr").firstPixel()[0], 1.8, 1e-6);
        fs::remove(mFolder / "out.exr");
    }
}

TEST_F(Installation, InstallsPresetsThatChangeThePicture) {
    RawPicture wedge = RawPicture::of({0, 0, 0, 1}, OIIO::TypeDesc::UINT8, 3, 64, 48);
    for (std::size_t i = 0; i < wedge.values.size(); i += 4) {
        wedge.values[i] = static_cast<float>(i) / static_cast<float>(wedge.values.size());
    }
    wedge.write(mFolder / "in.png");
    const fs::path command = root() / "bin/tesselune";
    const Outcome list = run({"presets"}, {}, command.c_str());
    int presets = 0;
    for (const auto& file : fs::directory_iterator(root() / "share/tesselune/presets")) {
        const std::string preset = file.path().stem();
        const Outcome outcome =
            run({"render", "in.png", "out.png", "--preset", preset}, {}, command.c_str());
        EXPECT_EQ(outcome.status, 0) << preset;
        EXPECT_EQ(outcome.error, "");
        EXPECT_NE(RawPicture::read(mFolder / "out.png").values, wedge.values) << preset;
        // A line of the list has a description after the name.
        EXPECT_TRUE(std::regex_search(list.output, std::regex("(^|\n)" + preset + " +[A-Z].+\n")))
            << list.output;
        ++presets;
    }
    EXPECT_GE(presets, 3);
}

} // namespace
