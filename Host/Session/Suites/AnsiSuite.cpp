#include "Host/Session/Suites/Suites.h"

#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <limits>

namespace Kerovane::Host {

namespace {

// NOLINTNEXTLINE(cert-dcl50-cpp): the interface requires a variadic function
A_long Sprintf(A_char* text, const A_char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    // The interface passes no buffer size; the caller provides enough room.
    const int length = std::vsnprintf(text, std::numeric_limits<int>::max(), format, arguments);
    va_end(arguments);
    return length;
}

A_char* Strcpy(A_char* destination, const A_char* source) {
    std::memcpy(destination, source, std::strlen(source) + 1);
    return destination;
}

} // namespace

const PF_ANSICallbacksSuite1 kAnsiSuite{.sprintf = Sprintf, .strcpy = Strcpy};

} // namespace Kerovane::Host
