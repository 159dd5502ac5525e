#include "Plugins/Tesselune/Sources/MosaicRender.h"

#include "Plugins/Tesselune/Sources/CheckedOutParam.h"
#include "Plugins/Tesselune/Sources/MosaicShaderManager.h"
#include "Plugins/Tesselune/Sources/ParamIndex.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace Kerovane::Tesselune {

namespace {

/// v grows with y: the texture's first row is drawn at the bottom, where row 0 is read back.
constexpr std::array<float, 24> positions = {
    // x, y, u, v
    1.0F,  -1.0F, 1.0F, 0.0F, //
    1.0F,  1.0F,  1.0F, 1.0F, //
    -1.0F, 1.0F,  0.0F, 1.0F, //
    -1.0F, 1.0F,  0.0F, 1.0F, //
    -1.0F, -1.0F, 0.0F, 0.0F, //
    1.0F,  -1.0F, 1.0F, 0.0F, //
};
constexpr int kStride = 4 * sizeof(float);

constexpr double kRadiansPerDegree = 0.017453292519943;

/// Limits the shader's search, which goes from level to level. A cell doubled 24 times is larger
/// than any picture.
constexpr int kMostSizeLevels = 24;

double FromFixed(PF_Fixed value) {
    return static_cast<double>(value) * 0x1p-16;
}

float Fraction(PF_Fixed percent) {
    return static_cast<float>(FromFixed(percent) / 100.0);
}

/// Returns a popup's value, counted from 1. Returns 0 if it is no choice of the popup, so that no
/// unknown variant is compiled.
int Choice(int value, int choices) {
    return value >= 1 && value <= choices ? value : 0;
}

/// Converts pixels at full resolution to pixels at the resolution that is rendered.
float Downsampled(const PF_InData& in_data, int pixels) {
    return static_cast<float>(pixels) / static_cast<float>(in_data.downsample_x.den);
}

/// Returns the side of a cell in pixels; 1, the finest cell, if `pixels` is not finite or not above
/// 0.
float CellSide(float pixels) {
    return std::isfinite(pixels) && pixels > 0.0F ? pixels : 1.0F;
}

} // namespace

MosaicRender::MosaicRender() : mQuad(positions) {}

MosaicRender::~MosaicRender() = default;

PF_Err MosaicRender::preaprea(PF_InData* in_data, PF_OutData* /*out_data*/, int /*pluginId*/,
                              PF_LayerDef* /*layer*/) {
    PF_Err err = PF_Err_NONE;
    const auto fetch = [in_data, &err](int index) { return CheckedOutParam(in_data, index, err); };

    mParam.shapeType = Choice(fetch(kParamShapeType)->u.pd.value, kShapeCount) - 1;
    mSize = std::trunc(Downsampled(*in_data, fetch(kParamSize)->u.sd.value));
    mRatio = static_cast<float>(fetch(kParamRatio)->u.fs_d.value);
    mSizeRandomLimit = Fraction(fetch(kParamSizeRandom)->u.fd.value);
    mSizeLevel = std::min(fetch(kParamSizeLevel)->u.sd.value, kMostSizeLevels);
    mSizeRandomSeed = fetch(kParamSizeRandomSeed)->u.sd.value;
    mDissolveRandomSeed = fetch(kParamDissolveRandomSeed)->u.sd.value;
    mFadePercent = Fraction(fetch(kParamDissolve)->u.fd.value);
    mParam.transitionType = Choice(fetch(kParamTransitionType)->u.pd.value, kTransitionCount);
    mDissolveTransitionPercent = Fraction(fetch(kParamTransitionProgress)->u.fd.value);
    mLinearTransitionAngle = static_cast<float>(FromFixed(fetch(kParamDirection)->u.ad.value));
    mDissolveFeather = Downsampled(*in_data, fetch(kParamFeather)->u.sd.value);
    mParam.hasFeather = mDissolveFeather >= 1.0F;
    mUseAlpha = fetch(kParamUseAlpha)->u.bd.value != 0;
    return err;
}

void MosaicRender::draw(PF_LayerDef* layer, unsigned int texture, float multiplier) {
    mQuad.make();
    OpenglShader& shader = *MosaicShaderManager::GetShader(mParam);
    shader.useProgram();
    mQuad.bind();
    shader.setAttribute2fv(kPositionLocation, FullPictureQuad::offset(0), kStride);
    shader.setAttribute2fv(kTextureCoordinatesLocation, FullPictureQuad::offset(2), kStride);
    setUniforms(shader, *layer, texture, multiplier);
    FullPictureQuad::draw();
    shader.disableVertexAttributeArray(kPositionLocation);
    shader.disableVertexAttributeArray(kTextureCoordinatesLocation);
    FullPictureQuad::unbind();
}

void MosaicRender::setUniforms(OpenglShader& shader, const PF_LayerDef& layer, unsigned int texture,
                               float multiplier) const {
    const double width = layer.width;
    const double height = layer.height;
    shader.setUniformTexture("videoTexture", static_cast<int>(gl::GL_TEXTURE_2D),
                             static_cast<int>(texture), 0);
    shader.setUniform1f("multiplier16bit", multiplier);
    shader.setUniform1f("fadePercent", mFadePercent);
    shader.setUniform1f("sizeRandomSeed", static_cast<float>(mSizeRandomSeed));
    shader.setUniform1f("dissolveRandomSeed", static_cast<float>(mDissolveRandomSeed));
    shader.setUniform1f("dissolveTransitionPercent", mDissolveTransitionPercent);
    shader.setUniform1f("linearTransitionAngle",
                        static_cast<float>(mLinearTransitionAngle * kRadiansPerDegree));
    CalculateLineTransitionCorner(&shader, mLinearTransitionAngle, Vec2(width, height),
                                  "linearTransitionStartPoint", "linearTransitionCorner");
    const double halfWidth = width * 0.5;
    const double halfHeight = height * 0.5;
    shader.setUniform1f("maxSideLength", static_cast<float>(std::sqrt(halfWidth * halfWidth +
                                                                      halfHeight * halfHeight)));
    shader.setUniform1f("sizeLevel", static_cast<float>(mSizeLevel));
    shader.setUniform1f("sizeRandomLimit", mSizeRandomLimit);
    shader.setUniform1f("dissolveFeather", mDissolveFeather);
    shader.setUniform1f("useAlpha", mUseAlpha ? 1.0F : 0.0F);
    setBlockSizes(shader);
    shader.setUniform2f("texSize", static_cast<float>(layer.width),
                        static_cast<float>(layer.height));
}

void MosaicRender::setBlockSizes(const OpenglShader& shader) const {
    const float width = CellSide(mRatio * mSize);
    const float height = CellSide(mSize);
    const double largest = std::ldexp(1.0, mSizeLevel);
    shader.setUniform2f("normalBlockSize", width, height);
    shader.setUniform2f("maxBlockSize", static_cast<float>(width * largest),
                        static_cast<float>(height * largest));
}

void CalculateLineTransitionCorner(OpenglShader* shader, float angle, const Vec2& size,
                                   const std::string& startPointName,
                                   const std::string& cornerName) {
    float folded = std::fmod(angle, 360.0F);
    if (folded < 0.0F) {
        folded += 360.0F;
    }
    const auto w = static_cast<float>(size.x);
    const auto h = static_cast<float>(size.y);
    struct Quadrant {
        float end; // first angle beyond the quadrant, in degrees
        std::array<float, 2> startPoint;
        std::array<float, 4> corners;
    };
    const Quadrant quadrants[] = {
        {90.0F, {0.0F, 0.0F}, {0.0F, 0.0F, w, h}},
        {180.0F, {w, 0.0F}, {w, 0.0F, 0.0F, h}},
        {270.0F, {w, h}, {0.0F, 0.0F, w, h}},
        {360.0F, {0.0F, h}, {w, 0.0F, 0.0F, h}},
    };
    for (const auto& [end, startPoint, corners] : quadrants) {
        if (folded < end) {
            shader->setUniform2f(startPointName, startPoint[0], startPoint[1]);
            shader->setUniform4f(cornerName, corners[0], corners[1], corners[2], corners[3]);
            return;
        }
    }
    // In single precision, a tiny negative angle plus 360 rounds to 360, which is in no quadrant.
    // The uniforms then keep their values.
}

} // namespace Kerovane::Tesselune
