#include "Platform/OpenGL/HostContext.h"
#include "Tests/Effect/FaultyHost.h"
#include "Tests/Effect/ThreadedLife.h"

#include <GL/glx.h>

#include <array>
#include <memory>
#include <stdexcept>

namespace Kerovane::TestSupport {

namespace {

/**
 * A host's window and its GLX context, which draws into the window and reads from a pixel buffer.
 */
class GlxHost {
public:
    GlxHost() : mDisplay(XOpenDisplay(nullptr)) {
        if (mDisplay == nullptr) {
            throw std::runtime_error("there is no X server");
        }
        constexpr std::array<int, 5> kWanted = {GLX_DRAWABLE_TYPE, GLX_WINDOW_BIT | GLX_PBUFFER_BIT,
                                                GLX_RENDER_TYPE, GLX_RGBA_BIT, None};
        constexpr std::array<int, 5> kSize = {GLX_PBUFFER_WIDTH, 16, GLX_PBUFFER_HEIGHT, 16, None};
        int count = 0;
        GLXFBConfig* configs =
            glXChooseFBConfig(mDisplay, DefaultScreen(mDisplay), kWanted.data(), &count);
        if (count == 0) {
            throw std::runtime_error("the X server has no configuration for a window");
        }
        XVisualInfo* visual = glXGetVisualFromFBConfig(mDisplay, configs[0]);
        const Window root = RootWindow(mDisplay, visual->screen);
        XSetWindowAttributes attributes{};
        attributes.colormap = XCreateColormap(mDisplay, root, visual->visual, AllocNone);
        mWindow = XCreateWindow(mDisplay, root, 0, 0, 16, 16, 0, visual->depth, InputOutput,
                                visual->visual, CWColormap, &attributes);
        mReadBuffer = glXCreatePbuffer(mDisplay, configs[0], kSize.data());
        mContext = glXCreateNewContext(mDisplay, configs[0], GLX_RGBA_TYPE, nullptr, True);
        glXMakeContextCurrent(mDisplay, mWindow, mReadBuffer, mContext);
        XFree(visual);
        XFree(configs);
    }

    ~GlxHost() {
        glXMakeContextCurrent(mDisplay, None, None, nullptr);
        glXDestroyContext(mDisplay, mContext);
        glXDestroyPbuffer(mDisplay, mReadBuffer);
        XDestroyWindow(mDisplay, mWindow);
        XCloseDisplay(mDisplay);
    }

    GlxHost(const GlxHost&) = delete;
    GlxHost& operator=(const GlxHost&) = delete;

    bool isCurrent() const {
        return Platform::CurrentGlxBinding() == Platform::GlxBinding{.display = mDisplay,
                                                                     .drawDrawable = mWindow,
                                                                     .readDrawable = mReadBuffer,
                                                                     .context = mContext};
    }

private:
    Display* mDisplay;
    Window mWindow = None;
    GLXPbuffer mReadBuffer = None;
    GLXContext mContext = nullptr;
};

class GlxHostContext : public ThreadedLife {};

TEST_EVERY_MODULE(GlxHostContext);

TEST_P(GlxHostContext, IsFullyRestoredAfterAFailedFrame) {
    globalSetdown();
    Platform::ReleaseCurrentEglContext();
    const GlxHost host;
    ASSERT_TRUE(host.isCurrent());
    globalSetup();
    FaultyHost faulty(mSession);
    faulty.refuseSuite("PF World Suite");
    Host::World output(Host::Depth::Bits8, 32, 32);
    EXPECT_EQ(mSession.render(SmoothPicture(32, 32, true), output), PF_Err_BAD_CALLBACK_PARAM);
    EXPECT_TRUE(host.isCurrent());
}

TEST_P(GlxHostContext, CanBecomeCurrentAfterSetdown) {
    rendered(SmoothPicture(32, 32, true));
    globalSetdown();
    const GlxHost
        host; // an X error would end the process if an effect's context were still current
    EXPECT_TRUE(host.isCurrent());
}

TEST_P(GlxHostContext, DoesNotChangePicturesOnManyThreads) {
    expectSamePictures([] {
        const auto host = std::make_shared<GlxHost>();
        return [host] { return host->isCurrent(); };
    });
}

} // namespace

} // namespace Kerovane::TestSupport
