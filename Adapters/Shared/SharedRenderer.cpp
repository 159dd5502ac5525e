#include "Adapters/Shared/SharedRenderer.h"

#include "Adapters/Shared/InstalledModule.h"

#include <exception>
#include <mutex>
#include <optional>

namespace Kerovane::Adapters {

namespace {

/// Creates a renderer at the first request. If that fails, every request throws the same exception.
class LazyRenderer {
public:
    Host::FrameRenderer& get() {
        std::call_once(mMade, [this] { make(); });
        if (mProblem != nullptr) {
            std::rethrow_exception(mProblem);
        }
        return *mRenderer;
    }

private:
    void make() {
        try {
            mRenderer.emplace(Host::WithFloatModule(InstalledModule()));
        } catch (...) {
            mProblem = std::current_exception();
        }
    }

    std::once_flag mMade;
    std::optional<Host::FrameRenderer> mRenderer;
    std::exception_ptr mProblem;
};

struct Process {
    std::mutex mutex;
    int loads = 0;
    std::shared_ptr<LazyRenderer> renderer;
};

Process& TheProcess() {
    // Never destroyed, because the renderer's thread may outlive exit().
    static Process& process = *new Process;
    return process;
}

} // namespace

void SharedRenderer::countLoad() {
    Process& process = TheProcess();
    const std::lock_guard lock(process.mutex);
    ++process.loads;
}

void SharedRenderer::countUnload() {
    std::shared_ptr<LazyRenderer> last; // destroyed after the lock is released
    Process& process = TheProcess();
    const std::lock_guard lock(process.mutex);
    if (process.loads > 0 && --process.loads == 0) {
        last.swap(process.renderer);
    }
}

std::shared_ptr<Host::FrameRenderer> SharedRenderer::get() {
    Process& process = TheProcess();
    std::unique_lock lock(process.mutex);
    if (process.renderer == nullptr) {
        process.renderer = std::make_shared<LazyRenderer>();
    }
    const std::shared_ptr<LazyRenderer> shared = process.renderer;
    lock.unlock(); // creating the renderer is slow and may have to wait until an old one is gone
    return {shared, &shared->get()};
}

} // namespace Kerovane::Adapters
