#include "Host/Panel/PageFiles.h"

#include "Host/Panel/Page.h"

#include <algorithm>
#include <array>

namespace Kerovane::Host {

namespace {

constexpr std::string_view kHtml = "text/html; charset=utf-8";
constexpr std::string_view kCss = "text/css; charset=utf-8";
constexpr std::string_view kScript = "text/javascript; charset=utf-8";
constexpr std::string_view kSvg = "image/svg+xml";

constexpr std::array<PageFile, 14> kFiles{{
    {"", kHtml, Page::kIndex},
    {"page/Style.css", kCss, Page::kStyle},
    {"page/Icon.svg", kSvg, Page::kIcon},
    {"page/Main.js", kScript, Page::kMain},
    {"page/Api.js", kScript, Page::kApi},
    {"page/Compare.js", kScript, Page::kCompare},
    {"page/Controls.js", kScript, Page::kControls},
    {"page/Dom.js", kScript, Page::kDom},
    {"page/Output.js", kScript, Page::kOutput},
    {"page/Presets.js", kScript, Page::kPresets},
    {"page/Store.js", kScript, Page::kStore},
    {"page/Timeline.js", kScript, Page::kTimeline},
    {"page/Viewer.js", kScript, Page::kViewer},
    {"page/Pictures.js", kScript, Page::kPictures},
}};

} // namespace

const PageFile* FindPageFile(std::string_view path) {
    const auto* const found = std::ranges::find(kFiles, path, &PageFile::path);
    return found != kFiles.end() ? found : nullptr;
}

} // namespace Kerovane::Host
