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

/// What a page tells the server to do: a JSON object.
using Order = nlohmann::ordered_json;

/// Throws Error if `text` is no JSON object, or nested deeper than any order is.
Order ParseOrder(std::string_view text);

/// Whether `json` is of that kind, and a whole number within its range.
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

/// An entry of an order. Throws Error if it isn't there, or of another kind.
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

/// The same for one that may be left out.
template <typename Value>
Value EntryOr(const Order& order, const char* name, Value otherwise) {
    return order.contains(name) ? Entry<Value>(order, name) : otherwise;
}

/// The index of the parameter with that option. Throws Error if there is none.
std::size_t IndexOfOption(const std::vector<std::string>& options, std::string_view option);

/// Changes the one parameter of `look` that the order names by its option. Throws Error, which
/// names the parameter, if that can't be done; the look may be half changed then.
void ChangeParameter(const Order& order, const std::vector<Parameter>& parameters,
                     const std::vector<std::string>& options, const PlaceOfFrame& placeOf,
                     Look& look);

} // namespace Kerovane::Host
