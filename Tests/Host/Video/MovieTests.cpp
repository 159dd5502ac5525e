#include "Tests/Host/Video/MovieFixture.h"

#include <gtest/gtest.h>

namespace Kerovane::Host {

namespace {

constexpr const char* kClip = "-f lavfi -i testsrc2=size=160x90:rate=25:duration=4 "
                              "-f lavfi -i sine=frequency=440:duration=4 ";

TEST_F(Movies, KeepTimesAndSound) {
    ffmpeg(std::string(kClip) + "-c:v libx264 -g 30 -c:a aac in.mp4");
    copy("in.mp4", "out.mp4");
    EXPECT_EQ(probe("out.mp4", "v", "frame=best_effort_timestamp_time,pkt_duration_time"),
              probe("in.mp4", "v", "frame=best_effort_timestamp_time,pkt_duration_time"));
    EXPECT_EQ(sumOf("out.mp4", "0:a", "-c copy"), sumOf("in.mp4", "0:a", "-c copy"));
    EXPECT_EQ(sumOf("out.mp4", "0:a"), sumOf("in.mp4", "0:a"));
    EXPECT_EQ(probe("out.mp4", "a", "packet=pts_time"), probe("in.mp4", "a", "packet=pts_time"));
    EXPECT_TRUE(mDamage.isEmpty()) << mDamage.text();
}

} // namespace

} // namespace Kerovane::Host
