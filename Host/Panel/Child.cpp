#include "Host/Panel/Child.h"

#include "Host/Text/Error.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <system_error>

namespace Kerovane::Host {

namespace {

/** The descriptors of a child process. */
class FileActions {
public:
    FileActions() { posix_spawn_file_actions_init(&mActions); }
    ~FileActions() { posix_spawn_file_actions_destroy(&mActions); }
    FileActions(const FileActions&) = delete;
    FileActions& operator=(const FileActions&) = delete;

    /// Makes `from` the child's descriptor `to`; -1 stands for /dev/null.
    void give(int from, int to) {
        from >= 0 ? posix_spawn_file_actions_adddup2(&mActions, from, to)
                  : posix_spawn_file_actions_addopen(&mActions, to, "/dev/null", O_RDWR, 0);
    }

    void closeFrom(int first) { posix_spawn_file_actions_addclosefrom_np(&mActions, first); }

    const posix_spawn_file_actions_t* get() const { return &mActions; }

private:
    posix_spawn_file_actions_t mActions{};
};

/**
 * The attributes of a child process. The child gets a process group of its own. So Ctrl-C in the
 * terminal reaches only this process, which decides when its children end.
 */
class SpawnAttributes {
public:
    SpawnAttributes() {
        posix_spawnattr_init(&mAttributes);
        posix_spawnattr_setpgroup(&mAttributes, 0);
        sigset_t ignoredHere;
        sigemptyset(&ignoredHere);
        sigaddset(&ignoredHere, SIGPIPE);
        posix_spawnattr_setsigdefault(&mAttributes, &ignoredHere);
        posix_spawnattr_setflags(&mAttributes, POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGDEF);
    }
    ~SpawnAttributes() { posix_spawnattr_destroy(&mAttributes); }
    SpawnAttributes(const SpawnAttributes&) = delete;
    SpawnAttributes& operator=(const SpawnAttributes&) = delete;

    const posix_spawnattr_t* get() const { return &mAttributes; }

private:
    posix_spawnattr_t mAttributes{};
};

} // namespace

Child::Child(const ChildSetting& setting) {
    constexpr int kPicture = 3;
    FileActions actions;
    actions.give(-1, STDIN_FILENO);
    actions.give(setting.output, STDOUT_FILENO);
    actions.give(setting.error, STDERR_FILENO);
    if (setting.picture >= 0) {
        actions.give(setting.picture, kPicture);
    }
    actions.closeFrom(setting.picture >= 0 ? kPicture + 1 : kPicture);
    std::vector<std::string> words = setting.words;
    words.insert(words.begin(), setting.program);
    std::vector<char*> pointers;
    for (std::string& word : words) {
        pointers.push_back(word.data());
    }
    pointers.push_back(nullptr);
    const SpawnAttributes attributes;
    const int problem = posix_spawnp(&mId, setting.program.c_str(), actions.get(), attributes.get(),
                                     pointers.data(), environ);
    if (problem != 0) {
        mId = -1;
        throw Error(fmt::format("cannot start '{}': {}", setting.program,
                                std::generic_category().message(problem)));
    }
}

Child::~Child() {
    if (mId > 0) {
        interrupt();
        wait();
    }
}

void Child::interrupt() const {
    if (mId > 0) {
        kill(mId, SIGINT);
    }
}

int Child::wait() {
    int status = 0;
    while (waitpid(mId, &status, 0) < 0 && errno == EINTR) {
    }
    mId = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

} // namespace Kerovane::Host
