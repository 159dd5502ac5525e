#pragma once

#include "AE_Effect.h"

#include <glbinding/gl/enum.h>
#include <glbinding/gl/types.h>

#include <string>

namespace Kerovane::Tesselune {

/**
 * The record that the host's iteration hands to CopyPixelFloatIn and CopyPixelFloatOut: a block of
 * pixels, row after row without padding, `world->width` pixels a row.
 */
struct FloatCopyRefcon {
    PF_PixelFloat* pixels;
    PF_LayerDef* world;
};

/**
 * The passage of a frame between the host's memory and GL. The bytes go over as they are, in the
 * host's order: a texel's red holds alpha, its green red, its blue green, its alpha blue.
 *
 * Failures are thrown as an int: PF_Err_BAD_CALLBACK_PARAM for a pixel format that is none of the
 * three, PF_Err_OUT_OF_MEMORY if the host gives no handle or can't lock it, kSuiteRefused, or what
 * an iteration returned. Neither a texture nor a handle is left behind then.
 */
namespace AEOpenGLUtilities {

/**
 * Creates a GL_RGBA32F texture from `input` and returns its name; the caller deletes it. `bytes`
 * and `type` become a pixel's size and GL type. `multiplier16bit` becomes what brings a texel to
 * the scale where white is 1: 65535/32768 at 16 bits, else 1. No texture stays bound.
 */
unsigned int UploadTexture(int pixelFormat, PF_LayerDef* input, PF_LayerDef* output,
                           PF_InData* in_data, unsigned long& bytes, gl::GLenum& type,
                           float& multiplier16bit, bool mipmap);

/**
 * Writes the picture in the bound frame buffer, `width` by `height` pixels, into `output`. If GL
 * delivers no picture, it counts as transparent. Of an `output` of another size, the part that both
 * have is written; padding is never touched. `bytes` and `type` are those that UploadTexture gave.
 */
void DownloadTexture(unsigned int width, unsigned int height, PF_LayerDef* input,
                     PF_LayerDef* output, PF_InData* in_data, int pixelFormat, unsigned long bytes,
                     gl::GLenum type);

/// The pixel functions of the host's iteration, with a FloatCopyRefcon; always 0.
PF_Err CopyPixelFloatIn(void* refcon, int x, int y, PF_PixelFloat* in, PF_PixelFloat* out);
PF_Err CopyPixelFloatOut(void* refcon, int x, int y, PF_PixelFloat* in, PF_PixelFloat* out);

/// The state of the bound frame buffer in words, "OK" if it is complete.
std::string CheckFramebufferStatus();

} // namespace AEOpenGLUtilities

} // namespace Kerovane::Tesselune
