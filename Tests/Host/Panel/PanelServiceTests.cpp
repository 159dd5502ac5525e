#include "Host/Panel/PanelService.h"

#include "Host/Panel/PictureCoding.h"
#include "Host/Parameters/OptionNames.h"
#include "Tests/Support/RawPicture.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <string>

namespace Kerovane::Host {
namespace {

class PanelServiceTest : public testing::Test {
protected:
    PanelServiceTest() {
        RawPicture::of({0.2F, 0.4F, 0.6F}, OIIO::TypeDesc::UINT8, -1, 32, 24)
            .write(mFolder / "photo.png");
        std::filesystem::create_directory(mFolder / "out");
        mSession.emplace(PanelSetup{.renderer = mRenderer,
                                    .line = {.parameters = mRenderer.parameters(),
                                             .options = OptionNames(mRenderer.parameters(), {})},
                                    .footage = OpenFootage({.input = mFolder / "photo.png"}),
                                    .look = {},
                                    .presets = {},
                                    .program = "/bin/false",
                                    .programVersion = "tesselune",
                                    .programWords = {},
                                    .outputFolder = mFolder / "out"});
        mService.emplace(mToken, *mSession, "{}");
    }

    HttpReply ask(const std::string& method, const std::string& path, std::string body = "") {
        return mService->answer({.head = {.method = method,
                                          .target = '/' + mToken.text() + '/' + path,
                                          .host = "localhost"},
                                 .body = std::move(body)});
    }

    TemporaryFolder mFolder;
    FrameRenderer mRenderer{std::filesystem::path(FAKE_EFFECT)};
    AccessToken mToken;
    std::optional<PanelSession> mSession;
    std::optional<PanelService> mService;
};

TEST_F(PanelServiceTest, RefusesUnknownPathsAndInvalidRequests) {
    struct Row {
        const char* method;
        std::string path;
        std::string body;
        int status;
    };
    const std::string kView = "preview?frame=0&width=32&height=24&shownHeight=12&shownWidth=";
    const std::string kRows64(64, '[');
    const Row kRows[] = {
        {"GET", "", "", 200},
        {"GET", "page/Main.js", "", 200},
        {"GET", "page/../page/Main.js", "", 404},
        {"GET", "../../etc/passwd", "", 404},
        {"GET", "page/..%2f..%2fetc/passwd", "", 404},
        {"GET", "/etc/passwd", "", 404},
        {"POST", "still?frame=0", "", 404},
        {"DELETE", "state", "", 404},
        {"GET", "still?frame=0", "", 200},
        {"GET", "still?frame=1", "", 400},
        {"GET", "still?frame=x", "", 400},
        {"GET", "still", "", 400},
        {"GET", kView + "16&x=0&y=0", "", 200},
        {"GET", kView + "16&x=0&y=0&ground=pink", "", 400},
        {"GET", kView + "16&x=1&y=0", "", 400},
        {"GET", kView + "16&x=-1&y=0", "", 400},
        {"GET", kView + "33&x=0&y=0", "", 400},
        {"GET", kView + "0&x=0&y=0", "", 400},
        {"GET", kView + "2147483647&x=2147483647&y=0", "", 400},
        {"GET", kView + "16&x=0&y=0&set.nothing=1", "", 400},
        {"GET", "curve?option=nothing&first=0&last=1&count=2", "", 400},
        {"GET", "curve?option=ratio&first=0&last=1&count=2", "", 200},
        {"GET", "curve?option=ratio&first=0&last=1&count=99999999", "", 400},
        {"GET", "curve?option=ratio&first=nan&last=1&count=2", "", 400},
        {"GET", "cell?frame=0&x=32&y=0", "", 400},
        {"POST", "edit", "", 400},
        {"POST", "edit", "[]", 400},
        {"POST", "edit", kRows64, 400},
        {"POST", "edit", R"({"do":"set"})", 400},
        {"POST", "edit", R"({"do":1})", 400},
        {"POST", "edit", R"({"do":"set","option":"ratio","value":"0.0001"})", 400},
        {"POST", "edit", R"({"do":"set","option":"ratio","value":"0.5","frame":"x"})", 400},
        {"POST", "edit", R"({"do":"remove-key","option":"ratio","index":-1})", 400},
        {"POST", "edit", R"({"do":"remove-key","option":"ratio","index":1e83})", 400},
        {"POST", "edit", R"({"do":"put-key","option":"ratio","frame":1e400})", 400},
        {"POST", "edit", R"({"do":"preset","name":"../x"})", 400},
        {"POST", "edit", R"({"do":"preset-file","content":"{}"})", 400},
        {"POST", "edit", R"({"do":"set","option":"ratio","value":"0.5","frame":0})", 200},
        {"POST", "drop?name=x.png", "no picture", 400},
        {"POST", "render", R"({"name":"../x.png"})", 400},
        {"POST", "save-preset", R"({"name":{}})", 400},
    };
    for (const auto& [method, path, body, status] : kRows) {
        EXPECT_EQ(ask(method, path, body).status, status) << method << ' ' << path << ' ' << body;
    }
}

TEST_F(PanelServiceTest, WritesOnlyIntoItsFolder) {
    for (const char* name : {"", "../x", "/tmp/x", "a/b", ".hidden", "-rf", "a\\u0000b", "a\\nb"}) {
        const std::string order = std::string(R"({"name":")") + name + "\"}";
        EXPECT_EQ(ask("POST", "save-preset", order).status, 400) << name;
    }
    std::filesystem::create_symlink(mFolder / "photo.png", mFolder / "out/link.json");
    EXPECT_EQ(ask("POST", "save-preset", R"({"name":"link","replace":true})").status, 400);
    EXPECT_EQ(ask("POST", "save-preset", R"({"name":"mine"})").status, 200);
    EXPECT_EQ(ask("POST", "save-preset", R"({"name":"mine"})").status, 400);
    EXPECT_EQ(ask("POST", "save-preset", R"({"name":"mine","replace":true})").status, 200);
    EXPECT_EQ(ask("POST", "save-still", R"({"name":"a still","frame":0})").status, 200);
    EXPECT_EQ(mFolder.contentOf("out/a still.png"), ask("GET", "still?frame=0").body);
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(mFolder / "out")) {
        names.insert(entry.path().filename().string());
    }
    EXPECT_EQ(names, (std::set<std::string>{"a still.png", "link.json", "mine.json"}));
    EXPECT_EQ(mFolder.files().size(), 2U);
}

TEST_F(PanelServiceTest, ScalesPreviewsToTheMeanOverTheGround) {
    World world(Depth::Bits8, 4, 2);
    for (A_long y = 0; y < 2; ++y) {
        for (A_long x = 0; x < 4; ++x) {
            const auto white = static_cast<A_u_char>(x < 2 ? 255 : 0);
            world.row<PF_Pixel8>(y)[static_cast<std::size_t>(x)] = {white, 200, 100, 0};
        }
    }
    // Read back from the JPEG, whose blocks are of one colour here.
    const auto left = EncodePreview(world, {.x = 0,
                                            .y = 0,
                                            .width = 2,
                                            .height = 2,
                                            .shownWidth = 1,
                                            .shownHeight = 1,
                                            .ground = Ground::White});
    const auto all = EncodePreview(world, {.x = 0,
                                           .y = 0,
                                           .width = 4,
                                           .height = 2,
                                           .shownWidth = 1,
                                           .shownHeight = 1,
                                           .ground = Ground::White});
    const auto pixel = [](const std::string& jpeg) {
        const SharedPicture picture = FootageFrom(jpeg, "a.jpg")->frame(0);
        return picture->first().world.row<PF_Pixel8>(0)[0];
    };
    EXPECT_NEAR(pixel(left).red, 200, 4);
    EXPECT_NEAR(pixel(left).blue, 0, 4);
    EXPECT_NEAR(pixel(all).red, 100 + 127, 4);
    EXPECT_NEAR(pixel(all).green, 50 + 127, 4);
    EXPECT_NEAR(pixel(all).blue, 127, 4);
}

} // namespace
} // namespace Kerovane::Host
