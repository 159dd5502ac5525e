#include "Common.h"

#include <cstdarg>
#include <cstdio>
#include <cstring>

namespace {

constexpr std::size_t kTextLimit = 1024;

} // namespace

void KVPrint(const char* format, ...) {
    static char kText[kTextLimit + 1]; // and the newline
    std::va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(kText, kTextLimit, format, arguments);
    va_end(arguments);
    std::strcat(kText, "\n");
    std::fputs(kText, stderr);
}
