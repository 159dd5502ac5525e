#include "Host/Panel/Order.h"

#include <algorithm>
#include <cmath>

namespace Kerovane::Host {

namespace {

void Change(const Order& order, LookEditor& editor) {
    const auto what = Entry<std::string>(order, "do");
    const auto frame = EntryOr<double>(order, "frame", 0);
    const auto value = EntryOr<std::string>(order, "value", "");
    if (!std::isfinite(frame)) {
        throw Error("has no such frame");
    }
    if (what == "set") {
        editor.setValue(frame, value);
    } else if (what == "set-text") {
        editor.setText(value);
    } else if (what == "reset") {
        editor.reset();
    } else if (what == "put-key") {
        editor.putKey(frame, value, EntryOr<std::string>(order, "way", ""));
    } else if (what == "remove-key") {
        editor.removeKey(Entry<std::size_t>(order, "index"));
    } else if (what == "move-key") {
        editor.moveKey(Entry<std::size_t>(order, "index"), frame);
    } else if (what == "remove-keys") {
        editor.removeKeys(frame);
    } else {
        throw Error("does not know this change");
    }
}

} // namespace

Order ParseOrder(std::string_view text) {
    const auto checkDepth = [](int depth, Order::parse_event_t, const Order&) {
        constexpr int kDeepest = 8;
        if (depth > kDeepest) {
            throw Error("is nested too deep");
        }
        return true;
    };
    Order order = Order::parse(text, checkDepth, false);
    if (!order.is_object()) {
        throw Error("is no JSON object");
    }
    return order;
}

std::size_t IndexOfOption(const std::vector<std::string>& options, std::string_view option) {
    const auto found = std::ranges::find(options, option);
    if (option.empty() || found == options.end()) {
        throw Error(fmt::format("there is no parameter '{}'", option));
    }
    return static_cast<std::size_t>(found - options.begin());
}

void ChangeParameter(const Order& order, const std::vector<Parameter>& parameters,
                     const std::vector<std::string>& options, const PlaceOfFrame& placeOf,
                     Look& look) {
    const Parameter& parameter =
        parameters[IndexOfOption(options, Entry<std::string>(order, "option"))];
    LookEditor editor(look, parameter, placeOf);
    try {
        Change(order, editor);
    } catch (const Error& error) {
        throw Error(fmt::format("{} {}", parameter.displayName(), error.what()));
    }
}

} // namespace Kerovane::Host
