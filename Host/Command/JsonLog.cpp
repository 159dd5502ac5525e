#include "Host/Command/JsonLog.h"

#include "Host/Text/Error.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <cerrno>
#include <string>
#include <string_view>
#include <system_error>

namespace Kerovane::Host {

namespace {

using Json = nlohmann::ordered_json;

std::string_view Name(FrameEnding ending) {
    switch (ending) {
    case FrameEnding::Rendered:
        return "rendered";
    case FrameEnding::Kept:
        return "kept";
    default:
        return "failed";
    }
}

std::string Line(const ShotFrame& frame, const FrameReport& report, Renderer renderer) {
    Json line{{"frame", frame.number},
              {"status", Name(report.ending)},
              {"input", frame.input.string()},
              {"output", frame.output.string()},
              {"renderer", NameOf(renderer)}};
    if (report.ending == FrameEnding::Failed) {
        line["reason"] = report.reason;
    }
    if (report.width > 0) {
        line["width"] = report.width;
        line["height"] = report.height;
    }
    line["seconds"] = {{"read", report.seconds.read},
                       {"render", report.seconds.render},
                       {"write", report.seconds.write}};
    return line.dump(-1, ' ', false, Json::error_handler_t::replace) + '\n';
}

} // namespace

JsonLog::JsonLog(const std::filesystem::path& file, Renderer renderer, StandardStreams& streams)
    : mPath(file), mRenderer(renderer), mStreams(streams) {
    if (file == "-") {
        return;
    }
    mFile.reset(std::fopen(file.c_str(), "we"));
    if (mFile == nullptr) {
        throw Error(fmt::format("cannot write '{}': {}", file.string(),
                                std::generic_category().message(errno)));
    }
}

void JsonLog::add(const ShotFrame& frame, const FrameReport& report) {
    if (!write(Line(frame, report, mRenderer)) && !mFailed) {
        mFailed = true;
        mStreams.complain(fmt::format("cannot write to the log '{}'", mPath.string()));
    }
}

bool JsonLog::write(const std::string& line) {
    if (mFile != nullptr) {
        return std::fputs(line.c_str(), mFile.get()) >= 0 && std::fflush(mFile.get()) == 0;
    }
    try {
        mStreams.print(line);
        return true;
    } catch (const Error&) {
        return false;
    }
}

} // namespace Kerovane::Host
