#include "Host/Parameters/ParameterMeaning.h"

#include "Host/Parameters/ParameterText.h"

#include <algorithm>
#include <array>

namespace Kerovane::Host {

namespace {

struct Meaning {
    std::string_view name;
    A_long id;
    std::string_view sentence;
    std::string_view unit{}; ///< used if the effect declares no unit
};

constexpr std::array<Meaning, 14> kMeanings{{
    {"Shape Type", 1, "Shape of cells: squares, or triangles pointing up and down in turn"},
    {"Size", 2, "Height of the cells in pixels, of the smallest if sizes are random", "pixels"},
    {"Ratio", 3, "Width of a cell over its height: below 1 narrow, above 1 wide"},
    {"Size Random", 4, "Percentage of the picture that may get larger cells: 0 none, 100 all"},
    {"Size Level", 5, "How often cells may double: up to 2 times Size at 1, to 32 times at 5"},
    {"Size Random Seed", 6, "Random pattern of the larger cells: each number is another pattern"},
    {"Dissolve", 7, "Percentage of the cells that drop out at random: 0 none, 100 all"},
    {"Dissolve Random Seed", 8, "Random order in which cells go: each number is another order"},
    {"Transition Type", 9, "How cells are swept away: on a line, from the corners or the centre"},
    {"Transition Progress", 10,
     "How far the sweep is, in percent: 0 all cells are there, 100 none"},
    {"Feather", 11, "Width of the sweep's ragged edge in pixels: 0 is a clean cut", "pixels"},
    {"Direction", 12, "Where the linear sweep goes, in degrees: 0 right, 90 down, 180 left"},
    {"Use Alpha", 15, "Removed cells leave a transparent hole if on, else the picture shows"},
    {"Renderer", 1000, "What draws: OpenGL, or Software, which is the same on every machine"},
}};

static_assert(std::ranges::all_of(kMeanings, [](const Meaning& meaning) {
    return meaning.sentence.size() <= kLongestMeaning;
}));

const Meaning* Find(const Parameter& parameter) {
    const auto* const found = std::ranges::find_if(kMeanings, [&parameter](const Meaning& meaning) {
        return meaning.id == parameter.id() && meaning.name == parameter.displayName();
    });
    return found != kMeanings.end() ? found : nullptr;
}

} // namespace

std::string_view MeaningOf(const Parameter& parameter) {
    const Meaning* meaning = Find(parameter);
    return meaning != nullptr ? meaning->sentence : "";
}

std::string_view UnitOf(const Parameter& parameter) {
    const std::string_view declared = UnitName(parameter);
    const Meaning* meaning = Find(parameter);
    return declared.empty() && meaning != nullptr ? meaning->unit : declared;
}

} // namespace Kerovane::Host
