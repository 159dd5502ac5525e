/* The host's basic suite: acquires and releases every other suite by name and version. */
#ifndef SPBASIC_H
#define SPBASIC_H

#include "A.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef A_long SPErr;

enum { kSPNoError = 0 };

typedef struct SPBasicSuite {
    /* Writes the suite's function table to `suite` and adds a reference. */
    SPErr (*AcquireSuite)(const A_char* name, A_long version, const void** suite);
    /* Drops a reference. */
    SPErr (*ReleaseSuite)(const A_char* name, A_long version);
} SPBasicSuite;

#ifdef __cplusplus
}
#endif

#endif
