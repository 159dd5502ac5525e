#include "Benchmarks/EffectFrame.h"

#include <stdexcept>
#include <string_view>
#include <utility>

namespace Kerovane::Benchmarks {

Host::ParameterValues ValuesOf(const Cells& cells, const std::vector<Host::Parameter>& parameters) {
    Host::ParameterValues values;
    for (const auto& [name, value] :
         {std::pair<std::string_view, double>{"Shape Type", cells.shapeType + 1},
          {"Size", cells.size},
          {"Size Level", cells.levels},
          {"Size Random", cells.sizeRandom}}) {
        const Host::Parameter* parameter = Host::FindParameter(parameters, name);
        if (parameter == nullptr) {
            throw std::invalid_argument("the effect has no parameter " + std::string(name));
        }
        values.set(parameter->id(), value);
    }
    return values;
}

} // namespace Kerovane::Benchmarks
