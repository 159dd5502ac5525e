#pragma once

#include "Host/Panel/Look.h"
#include "Host/Text/Error.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Kerovane::Host {

/// A page's request to change something, as a JSON object.
using Order = nlohmann::ordered_json;

/// Parses an order. Throws Error if `text` is not a JSON object or is nested too deeply.
Order ParseOrder(std::string_view text);

/// Returns whether `json` has the type `Value` and, if that is an integer type, fits into it.
template <typename Value>
bool Holds(const Order& json) {
    if constexpr (std::integral<Value> && !std::same_as<Value, bool>) {
        return json.is_number_unsigned()
                   ? std::in_range<Value>(json.get<std::uint64_t>())
                   : json.is_number_integer() && std::in_range<Value>(json.get<std::int64_t>());
    } else if constexpr (std::floating_point<Value>) {
        return json.is_number();
    } else {
        return std::same_as<Value, bool> ? json.is_boolean() : json.is_string();
    }
}

/// Returns the entry `name`. Throws Error if the entry is missing or has another type.
template <typename Value>
Value Entry(const Order& order, const char* name) {
    const auto found = order.find(name);
    if (found == order.end()) {
        throw Error(fmt::format("lacks \"{}\"", name));
    }
    if (!Holds<Value>(*found)) {
        throw Error(fmt::format("has a wrong \"{}\"", name));
    }
    return found->get<Value>();
}

/// Returns the entry `name`, or `otherwise` if the entry is missing. Throws Error if it has another
/// type.
template <typename Value>
Value EntryOr(const Order& order, const char* name, Value otherwise) {
    return order.contains(name) ? Entry<Value>(order, name) : otherwise;
}

/// Returns the index of the parameter whose option is `option`. Throws Error if there is none.
std::size_t IndexOfOption(const std::vector<std::string>& options, std::string_view option);

/// Changes the parameter whose option is named in the order. Throws Error, which names the
/// parameter, if the change is not possible; the look may then be partly changed.
void ChangeParameter(const Order& order, const std::vector<Parameter>& parameters,
                     const std::vector<std::string>& options, const PlaceOfFrame& placeOf,
                     Look& look);

} // namespace Kerovane::Host
