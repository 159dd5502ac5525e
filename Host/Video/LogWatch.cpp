#include "Host/Video/LogWatch.h"

#include "Host/Video/LibAv.h"

#include <atomic>
#include <cstdarg>

namespace Kerovane::Host {

namespace {

std::atomic<std::size_t> sErrors = 0;

bool ComesFromReading(void* object) {
    if (object == nullptr) {
        return false;
    }
    const AVClass* kind = *static_cast<AVClass**>(object);
    if (kind == nullptr) {
        return false;
    }
    const AVClassCategory category =
        kind->get_category != nullptr ? kind->get_category(object) : kind->category;
    return category == AV_CLASS_CATEGORY_DECODER || category == AV_CLASS_CATEGORY_DEMUXER;
}

void Count(void* object, int level, const char* format, va_list arguments) {
    if (level <= AV_LOG_ERROR && ComesFromReading(object)) {
        ++sErrors;
    }
    av_log_default_callback(object, level, format, arguments);
}

} // namespace

void LogWatch::begin() {
    av_log_set_callback(Count);
}

std::size_t LogWatch::errors() {
    return sErrors;
}

} // namespace Kerovane::Host
