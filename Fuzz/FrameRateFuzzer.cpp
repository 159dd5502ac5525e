// Frame rates: "25", "23.976", "24000/1001".
#include "Fuzz/Oracle.h"
#include "Fuzz/TextInput.h"
#include "Host/Parameters/FrameRate.h"

#include <cstdint>
#include <limits>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace Kerovane::Fuzz;
    using namespace Kerovane::Host;
    const auto rate = ReadOrError([&] { return ParseFrameRate(TextOf(data, size)); });
    if (!rate) {
        return 0;
    }
    Expect(rate->timeScale() >= 1 && rate->timeStep() >= 1, "time passes");
    const std::string fraction =
        std::to_string(rate->timeScale()) + '/' + std::to_string(rate->timeStep());
    Expect(ParseFrameRate(fraction) == *rate, "a rate is read back as its fraction");
    using Limits = std::numeric_limits<A_long>;
    for (const A_long frame : {Limits::min(), -1, 0, 1, 1001, Limits::max()}) {
        if (const auto time = ReadOrError([&] { return rate->timeOf(frame); })) {
            Expect(rate->frameAt(*time) == frame, "a frame's time is that of the frame");
        }
    }
    return 0;
}
