#include "Plugins/Tesselune/Sources/Common.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>

namespace {

constexpr int kTextLimit = 1024;

} // namespace

// NOLINTBEGIN(cert-dcl50-cpp, clang-analyzer-valist.Uninitialized)
void KVPrint(const char* format, ...) {
    static char kText[kTextLimit + 1]; // one more for the newline
    std::va_list arguments;
    va_start(arguments, format);
    const int length = std::vsnprintf(kText, kTextLimit, format, arguments);
    va_end(arguments);
    char* const end = kText + std::clamp(length, 0, kTextLimit - 1);
    end[0] = '\n';
    end[1] = '\0';
    static_cast<void>(std::fputs(kText, stderr));
}
// NOLINTEND(cert-dcl50-cpp, clang-analyzer-valist.Uninitialized)
