#pragma once

#include <cstdint>

namespace Kerovane::TestSupport {

/// EGL calls that can be made to fail.
enum class EglCall { CreateContext, MakeCurrent, Count };

/**
 * The EGL contexts of the whole program. Linking this in replaces EGL's context functions by ones
 * that count and fail on demand, also for loaded modules if the program exports its symbols.
 * Thread-safe.
 */
namespace EglContexts {

/// Returns the number of existing contexts.
int live();

/// Returns a number, never reused, for this thread's current context; 0 if there is none.
std::uint64_t currentNumber();

bool isLive(std::uint64_t number);

/// Makes `times` consecutive calls of that kind fail, starting with the `nth` from now on (1: the
/// next, 0: none). Releasing a context does not count as a call.
void fail(EglCall call, int nth, int times = 1);

} // namespace EglContexts

} // namespace Kerovane::TestSupport
