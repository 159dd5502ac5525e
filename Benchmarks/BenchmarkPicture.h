#pragma once

#include "Host/Session/World.h"

namespace Kerovane::Benchmarks {

/// An opaque picture to measure with: slow colours and fine grain, the same at every call.
Host::World BenchmarkPicture(Host::Depth depth, A_long width, A_long height);

} // namespace Kerovane::Benchmarks
