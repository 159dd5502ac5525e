#include "GL/ChannelOrderPass.h"

#include "ChannelOrderShaders.h"

#include <array>

using namespace gl;

namespace Kerovane::Tesselune {

namespace {

/// Row 0 of the texture lies on row 0 of the target: nothing is flipped.
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

constexpr int kPositionLocation = 0;
constexpr int kTextureCoordinatesLocation = 1;

} // namespace

ChannelOrderPass::ChannelOrderPass(const std::string& fragment)
    : mQuad(kVertices), mProgram(std::string(kChannelOrderVertex), fragment) {
    mProgram.addAttributeBinding("position", kPositionLocation);
    mProgram.addAttributeBinding("input_uv", kTextureCoordinatesLocation);
}

void ChannelOrderPass::draw(unsigned int texture, float multiplier16bit) {
    mProgram.useProgram();
    mQuad.bind();
    mProgram.setAttribute3fv(kPositionLocation, FullPictureQuad::offset(0), kStride);
    mProgram.setAttribute2fv(kTextureCoordinatesLocation, FullPictureQuad::offset(3), kStride);
    mProgram.setUniformTexture("videoTexture", static_cast<int>(GL_TEXTURE_2D),
                               static_cast<int>(texture), 0);
    mProgram.setUniform1f("multiplier16bit", multiplier16bit);
    FullPictureQuad::draw();
    mProgram.disableVertexAttributeArray(kPositionLocation);
    mProgram.disableVertexAttributeArray(kTextureCoordinatesLocation);
    FullPictureQuad::unbind();
}

} // namespace Kerovane::Tesselune
