#pragma once

#include <cstdint>

namespace Kerovane::TestSupport {

/// EGL's calls that can be made to fail.
enum class EglCall { CreateContext, MakeCurrent, Count };

/**
 * The EGL contexts of the whole program. Where this is linked in, EGL's context calls are replaced
 * by ones that count and fail on demand; for modules that are loaded too if the program exports its
 * symbols. Safe to use from several threads at once.
 */
namespace EglContexts {

/// Contexts made and not destroyed.
int live();

/// A number, never used twice, of this thread's current context; 0 where there is none.
std::uint64_t currentNumber();

bool isLive(std::uint64_t number);

/// Fails `times` calls of that kind in a row, from the `nth` on, the next being 1; 0 for none. To
/// let a context go is no call of a kind.
void fail(EglCall call, int nth, int times = 1);

} // namespace EglContexts

} // namespace Kerovane::TestSupport
