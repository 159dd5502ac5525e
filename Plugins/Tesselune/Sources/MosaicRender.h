#pragma once

#include "AE_Effect.h"
#include "Plugins/Shared/GL/FullPictureQuad.h"
#include "Plugins/Shared/GL/OpenglShader.h"
#include "Plugins/Shared/Math/Vec2.h"

#include <string>

namespace Kerovane::Tesselune {

constexpr short kShapeCount = 2;
constexpr short kTransitionCount = 3;

/** The key of a shader variant. */
struct MosaicRenderParam {
    int shapeType = 0;       ///< 0 square, 1 triangle, -1 none
    int transitionType = 1;  ///< 1 linear, 2 radial in, 3 radial out, 0 none
    bool hasFeather = false; ///< the transition's edge is ragged

    bool operator==(const MosaicRenderParam&) const = default;
};

/**
 * Renders frames. `preaprea` fetches a frame's parameters, `draw` draws the frame. Only GL objects
 * persist between frames. Not thread-safe: one frame at a time.
 *
 * `mQuad` owns the vertex array and the vertex buffer. `mParam` is a value because the key lives as
 * long as the renderer.
 */
class MosaicRender {
public:
    /// Makes no GL call.
    MosaicRender();

    /// Deletes the GL objects. A context of their share group must be current.
    virtual ~MosaicRender();

    MosaicRender(const MosaicRender&) = delete;
    MosaicRender& operator=(const MosaicRender&) = delete;

    /**
     * Fetches the parameters at the frame's time. Returns the host's first error; the parameter
     * whose checkout failed and all after it then count as 0, and the later ones are not checked
     * out. Reads only `in_data`.
     */
    PF_Err preaprea(PF_InData* in_data, PF_OutData* out_data, int pluginId, PF_LayerDef* layer);

    /**
     * Draws the frame into the bound target. `texture` holds the layer in the host's channel order;
     * texels times `multiplier` are on the scale where white is 1. Leaves the program in use and
     * the texture bound to unit 0.
     */
    void draw(PF_LayerDef* layer, unsigned int texture, float multiplier);

private:
    void setUniforms(OpenglShader& shader, const PF_LayerDef& layer, unsigned int texture,
                     float multiplier) const;
    void setBlockSizes(const OpenglShader& shader) const;

    FullPictureQuad mQuad;
    MosaicRenderParam mParam;
    float mSize = 50.0F; ///< the cell's height in pixels, a whole number
    float mRatio = 1.0F; ///< the cell's width over its height
    int mSizeLevel = 0;  ///< how often a cell's size may double
    float mSizeRandomLimit = 0.0F;
    int mSizeRandomSeed = 0;
    float mFadePercent = 0.0F; ///< 0 to 1, like mSizeRandomLimit and mDissolveTransitionPercent
    int mDissolveRandomSeed = 0;
    float mDissolveTransitionPercent = 0.0F;
    float mLinearTransitionAngle = 0.0F; ///< degrees, of any range
    float mDissolveFeather = 0.0F;       ///< pixels
    bool mUseAlpha = true;
};

/**
 * Sets the two uniforms that place the linear transition: the corner of the picture where a sweep
 * in direction `angle` (degrees) starts, and, as one vec4, the ends of the diagonal that the sweep
 * spans. `size` is the picture's size in pixels.
 */
void CalculateLineTransitionCorner(OpenglShader* shader, float angle, const Vec2& size,
                                   const std::string& startPointName,
                                   const std::string& cornerName);

} // namespace Kerovane::Tesselune
