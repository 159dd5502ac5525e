#include "Benchmarks/BareFrame/BareFrame.h"

#include "Benchmarks/ScreenPassShaders.h"

#include <array>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <span>
#include <utility>

using namespace gl;

namespace Kerovane::Benchmarks {

namespace {

using Tesselune::GLBuffer;
using Tesselune::GLFramebuffer;
using Tesselune::GLRenderbuffer;
using Tesselune::GLTexture;
using Tesselune::GLVertexArray;
using Tesselune::MosaicShaderManager;
using Tesselune::OpenglShader;

/// Six vertices, each x, y, u, v.
constexpr std::array<float, 24> kMosaicVertices = {
    1.0F,  -1.0F, 1.0F, 0.0F, 1.0F,  1.0F,  1.0F, 1.0F, -1.0F, 1.0F,  0.0F, 1.0F,
    -1.0F, 1.0F,  0.0F, 1.0F, -1.0F, -1.0F, 0.0F, 0.0F, 1.0F,  -1.0F, 1.0F, 0.0F,
};

/// Six vertices, each x, y, z, u, v.
constexpr std::array<float, 30> kScreenVertices = {
    1.0F,  -1.0F, 0.0F, 1.0F, 0.0F, 1.0F,  1.0F,  0.0F, 1.0F, 1.0F, -1.0F, 1.0F,  0.0F, 0.0F, 1.0F,
    -1.0F, 1.0F,  0.0F, 0.0F, 1.0F, -1.0F, -1.0F, 0.0F, 0.0F, 0.0F, 1.0F,  -1.0F, 0.0F, 1.0F, 0.0F,
};

/// Frees memory of std::malloc and std::calloc.
struct Free {
    void operator()(void* block) const { std::free(block); }
};
using Block = std::unique_ptr<std::byte, Free>;

Block NewBlock(std::size_t size) {
    return Block(static_cast<std::byte*>(std::malloc(size)));
}

/// Makes `shader` current and returns its program's GL name.
unsigned int ProgramOf(OpenglShader& shader) {
    shader.useProgram();
    GLint program = 0;
    glGetIntegerv(GL_CURRENT_PROGRAM, &program);
    return static_cast<unsigned int>(program);
}

void SetTextureParameters() {
    for (const auto& [parameter, value] :
         {std::pair{GL_TEXTURE_MIN_FILTER, GL_LINEAR}, std::pair{GL_TEXTURE_MAG_FILTER, GL_LINEAR},
          std::pair{GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE},
          std::pair{GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE}}) {
        glTexParameteri(GL_TEXTURE_2D, parameter, static_cast<GLint>(value));
    }
}

void AttachColor(unsigned int renderbuffer) {
    glFramebufferRenderbuffer(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_RENDERBUFFER, renderbuffer);
}

/// Draws six vertices, each with `positionSize` floats of position and two of texture coordinates,
/// with the program in use.
void DrawQuad(unsigned int vertexArray, unsigned int vertices, int positionSize) {
    const auto floatSize = static_cast<std::uintptr_t>(sizeof(float));
    const int stride = (positionSize + 2) * static_cast<int>(floatSize);
    const auto uvOffset = static_cast<std::uintptr_t>(positionSize) * floatSize;
    glBindVertexArray(vertexArray);
    glBindBuffer(GL_ARRAY_BUFFER, vertices);
    glEnableVertexAttribArray(0);
    glVertexAttribPointer(0, positionSize, GL_FLOAT, GL_FALSE, stride, nullptr);
    glEnableVertexAttribArray(1);
    glVertexAttribPointer(1, 2, GL_FLOAT, GL_FALSE, stride,
                          reinterpret_cast<const void*>(uvOffset)); // NOLINT(*-no-int-to-ptr)
    glDrawArrays(GL_TRIANGLES, 0, 6);
    glDisableVertexAttribArray(0);
    glDisableVertexAttribArray(1);
    glBindVertexArray(0);
    glBindBuffer(GL_ARRAY_BUFFER, 0);
}

/// Copies `count` rows of `size` bytes; source and destination have their own distances between
/// rows.
void CopyRows(const std::byte* from, std::size_t fromStep, std::byte* to, std::size_t toStep,
              std::size_t size, int count) {
    for (int row = 0; row < count; ++row, from += fromStep, to += toStep) {
        std::memcpy(to, from, size);
    }
}

std::size_t Size(A_long value) {
    return static_cast<std::size_t>(value);
}

std::size_t TightRowBytes(const Host::World& world) {
    return Size(world.width() * Host::BytesPerPixel(world.depth()));
}

} // namespace

/// How GL reads the pixels of a depth.
struct BareFrame::Layout {
    explicit Layout(Host::Depth depth) : isFloat(depth == Host::Depth::Float32) {
        if (depth == Host::Depth::Bits16) {
            type = GL_UNSIGNED_SHORT;
            multiplier = 65535.0F / 32768.0F;
        } else if (isFloat) {
            type = GL_FLOAT;
        }
    }

    GLenum type = GL_UNSIGNED_BYTE;
    float multiplier = 1.0F;
    bool isFloat;
};

BareFrame::BareFrame(const Cells& cells)
    : mCells(cells),
      mMosaicShader(MosaicShaderManager::CreateShader(
          {.shapeType = cells.shapeType, .transitionType = 1, .hasFeather = true})),
      mScreenShader(std::make_unique<OpenglShader>(std::string(kChannelOrderVertex),
                                                   std::string(kScreenRenderFragment))) {
    mScreenShader->addAttributeBinding("position", 0);
    mScreenShader->addAttributeBinding("input_uv", 1);
    mMosaicProgram = ProgramOf(*mMosaicShader);
    mScreenProgram = ProgramOf(*mScreenShader);
    const auto fill = [](Quad& quad, std::span<const float> vertices) {
        quad = {.vertexArray = GLVertexArray::generated(), .vertices = GLBuffer::generated()};
        glBindBuffer(GL_ARRAY_BUFFER, quad.vertices.name());
        glBufferData(GL_ARRAY_BUFFER, static_cast<GLsizeiptr>(vertices.size_bytes()),
                     vertices.data(), GL_STATIC_DRAW);
    };
    fill(mMosaicQuad, kMosaicVertices);
    fill(mScreenQuad, kScreenVertices);
    mDrawBuffer = GLFramebuffer::generated();
    mResolveBuffer = GLFramebuffer::generated();
    mOutputBuffer = GLFramebuffer::generated();
}

BareFrame::~BareFrame() = default;

void BareFrame::render(const Host::World& input, Host::World& output) {
    const Layout layout(input.depth());
    fitTargets(input.width(), input.height());
    openTarget();
    const unsigned int texture = upload(input, layout);
    drawMosaic(texture, layout.multiplier);
    glDeleteTextures(1, &texture);
    const unsigned int resolved = resolve();
    drawScreenPass(resolved, layout.multiplier);
    glDeleteTextures(1, &resolved);
    download(output, layout);
}

void BareFrame::fitTargets(int width, int height) {
    if (width == mWidth && height == mHeight) {
        return;
    }
    mWidth = width;
    mHeight = height;
    mOutput = GLRenderbuffer::generated();
    glBindRenderbuffer(GL_RENDERBUFFER, mOutput.name());
    glRenderbufferStorage(GL_RENDERBUFFER, GL_RGBA, width, height);
}

void BareFrame::openTarget() {
    glDrawBuffer(GL_COLOR_ATTACHMENT0);
    glDisable(GL_BLEND);
    glEnable(GL_MULTISAMPLE);
    mTarget = GLRenderbuffer::generated();
    glBindRenderbuffer(GL_RENDERBUFFER, mTarget.name());
    glRenderbufferStorageMultisample(GL_RENDERBUFFER, 0, GL_RGBA, mWidth, mHeight);
    glBindFramebuffer(GL_FRAMEBUFFER, mDrawBuffer.name());
    AttachColor(mTarget.name());
    glClearColor(0, 0, 0, 0);
    glClear(GL_COLOR_BUFFER_BIT);
    glViewport(0, 0, mWidth, mHeight);
}

unsigned int BareFrame::upload(const Host::World& input, const Layout& layout) const {
    GLTexture texture = GLTexture::generated();
    glBindTexture(GL_TEXTURE_2D, texture.name());
    SetTextureParameters();
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA32F, mWidth, mHeight, 0, GL_RGBA, GL_FLOAT, nullptr);
    const auto fill = [&](A_long rowLength, const std::byte* pixels) {
        glPixelStorei(GL_UNPACK_ROW_LENGTH, rowLength);
        glTexSubImage2D(GL_TEXTURE_2D, 0, 0, 0, mWidth, mHeight, GL_RGBA, layout.type, pixels);
        glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
    };
    if (layout.isFloat) {
        const std::size_t rowBytes = TightRowBytes(input);
        const Block block = NewBlock(rowBytes * Size(mHeight));
        CopyRows(input.bytes().data(), Size(input.rowBytes()), block.get(), rowBytes, rowBytes,
                 mHeight);
        fill(mWidth, block.get());
    } else {
        fill(input.rowBytes() / Host::BytesPerPixel(input.depth()), input.bytes().data());
    }
    glBindTexture(GL_TEXTURE_2D, 0);
    return texture.release();
}

void BareFrame::drawMosaic(unsigned int texture, float multiplier) const {
    glUseProgram(mMosaicProgram);
    const auto location = [this](const char* name) {
        return glGetUniformLocation(mMosaicProgram, name);
    };
    const auto width = static_cast<float>(mWidth);
    const auto height = static_cast<float>(mHeight);
    const auto size = static_cast<float>(mCells.size);
    const auto largest = static_cast<float>(std::ldexp(mCells.size, mCells.levels));
    glActiveTexture(GL_TEXTURE0);
    glBindTexture(GL_TEXTURE_2D, texture);
    glUniform1i(location("videoTexture"), 0);
    for (const auto& [name, value] :
         {std::pair{"multiplier16bit", multiplier}, std::pair{"fadePercent", 0.0F},
          std::pair{"sizeRandomSeed", 0.0F}, std::pair{"dissolveRandomSeed", 0.0F},
          std::pair{"dissolveTransitionPercent", 0.0F}, std::pair{"linearTransitionAngle", 0.0F},
          std::pair{"maxSideLength", std::hypot(width, height) * 0.5F},
          std::pair{"sizeLevel", static_cast<float>(mCells.levels)},
          std::pair{"sizeRandomLimit", static_cast<float>(mCells.sizeRandom / 100.0)},
          std::pair{"dissolveFeather", 250.0F}, std::pair{"useAlpha", 1.0F}}) {
        glUniform1f(location(name), value);
    }
    glUniform2f(location("linearTransitionStartPoint"), 0.0F, 0.0F);
    glUniform4f(location("linearTransitionCorner"), 0.0F, 0.0F, width, height);
    glUniform2f(location("normalBlockSize"), size, size);
    glUniform2f(location("maxBlockSize"), largest, largest);
    glUniform2f(location("texSize"), width, height);
    DrawQuad(mMosaicQuad.vertexArray.name(), mMosaicQuad.vertices.name(), 2);
}

unsigned int BareFrame::resolve() {
    GLTexture texture = GLTexture::generated();
    glBindTexture(GL_TEXTURE_2D, texture.name());
    SetTextureParameters();
    const std::size_t zeroBytes = Size(mWidth) * Size(mHeight) * 4;
    const Block zeros(static_cast<std::byte*>(std::calloc(zeroBytes, 1)));
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, mWidth, mHeight, 0, GL_RGBA, GL_UNSIGNED_BYTE,
                 zeros.get());
    glBindTexture(GL_TEXTURE_2D, 0);
    glBindFramebuffer(GL_READ_FRAMEBUFFER, mDrawBuffer.name());
    glBindFramebuffer(GL_DRAW_FRAMEBUFFER, mResolveBuffer.name());
    glFramebufferTexture2D(GL_DRAW_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, texture.name(),
                           0);
    glBlitFramebuffer(0, 0, mWidth, mHeight, 0, 0, mWidth, mHeight, GL_COLOR_BUFFER_BIT,
                      GL_NEAREST);
    mTarget.reset();
    return texture.release();
}

void BareFrame::drawScreenPass(unsigned int texture, float multiplier) const {
    glBindFramebuffer(GL_FRAMEBUFFER, mOutputBuffer.name());
    AttachColor(mOutput.name());
    glDisable(GL_BLEND);
    glDisable(GL_MULTISAMPLE);
    glClear(GL_COLOR_BUFFER_BIT);
    glUseProgram(mScreenProgram);
    glActiveTexture(GL_TEXTURE0);
    glBindTexture(GL_TEXTURE_2D, texture);
    glUniform1i(glGetUniformLocation(mScreenProgram, "videoTexture"), 0);
    glUniform1f(glGetUniformLocation(mScreenProgram, "multiplier16bit"), multiplier);
    DrawQuad(mScreenQuad.vertexArray.name(), mScreenQuad.vertices.name(), 3);
}

void BareFrame::download(Host::World& output, const Layout& layout) const {
    const std::size_t rowBytes = TightRowBytes(output);
    const Block block = NewBlock(rowBytes * Size(mHeight));
    glReadBuffer(GL_COLOR_ATTACHMENT0);
    glReadPixels(0, 0, mWidth, mHeight, GL_RGBA, layout.type, block.get());
    CopyRows(block.get(), rowBytes, output.bytes().data(), Size(output.rowBytes()), rowBytes,
             mHeight);
}

} // namespace Kerovane::Benchmarks
