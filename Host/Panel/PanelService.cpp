#include "Host/Panel/PanelService.h"

#include "Host/Panel/Order.h"
#include "Host/Panel/PageFiles.h"
#include "Host/Panel/PictureCoding.h"
#include "Host/Text/Error.h"
#include "Host/Text/NumberText.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <map>
#include <string_view>

namespace Kerovane::Host {

namespace {

using Json = PanelSession::Json;

constexpr std::size_t kMostOrder = 8U << 20U;     ///< in bytes; an order may contain a preset file
constexpr std::size_t kMostPicture = 256U << 20U; ///< in bytes

/** A request, and the session and schema that answer it. */
struct Call {
    PanelSession& session;
    const std::string& schema;
    const PanelTarget& target;
    const std::string& body;

    std::string text(std::string_view name, const std::string& otherwise = "") const {
        const auto found = target.query.find(name);
        return found != target.query.end() ? found->second : otherwise;
    }

    A_long whole(std::string_view name, std::optional<A_long> otherwise = std::nullopt) const {
        const auto found = target.query.find(name);
        const std::optional<A_long> value =
            found != target.query.end() ? ParseWhole(found->second) : otherwise;
        if (!value) {
            throw Error(fmt::format("needs a whole number '{}'", name));
        }
        return *value;
    }

    double number(std::string_view name) const {
        const std::optional<double> value = ParseNumber(text(name));
        if (!value) {
            throw Error(fmt::format("needs a number '{}'", name));
        }
        return *value;
    }

    LookSide side() const { return text("side") == "other" ? LookSide::Other : LookSide::Current; }
};

HttpReply JsonReply(const Json& json) {
    return {.type = "application/json",
            .body = json.dump(-1, ' ', false, Json::error_handler_t::replace)};
}

HttpReply PictureReply(std::string type, std::string content, double milliseconds,
                       const std::string& renderer) {
    return {.type = std::move(type),
            .body = std::move(content),
            .headers = {{"X-Render-Milliseconds", fmt::format("{:.2f}", milliseconds)},
                        {"X-Renderer", renderer}}};
}

HttpReply State(const Call& call) {
    return JsonReply(call.session.state());
}

HttpReply Schema(const Call& call) {
    return {.type = "application/json", .body = call.schema};
}

HttpReply FrameState(const Call& call) {
    return JsonReply(call.session.frameState(call.whole("frame")));
}

HttpReply Curve(const Call& call) {
    return JsonReply(call.session.curve(call.text("option"), call.number("first"),
                                        call.number("last"),
                                        static_cast<std::size_t>(call.whole("count"))));
}

HttpReply Edit(const Call& call) {
    call.session.edit(ParseOrder(call.body));
    return State(call);
}

PreviewView ViewOf(const Call& call) {
    return {.x = call.whole("x"),
            .y = call.whole("y"),
            .width = call.whole("width"),
            .height = call.whole("height"),
            .shownWidth = call.whole("shownWidth"),
            .shownHeight = call.whole("shownHeight"),
            .ground = ParseGround(call.text("ground", "checker"))};
}

HttpReply Preview(const Call& call) {
    constexpr std::string_view kTried = "set.";
    std::map<std::string, std::string> values;
    for (const auto& [name, value] : call.target.query) {
        if (name.starts_with(kTried)) {
            values.emplace(name.substr(kTried.size()), value);
        }
    }
    const PaintedFrame painted = call.session.paint(call.whole("frame"), call.side(), values);
    return PictureReply("image/jpeg", EncodePreview(painted.world, ViewOf(call)),
                        painted.milliseconds, call.session.rendererName());
}

HttpReply SourcePreview(const Call& call) {
    return {.type = "image/jpeg",
            .body = call.session.sourcePreview(call.whole("frame"), ViewOf(call))};
}

HttpReply Still(const Call& call) {
    double milliseconds = 0;
    std::string content = call.session.still(call.whole("frame"), call.side(), milliseconds);
    HttpReply reply =
        PictureReply("image/png", std::move(content), milliseconds, call.session.rendererName());
    if (call.text("download") == "1") {
        reply.headers.emplace_back("Content-Disposition", "attachment; filename=still.png");
    }
    return reply;
}

HttpReply Source(const Call& call) {
    return {.type = "image/png", .body = call.session.sourceStill(call.whole("frame"))};
}

HttpReply Thumbnail(const Call& call) {
    constexpr A_long kPixels = 240;
    const PaintedFrame painted = call.session.paintPreset(call.whole("frame"), call.text("preset"));
    return {.type = "image/jpeg",
            .body =
                EncodePreview(painted.world, WholeView(painted.world, kPixels, Ground::Checker))};
}

HttpReply PixelCell(const Call& call) {
    return JsonReply(call.session.cell(call.whole("frame"), call.whole("x"), call.whole("y")));
}

HttpReply PresetFile(const Call& call) {
    return {.type = "application/json",
            .body = call.session.presetFile(),
            .headers = {{"Content-Disposition", "attachment; filename=preset.json"}}};
}

HttpReply SavePreset(const Call& call) {
    const Order order = ParseOrder(call.body);
    call.session.savePreset(Entry<std::string>(order, "name"),
                            EntryOr<bool>(order, "replace", false));
    return State(call);
}

HttpReply SaveStill(const Call& call) {
    const Order order = ParseOrder(call.body);
    call.session.saveStill(Entry<std::string>(order, "name"),
                           EntryOr<bool>(order, "replace", false), Entry<A_long>(order, "frame"));
    return State(call);
}

HttpReply Drop(const Call& call) {
    call.session.drop(call.body, call.text("name"));
    return State(call);
}

HttpReply Rendering(const Call& call) {
    return JsonReply(call.session.rendering());
}

HttpReply StartRendering(const Call& call) {
    const Order order = ParseOrder(call.body);
    call.session.startRendering(Entry<std::string>(order, "name"),
                                EntryOr<bool>(order, "replace", false));
    return Rendering(call);
}

HttpReply StopRendering(const Call& call) {
    call.session.stopRendering();
    return Rendering(call);
}

/// A kind of request and the function that answers it.
struct Route {
    std::string_view method;
    std::string_view path;
    HttpReply (*answer)(const Call&);
    std::size_t mostBody = 0;
};

constexpr std::array<Route, 18> kRoutes{{
    {"GET", "schema", Schema},
    {"GET", "state", State},
    {"GET", "frame", FrameState},
    {"GET", "curve", Curve},
    {"GET", "preview", Preview},
    {"GET", "still", Still},
    {"GET", "source", Source},
    {"GET", "source-preview", SourcePreview},
    {"GET", "thumbnail", Thumbnail},
    {"GET", "cell", PixelCell},
    {"GET", "preset", PresetFile},
    {"GET", "rendering", Rendering},
    {"POST", "edit", Edit, kMostOrder},
    {"POST", "save-preset", SavePreset, kMostOrder},
    {"POST", "save-still", SaveStill, kMostOrder},
    {"POST", "drop", Drop, kMostPicture},
    {"POST", "render", StartRendering, kMostOrder},
    {"POST", "stop", StopRendering, kMostOrder},
}};

const Route* FindRoute(std::string_view method, std::string_view path) {
    const auto* const found = std::ranges::find_if(
        kRoutes, [&](const Route& route) { return route.method == method && route.path == path; });
    return found != kRoutes.end() ? found : nullptr;
}

} // namespace

std::optional<std::size_t> PanelService::mostBody(const HttpHead& head) {
    const std::optional<PanelTarget> target = mGate.admit(head);
    if (!target) {
        return std::nullopt;
    }
    const Route* route = FindRoute(head.method, target->path);
    return route != nullptr ? route->mostBody : 0;
}

HttpReply PanelService::answer(const HttpRequest& request) {
    const std::optional<PanelTarget> target = mGate.admit(request.head);
    if (!target) {
        return {.status = 403, .body = "Forbidden"};
    }
    if (const PageFile* file = FindPageFile(target->path);
        file != nullptr && request.head.method == "GET") {
        return {.type = std::string(file->type), .body = std::string(file->content)};
    }
    const Route* route = FindRoute(request.head.method, target->path);
    if (route == nullptr) {
        return {.status = 404, .body = "there is no such thing"};
    }
    try {
        return route->answer({mSession, mSchema, *target, request.body});
    } catch (const Error& error) {
        return {.status = 400, .body = error.what()};
    }
}

} // namespace Kerovane::Host
