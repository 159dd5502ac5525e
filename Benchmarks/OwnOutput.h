#pragma once

#include <iostream>
#include <ostream>

namespace Kerovane::Benchmarks {

/// A program's standard output for itself: while this lives, what others print with std::cout goes
/// nowhere. The effect reports on OpenGL for each context that it makes.
class OwnOutput {
public:
    OwnOutput() : mStream(std::cout.rdbuf(nullptr)) {}
    ~OwnOutput() { std::cout.rdbuf(mStream.rdbuf()); }
    OwnOutput(const OwnOutput&) = delete;
    OwnOutput& operator=(const OwnOutput&) = delete;

    std::ostream& stream() { return mStream; }

private:
    std::ostream mStream;
};

} // namespace Kerovane::Benchmarks
