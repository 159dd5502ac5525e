#include "Plugins/Shared/GL/AEOpenGLUtilities.h"

#include "AE_EffectCBSuites.h"
#include "Plugins/Shared/GL/GLObject.h"
#include "Plugins/Shared/Helper/HostHandle.h"
#include "Plugins/Shared/Helper/SuiteScoper.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <memory>
#include <span>
#include <vector>

using namespace gl;

namespace Kerovane::Tesselune::AEOpenGLUtilities {

namespace {

/// White is 32768 in the host's 16-bit pixels and 65535 in GL's.
constexpr float kMultiplier16bit = 65535.0F / 32768.0F;

std::byte* FirstPixel8(PF_InData* in_data, PF_LayerDef* world) {
    PF_Pixel8* pixels = nullptr;
    in_data->utils->get_pixel_data8(world, nullptr, &pixels);
    return reinterpret_cast<std::byte*>(pixels);
}

std::byte* FirstPixel16(PF_InData* in_data, PF_LayerDef* world) {
    PF_Pixel16* pixels = nullptr;
    in_data->utils->get_pixel_data16(world, nullptr, &pixels);
    return reinterpret_cast<std::byte*>(pixels);
}

/// How GL reads a pixel of one of the host's formats, and how the first pixel of a layer is
/// reached.
struct PixelLayout {
    unsigned long bytes;
    GLenum type;
    float multiplier16bit;
    std::byte* (*firstPixel)(PF_InData* in_data,
                             PF_LayerDef* world); ///< null: pixels are reached by iteration only
};

PixelLayout LayoutOf(int pixelFormat) {
    switch (pixelFormat) {
    case PF_PixelFormat_ARGB32:
        return {sizeof(PF_Pixel8), GL_UNSIGNED_BYTE, 1.0F, FirstPixel8};
    case PF_PixelFormat_ARGB64:
        return {sizeof(PF_Pixel16), GL_UNSIGNED_SHORT, kMultiplier16bit, FirstPixel16};
    case PF_PixelFormat_ARGB128:
        return {sizeof(PF_PixelFloat), GL_FLOAT, 1.0F, nullptr};
    default:
        throw static_cast<int>(PF_Err_BAD_CALLBACK_PARAM);
    }
}

PF_PixelFloat& BlockPixel(void* refcon, int x, int y) {
    const auto& copy = *static_cast<const FloatCopyRefcon*>(refcon);
    return copy.pixels[static_cast<std::ptrdiff_t>(y) * copy.world->width + x];
}

/// Makes the host call `copyPixel` for each pixel, or for those in `area` if it is not null.
void IterateFloat(PF_InData* in_data, PF_LayerDef* source, const PF_Rect* area,
                  PF_PixelFloat* block, PF_IteratePixelFloatFunc copyPixel,
                  PF_LayerDef* destination) {
    const SuiteScoper<PF_iterateFloatSuite1> suite(in_data, "PF iterateFloat Suite", 1);
    FloatCopyRefcon refcon{block, source};
    const PF_Err err =
        suite->iterate(in_data, 0, source->height, source, area, &refcon, copyPixel, destination);
    if (err != PF_Err_NONE) {
        throw static_cast<int>(err);
    }
}

/// Fills the bound texture from `pixels`; a row is `rowLength` pixels long.
void UploadPixels(const PF_LayerDef* world, int rowLength, GLenum type, const void* pixels) {
    glPixelStorei(GL_UNPACK_ROW_LENGTH, rowLength);
    glTexSubImage2D(GL_TEXTURE_2D, 0, 0, 0, world->width, world->height, GL_RGBA, type, pixels);
    glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
}

std::size_t PixelCount(const PF_LayerDef& world) {
    return static_cast<std::size_t>(world.width) * static_cast<std::size_t>(world.height);
}

/// Uploads directly from the host's memory. Uploads transparent pixels if the host returns none.
void UploadHostPixels(PF_InData* in_data, PF_LayerDef* input, const PixelLayout& layout) {
    if (const std::byte* pixels = layout.firstPixel(in_data, input)) {
        UploadPixels(input, input->rowbytes / static_cast<int>(layout.bytes), layout.type, pixels);
        return;
    }
    const std::vector<std::byte> transparent(PixelCount(*input) * layout.bytes);
    UploadPixels(input, input->width, layout.type, transparent.data());
}

void UploadFloatPixels(PF_InData* in_data, PF_LayerDef* input) {
    const auto pixels = std::make_unique_for_overwrite<PF_PixelFloat[]>(PixelCount(*input));
    IterateFloat(in_data, input, nullptr, pixels.get(), CopyPixelFloatIn, input);
    UploadPixels(input, input->width, GL_FLOAT, pixels.get());
}

/**
 * Reads the bound frame buffer into `block`, `bytes` bytes a pixel. If GL delivers no pixels,
 * clears `block`, so that the host never receives uninitialised memory.
 */
void ReadPicture(GLsizei width, GLsizei height, GLenum type, unsigned long bytes,
                 std::span<std::byte> block) {
    if (block.empty()) {
        return;
    }
    const std::span<std::byte> lastPixel = block.last(bytes);
    const auto isRead = [&](std::byte mark) {
        std::ranges::fill(lastPixel, mark);
        glReadPixels(0, 0, width, height, GL_RGBA, type, block.data());
        return std::ranges::count(lastPixel, mark) != std::ssize(lastPixel);
    };
    // The last pixel still holds the mark if GL wrote nothing. A real pixel can equal one of the
    // marks but not both, so a match is checked with a second mark.
    if (!isRead(std::byte{0xa5}) && !isRead(std::byte{0x5a})) {
        std::ranges::fill(block, std::byte{0});
    }
}

void CopyRowsOut(PF_InData* in_data, const std::byte* block, std::size_t blockRowBytes,
                 PF_LayerDef* output, const PixelLayout& layout, const PF_Point& size) {
    const auto copiedBytes = static_cast<std::size_t>(size.h) * layout.bytes;
    const auto pixelBytes = static_cast<std::ptrdiff_t>(layout.bytes);
    for (int y = 0; y < size.v; ++y) {
        std::byte* firstPixel = layout.firstPixel(in_data, output);
        if (firstPixel == nullptr) {
            return;
        }
        const std::ptrdiff_t offset = static_cast<std::ptrdiff_t>(y) * output->rowbytes;
        std::memcpy(firstPixel + offset / pixelBytes * pixelBytes,
                    block + static_cast<std::size_t>(y) * blockRowBytes, copiedBytes);
    }
}

} // namespace

unsigned int UploadTexture(int pixelFormat, PF_LayerDef* input, PF_LayerDef* /*output*/,
                           PF_InData* in_data, unsigned long& bytes, GLenum& type,
                           float& multiplier16bit, bool mipmap) {
    GLTexture texture = GLTexture::generated();
    glBindTexture(GL_TEXTURE_2D, texture.name());
    const auto setParameter = [](GLenum parameter, GLenum value) {
        glTexParameteri(GL_TEXTURE_2D, parameter, static_cast<GLint>(value));
    };
    setParameter(GL_TEXTURE_MIN_FILTER, mipmap ? GL_LINEAR_MIPMAP_LINEAR : GL_LINEAR);
    setParameter(GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    setParameter(GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    setParameter(GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA32F, input->width, input->height, 0, GL_RGBA, GL_FLOAT,
                 nullptr);

    const PixelLayout layout = LayoutOf(pixelFormat);
    bytes = layout.bytes;
    type = layout.type;
    multiplier16bit = layout.multiplier16bit;
    if (layout.firstPixel != nullptr) {
        UploadHostPixels(in_data, input, layout);
    } else {
        UploadFloatPixels(in_data, input);
    }
    glBindTexture(GL_TEXTURE_2D, 0);
    return texture.release();
}

void DownloadTexture(unsigned int width, unsigned int height, PF_LayerDef* input,
                     PF_LayerDef* output, PF_InData* in_data, int pixelFormat, unsigned long bytes,
                     GLenum type) {
    const SuiteScoper<PF_HandleSuite1> handles(in_data, "PF Handle Suite", 2);
    const A_HandleSize size = static_cast<A_HandleSize>(width * height) * bytes;
    const HostHandle handle(handles, size);
    std::byte* const block = handle.data();
    glReadBuffer(GL_COLOR_ATTACHMENT0);
    ReadPicture(static_cast<GLsizei>(width), static_cast<GLsizei>(height), type, bytes,
                {block, size});

    const PixelLayout layout = LayoutOf(pixelFormat);
    const PF_Point common = {std::min(input->width, output->width),
                             std::min(input->height, output->height)};
    if (layout.firstPixel != nullptr) {
        CopyRowsOut(in_data, block, width * bytes, output, layout, common);
        return;
    }
    const bool isWhole = common.h == input->width && common.v == input->height;
    const PF_Rect area = {0, 0, common.h, common.v};
    IterateFloat(in_data, input, isWhole ? nullptr : &area, reinterpret_cast<PF_PixelFloat*>(block),
                 CopyPixelFloatOut, output);
}

PF_Err CopyPixelFloatIn(void* refcon, int x, int y, PF_PixelFloat* in, PF_PixelFloat* /*out*/) {
    BlockPixel(refcon, x, y) = *in;
    return PF_Err_NONE;
}

PF_Err CopyPixelFloatOut(void* refcon, int x, int y, PF_PixelFloat* /*in*/, PF_PixelFloat* out) {
    *out = BlockPixel(refcon, x, y);
    return PF_Err_NONE;
}

std::string CheckFramebufferStatus() {
    switch (glCheckFramebufferStatus(GL_FRAMEBUFFER)) {
    case GL_FRAMEBUFFER_COMPLETE:
        return "OK";
    case GL_FRAMEBUFFER_INCOMPLETE_ATTACHMENT:
        return "Framebuffer incomplete, incomplete attachment!";
    case GL_FRAMEBUFFER_INCOMPLETE_MISSING_ATTACHMENT:
        return "Framebuffer incomplete, missing attachment!";
    case GL_FRAMEBUFFER_INCOMPLETE_DRAW_BUFFER:
        return "Framebuffer incomplete, missing draw buffer!";
    case GL_FRAMEBUFFER_INCOMPLETE_READ_BUFFER:
        return "Framebuffer incomplete, missing read buffer!";
    case GL_FRAMEBUFFER_UNSUPPORTED:
        return "Unsupported framebuffer format!";
    default:
        return "Unknown error!";
    }
}

} // namespace Kerovane::Tesselune::AEOpenGLUtilities
