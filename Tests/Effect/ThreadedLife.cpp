#include "Tests/Effect/ThreadedLife.h"

#include "Tests/Support/EglContexts.h"
#include "Tests/Support/EglHost.h"
#include "Tests/Support/LiveGLObjects.h"

#include <memory>
#include <semaphore>
#include <thread>
#include <utility>
#include <vector>

namespace Kerovane::TestSupport {

namespace {

/** A thread of the host that runs one task at a time while the caller waits. */
class HostThread {
public:
    explicit HostThread(const EnterHost& enter)
        : mThread([this, enter] {
              const HostPresence isCurrent = enter();
              for (mBegin.acquire(); mTask != nullptr; mBegin.acquire()) {
                  mTask();
                  EXPECT_TRUE(isCurrent()) << "the host's context is not current again";
                  mEnd.release();
              }
          }) {}

    ~HostThread() {
        mTask = nullptr;
        mBegin.release();
    }

    HostThread(const HostThread&) = delete;
    HostThread& operator=(const HostThread&) = delete;

    void run(std::function<void()> task) {
        mTask = std::move(task);
        mBegin.release();
        mEnd.acquire();
    }

private:
    std::function<void()> mTask;
    std::binary_semaphore mBegin{0};
    std::binary_semaphore mEnd{0};
    std::jthread mThread;
};

} // namespace

HostPresence EnterHostWithoutContext() {
    return [] { return true; };
}

HostPresence EnterEglHost() {
    auto host = std::make_shared<EglHost>();
    host->makeCurrent();
    return [host] { return Platform::CurrentEglBinding() == host->binding(); };
}

void ThreadedLife::expectSamePictures(const EnterHost& enter) {
    const Host::World inputs[] = {SmoothPicture(33, 60, true), SmoothPicture(80, 60, false),
                                  SmoothPicture(33, 70, true)};
    const Host::World expected[] = {rendered(inputs[0]), rendered(inputs[1]), rendered(inputs[2])};
    globalSetdown();
    const int contextsBefore = EglContexts::live();
    const LiveGLObjects live;
    {
        constexpr std::size_t kThreads = 8;
        std::vector<std::unique_ptr<HostThread>> threads(kThreads);
        HostThread first(enter);
        HostThread last(enter);
        for (int life = 0; life < 2; ++life) {
            first.run([this] { globalSetup(); });
            for (std::size_t turn = 0; turn < 3 * kThreads; ++turn) {
                auto& thread = threads[turn % kThreads];
                if (thread == nullptr || turn % 3 == 0) {
                    thread = std::make_unique<HostThread>(enter);
                }
                thread->run([&, this] {
                    for (const std::size_t picture : {turn % 3, (turn + 1) % 3}) {
                        EXPECT_TRUE(SamePixels(rendered(inputs[picture]), expected[picture]))
                            << "turn " << turn << " of life " << life;
                    }
                });
            }
            EXPECT_GT(live.counts()["Framebuffers"], 0);
            // In a host without a context, the context of the set-up is still current on that
            // thread.
            last.run([this] { globalSetdown(); });
            EXPECT_EQ(live.counts(), (std::map<std::string, int>{}));
        }
    }
    EXPECT_EQ(EglContexts::live(), contextsBefore);
    globalSetup();
}

} // namespace Kerovane::TestSupport
