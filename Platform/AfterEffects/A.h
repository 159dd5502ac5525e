/*
 * Scalar types of the host's interface, with fixed widths on every platform.
 */
#ifndef A_H
#define A_H

#include <stdint.h>

typedef char A_char;
typedef uint8_t A_u_char;
typedef uint8_t A_Boolean;
typedef int16_t A_short;
typedef uint16_t A_u_short;
typedef int32_t A_long;
typedef uint32_t A_u_long;
typedef uint64_t A_HandleSize;
typedef float A_FpShort;
typedef double A_FpLong;
typedef A_long A_Err;

#endif
