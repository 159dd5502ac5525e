#include "Plugins/Shared/GL/AEOpenGLContextManager.h"
#include "Plugins/Shared/GL/SaveRestoreGLContextMac.h"

#include "Tests/GL/GLFixture.h"
#include "Tests/Support/EglHost.h"
#include "Tests/Support/GLCalls.h"

#include <algorithm>
#include <atomic>
#include <thread>

using namespace gl;
using Kerovane::TestSupport::EglHost;
using Kerovane::TestSupport::GLCalls;

namespace Kerovane::Tesselune {

namespace {

/** A test with the process's contexts set up. */
class ContextManager : public testing::Test {
protected:
    ContextManager() { AEOpenGLContextManager::setupContextManager(); }
    ~ContextManager() override { AEOpenGLContextManager::releaseContextManager(); }
};

TEST_F(ContextManager, GivesEveryThreadItsOwnContextAndReportsEachOnce) {
    testing::internal::CaptureStdout();
    constexpr int kThreads = 4;
    std::vector<AEOpenGLContext*> contexts(kThreads);
    std::atomic<int> waiting = kThreads;
    std::vector<std::jthread> threads;
    threads.reserve(kThreads);
    for (AEOpenGLContext*& context : contexts) {
        threads.emplace_back([&context, &waiting] {
            --waiting;
            while (waiting > 0) {
            }
            context = AEOpenGLContextManager::getCurrentRenderContext();
            context->makeContextCurrent();
            EXPECT_EQ(AEOpenGLContextManager::getCurrentRenderContext(), context);
        });
    }
    threads.clear();
    const std::string report = testing::internal::GetCapturedStdout();
    std::ranges::sort(contexts);
    EXPECT_EQ(std::ranges::adjacent_find(contexts), contexts.end());
    for (const std::string part : {"\nOpenGL Version:  ", " (gl.xml)\n\n"}) {
        int count = 0;
        for (auto at = report.find(part); at != std::string::npos; at = report.find(part, at + 1)) {
            ++count;
        }
        EXPECT_EQ(count, kThreads) << report;
    }
}

TEST_F(ContextManager, ReportsTheDriverOfTheCurrentContextIfThereIsOne) {
    const EglHost host;
    host.makeCurrent();
    testing::internal::CaptureStdout();
    AEOpenGLContext::InitializeOpenGLBindings();
    const std::string report = testing::internal::GetCapturedStdout();
    const std::string vendor = reinterpret_cast<const char*>(glGetString(GL_VENDOR));
    const std::string renderer = reinterpret_cast<const char*>(glGetString(GL_RENDERER));
    EXPECT_EQ(report.find("\nOpenGL Version:  "), 0U);
    EXPECT_NE(report.find("\nOpenGL Vendor:   " + vendor + "\nOpenGL Renderer: " + renderer +
                          "\nOpenGL Revision: "),
              std::string::npos);
    EXPECT_EQ(std::ranges::count(report, '\n'), 6);

    Platform::ReleaseCurrentEglContext();
    testing::internal::CaptureStdout();
    AEOpenGLContext::InitializeOpenGLBindings();
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

TEST_F(ContextManager, RefusesAContextThatIsCurrentOnAnotherThread) {
    AEOpenGLContext context(nullptr);
    std::jthread([&context] {
        context.makeContextCurrent();
        EXPECT_FALSE(context.isCurrent());
        EXPECT_EQ(glGetString(GL_VERSION), nullptr);
    }).join();
    EXPECT_TRUE(context.isCurrent());
}

TEST_F(ContextManager, FlushesThePreviousContextUnlessItsFrameBufferIsIncomplete) {
    Platform::OpenGLContext* left = nullptr;
    Platform::OpenGLContext* entered = nullptr;
    const auto leftOwner = AEOpenGLContext::createNSContext(nullptr, left);
    const auto enteredOwner = AEOpenGLContext::createNSContext(nullptr, entered);
    left->makeCurrent();
    const GLFramebuffer incomplete = GLFramebuffer::generated();
    struct {
        unsigned int frameBuffer;
        int flushes;
    } const kCases[] = {{0, 1}, {incomplete.name(), 0}};
    for (const auto& [frameBuffer, flushes] : kCases) {
        left->makeCurrent();
        glBindFramebuffer(GL_FRAMEBUFFER, frameBuffer);
        const GLCalls calls;
        AEOpenGLContext::makeCurrentFlush(left);
        EXPECT_EQ(calls.names(), std::vector<std::string>{}) << "it is current already";
        AEOpenGLContext::makeCurrentFlush(entered);
        EXPECT_EQ(calls.count("glFlush"), flushes);
        EXPECT_TRUE(entered->isCurrent());
    }
    left->makeCurrent();
}

class SavedContext : public ContextManager {};

TEST_F(SavedContext, IsRestoredFullyAndOnlyOnce) {
    AEOpenGLContext* const own = AEOpenGLContextManager::getCurrentRenderContext();
    const EglHost host;
    host.makeCurrent();
    {
        SaveRestoreGLContextMac saved;
        own->makeContextCurrent();
        EXPECT_NE(Platform::CurrentEglBinding(), host.binding());
        EXPECT_FALSE(saved.mRestored());
        saved.restore();
        EXPECT_TRUE(saved.mRestored());
        EXPECT_EQ(Platform::CurrentEglBinding(), host.binding());
        own->makeContextCurrent();
    }
    EXPECT_NE(Platform::CurrentEglBinding(), host.binding());
    try {
        host.makeCurrent();
        const SaveRestoreGLContextMac saved;
        own->makeContextCurrent();
        throw 13;
    } catch (int) {
    }
    EXPECT_EQ(Platform::CurrentEglBinding(), host.binding()) << "when an exception passes";
}

TEST_F(SavedContext, IsEmptyIfTheEffectsContextIsCurrent) {
    AEOpenGLContextManager::getCurrentRenderContext()->makeContextCurrent();
    EXPECT_EQ(SaveRestoreGLContextMac().mContext(), Platform::EglBinding());
    AEOpenGLContextManager::releaseContextManager();
    EXPECT_EQ(SaveRestoreGLContextMac().mContext(), Platform::EglBinding()) << "destroyed";
    AEOpenGLContextManager::setupContextManager();
}

TEST_F(SavedContext, KeepsTheCurrentContextIfNoneWasSaved) {
    Platform::ReleaseCurrentEglContext();
    SaveRestoreGLContextMac saved;
    AEOpenGLContextManager::getCurrentRenderContext()->makeContextCurrent();
    const Platform::EglBinding own = Platform::CurrentEglBinding();
    saved.restore();
    EXPECT_TRUE(saved.mRestored());
    EXPECT_EQ(Platform::CurrentEglBinding(), own);
}

} // namespace

} // namespace Kerovane::Tesselune
