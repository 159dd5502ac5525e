#pragma once

#include "Host/Session/World.h"

namespace Kerovane::Benchmarks {

/// Returns an opaque picture with smooth gradients and fine grain, the same at every call.
Host::World BenchmarkPicture(Host::Depth depth, A_long width, A_long height);

} // namespace Kerovane::Benchmarks
