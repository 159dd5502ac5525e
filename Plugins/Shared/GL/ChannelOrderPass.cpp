#include "Plugins/Shared/GL/ChannelOrderPass.h"

#include "Plugins/Shared/GL/ChannelOrderShaders.h"

#include <array>

using namespace gl;

namespace Kerovane::Tesselune {

namespace {

/// Maps row 0 of the texture to row 0 of the target: nothing is flipped.
constexpr std::array<float, 30> kVertices = {
    // x, y, z, u, v
    1.0F,  -1.0F, 0.0F, 1.0F, 0.0F, //
    1.0F,  1.0F,  0.0F, 1.0F, 1.0F, //
    -1.0F, 1.0F,  0.0F, 0.0F, 1.0F, //
    -1.0F, 1.0F,  0.0F, 0.0F, 1.0F, //
    -1.0F, -1.0F, 0.0F, 0.0F, 0.0F, //
    1.0F,  -1.0F, 0.0F, 1.0F, 0.0F, //
};
constexpr int kStride = 5 * sizeof(float);

constexpr int kTextureUnit = 0;

constexpr int kPositionLocation = 0;
constexpr int kTextureCoordinatesLocation = 1;

} // namespace

ChannelOrderPass::ChannelOrderPass(const std::string& fragment)
    : mQuad(kVertices), mProgram(std::string(kChannelOrderVertex), fragment) {
    mProgram.addAttributeBinding("position", kPositionLocation);
    mProgram.addAttributeBinding("input_uv", kTextureCoordinatesLocation);
}

void ChannelOrderPass::draw(unsigned int texture, float multiplier16bit) {
    mQuad.make();
    mProgram.useProgram();
    mQuad.bind();
    mProgram.setAttribute3fv(kPositionLocation, FullPictureQuad::offset(0), kStride);
    mProgram.setAttribute2fv(kTextureCoordinatesLocation, FullPictureQuad::offset(3), kStride);
    mProgram.setUniformTexture("videoTexture", static_cast<int>(GL_TEXTURE_2D),
                               static_cast<int>(texture), kTextureUnit);
    mProgram.setUniform1f("multiplier16bit", multiplier16bit);
    bindNearestSampler();
    FullPictureQuad::draw();
    glBindSampler(kTextureUnit, 0);
    mProgram.disableVertexAttributeArray(kPositionLocation);
    mProgram.disableVertexAttributeArray(kTextureCoordinatesLocation);
    FullPictureQuad::unbind();
}

/// Makes the texture unit sample the nearest texel. Each pixel takes exactly one texel, so
/// filtering would only cost time.
void ChannelOrderPass::bindNearestSampler() {
    if (!mNearestSampler) {
        mNearestSampler = GLSampler::generated();
        for (const GLenum filter : {GL_TEXTURE_MIN_FILTER, GL_TEXTURE_MAG_FILTER}) {
            glSamplerParameteri(mNearestSampler.name(), filter, static_cast<GLint>(GL_NEAREST));
        }
    }
    glBindSampler(kTextureUnit, mNearestSampler.name());
}

} // namespace Kerovane::Tesselune
