/*
 * The host's basic suite: from it an effect acquires every other suite by name and version, and
 * hands it back the same way.
 */
#ifndef SPBASIC_H
#define SPBASIC_H

#include "A.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef A_long SPErr;

enum { kSPNoError = 0 };

typedef struct SPBasicSuite {
    /* Writes the suite's table through `suite` and counts one reference. */
    SPErr (*AcquireSuite)(const A_char* name, A_long version, const void** suite);
    /* Gives one reference back. */
    SPErr (*ReleaseSuite)(const A_char* name, A_long version);
} SPBasicSuite;

#ifdef __cplusplus
}
#endif

#endif
