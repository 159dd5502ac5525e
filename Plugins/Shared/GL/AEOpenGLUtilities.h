#pragma once

#include "AE_Effect.h"

#include <glbinding/gl/enum.h>
#include <glbinding/gl/types.h>

#include <string>

namespace Kerovane::Tesselune {

/**
 * Argument of CopyPixelFloatIn and CopyPixelFloatOut: a block of pixels, `world->width` pixels a
 * row, rows without padding.
 */
struct FloatCopyRefcon {
    PF_PixelFloat* pixels;
    PF_LayerDef* world;
};

/**
 * Transfers of a frame between the host's memory and GL. Channels keep the host's order: a texel's
 * red holds alpha, its green red, its blue green, its alpha blue.
 *
 * Errors are thrown as int: PF_Err_BAD_CALLBACK_PARAM for an unknown pixel format,
 * PF_Err_OUT_OF_MEMORY if the host's handle cannot be allocated or locked, kSuiteRefused, or the
 * error that an iteration returned. The texture and the handle are released first.
 */
namespace AEOpenGLUtilities {

/**
 * Creates a GL_RGBA32F texture from `input` and returns its name; the caller deletes it. Sets
 * `bytes` and `type` to the size and GL type of a host pixel, and `multiplier16bit` to the factor
 * that scales a texel so that white is 1: 65535/32768 at 16 bits, else 1. `mipmap` selects a mipmap
 * filter; no levels are generated. Leaves no texture bound.
 */
unsigned int UploadTexture(int pixelFormat, PF_LayerDef* input, PF_LayerDef* output,
                           PF_InData* in_data, unsigned long& bytes, gl::GLenum& type,
                           float& multiplier16bit, bool mipmap);

/**
 * Writes the bound frame buffer, `width` by `height` pixels, into `output`. Writes transparent
 * pixels if GL delivers none. Only the area that `input` and `output` have in common is written,
 * never row padding. `bytes` and `type` are the values that UploadTexture set.
 */
void DownloadTexture(unsigned int width, unsigned int height, PF_LayerDef* input,
                     PF_LayerDef* output, PF_InData* in_data, int pixelFormat, unsigned long bytes,
                     gl::GLenum type);

/// Callbacks for the host's iteration; `refcon` is a FloatCopyRefcon. Always return 0.
PF_Err CopyPixelFloatIn(void* refcon, int x, int y, PF_PixelFloat* in, PF_PixelFloat* out);
PF_Err CopyPixelFloatOut(void* refcon, int x, int y, PF_PixelFloat* in, PF_PixelFloat* out);

/// Describes the state of the bound frame buffer; "OK" if it is complete.
std::string CheckFramebufferStatus();

} // namespace AEOpenGLUtilities

} // namespace Kerovane::Tesselune
