#include "Tests/Host/Command/CommandFixture.h"
#include "Tests/Host/Panel/RawClient.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>

namespace {

class PanelCommand : public Command {
protected:
    PanelCommand() { makePicture("photo.png", {0.2F, 0.4F, 0.6F}, OIIO::TypeDesc::UINT8); }

    /// Calls `read` until it returns some text, for 10 s at most.
    template <typename Read>
    static std::string await(Read read) {
        constexpr int kPatience = 1000;
        std::string text;
        for (int i = 0; i < kPatience && text.empty(); ++i) {
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
            text = read();
        }
        return text;
    }

    std::string awaitAddress() {
        return await([this] {
            const std::string output = mStreams.contentOf("out");
            return output.ends_with('\n') ? output.substr(0, output.size() - 1) : "";
        });
    }
};

TEST_F(PanelCommand, PrintsItsAddressAndEndsOnCtrlC) {
    const pid_t child = startFake({"panel", "photo.png", "--no-open"});
    const std::string address = awaitAddress();
    constexpr std::string_view kStart = "http://127.0.0.1:";
    ASSERT_TRUE(address.starts_with(kStart)) << address;
    const auto port = static_cast<std::uint16_t>(std::stoi(address.substr(kStart.size())));
    const std::string path = address.substr(address.find('/', kStart.size()));
    const std::string rest = " HTTP/1.1\r\nHost: localhost\r\nConnection: close\r\n\r\n";
    EXPECT_EQ(RawClient::statusOf(port, "GET " + path + rest), 200);
    EXPECT_EQ(RawClient::statusOf(port, "GET /" + rest), 403);
    const std::vector<std::string> files = mFolder.files();
    kill(child, SIGINT);
    const Outcome outcome = finish(child);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.output, address + '\n');
    EXPECT_FALSE(RawClient(port).isConnected());
    EXPECT_EQ(mFolder.files(), files);
}

TEST_F(PanelCommand, OpensTheBrowserWithoutShowingItsToken) {
    std::filesystem::create_directory(mFolder / "temporary");
    std::ofstream(mFolder / "xdg-open")
        << "#!/bin/sh\ncp -p \"$1\" " << (mFolder / "page") << "\necho \"$@\" > "
        << (mFolder / "words.part") << "\nmv " << (mFolder / "words.part") << ' '
        << (mFolder / "words") << '\n';
    std::filesystem::permissions(mFolder / "xdg-open", std::filesystem::perms::owner_all);
    const std::string folder = (mFolder / "").string();
    const pid_t child = startFake({"panel", "photo.png"}, "",
                                  {"DISPLAY=:9", "PATH=" + folder + ":/usr/bin:/bin",
                                   "TMPDIR=" + (mFolder / "temporary").string()});
    const std::string address = awaitAddress();
    const std::string token = address.substr(address.size() - 41, 40);
    const std::string words = await([this] { return mFolder.contentOf("words"); });
    EXPECT_EQ(words.find(token), std::string::npos) << words;
    EXPECT_NE(mFolder.contentOf("page").find(address), std::string::npos);
    struct stat status {};
    ASSERT_EQ(stat((mFolder / "page").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0600U);
    kill(child, SIGTERM);
    EXPECT_EQ(finish(child).status, 0);
    EXPECT_TRUE(std::filesystem::is_empty(mFolder / "temporary"));
}

} // namespace
