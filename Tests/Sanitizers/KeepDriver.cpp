// Keeps the driver's library loaded until a test program ends. Otherwise the GL loader unloads it
// before the leak check, which then reports its data for the main thread as leaks.
#include <dlfcn.h>

namespace {

[[maybe_unused]] const void* const kDriver = dlopen("libEGL_mesa.so.0", RTLD_NOW | RTLD_NODELETE);

} // namespace
