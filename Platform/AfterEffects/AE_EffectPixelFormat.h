/* Pixel formats of the host's worlds. Each code is four characters, readable as text in memory. */
#ifndef AE_EFFECT_PIXEL_FORMAT_H
#define AE_EFFECT_PIXEL_FORMAT_H

#include "A.h"

#include <assert.h>

typedef A_long PF_PixelFormat;

#define PF_PIXEL_FORMAT_CODE(a, b, c, d)                                                           \
    ((PF_PixelFormat)((A_u_long)(a) | (A_u_long)(b) << 8 | (A_u_long)(c) << 16 |                   \
                      (A_u_long)(d) << 24))

/* All three hold alpha, red, green, blue in memory, with straight alpha. */
#define PF_PixelFormat_ARGB32 PF_PIXEL_FORMAT_CODE('a', 'r', 'g', 'b')  /* 8 bits, 0 to 255 */
#define PF_PixelFormat_ARGB64 PF_PIXEL_FORMAT_CODE('a', 'e', '1', '6')  /* 16 bits, 0 to 32768 */
#define PF_PixelFormat_ARGB128 PF_PIXEL_FORMAT_CODE('a', 'e', '3', '2') /* 32-bit float */

static_assert(PF_PixelFormat_ARGB32 == 0x62677261, "\"argb\" in memory");
static_assert(PF_PixelFormat_ARGB64 == 0x36316561, "\"ae16\" in memory");
static_assert(PF_PixelFormat_ARGB128 == 0x32336561, "\"ae32\" in memory");

#endif
