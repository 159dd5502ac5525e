#pragma once

// frei0r's header is plain C and sets no symbol visibility.
extern "C" {
#pragma GCC visibility push(default)
#include <frei0r.h>
#pragma GCC visibility pop
}
