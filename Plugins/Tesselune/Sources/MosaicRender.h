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
 * The renderer of all frames. A frame is `preaprea`, which fetches the parameters at the frame's
 * time, and `draw`, which turns them into the picture; nothing is kept from frame to frame but GL
 * objects. Not for two frames at once.
 *
 * `mQuad` owns the two GL objects, mVertexArray and mVertexBuffer, instead of two plain names here.
 * `mParam` is a value, as the key has the renderer's lifetime.
 */
class MosaicRender {
public:
    /// Makes no GL call.
    MosaicRender();

    /// Deletes the GL objects; a context of their share group must be current.
    virtual ~MosaicRender();

    MosaicRender(const MosaicRender&) = delete;
    MosaicRender& operator=(const MosaicRender&) = delete;

    /**
     * Fetches the frame's parameters. Returns the host's first error: a parameter whose checkout
     * fails counts as 0, and so do those after it, which are not checked out. Reads nothing but
     * `in_data`.
     */
    PF_Err preaprea(PF_InData* in_data, PF_OutData* out_data, int pluginId, PF_LayerDef* layer);

    /**
     * Draws the frame over the bound target. `texture` holds the layer in the host's channel order;
     * texels times `multiplier` are on the scale where white is 1. The program stays in use and the
     * texture bound to unit 0.
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
    int mSizeLevel = 0;  ///< rungs of the size ladder
    float mSizeRandomLimit = 0.0F;
    int mSizeRandomSeed = 0;
    float mFadePercent = 0.0F; ///< 0 to 1, as the two other percentages
    int mDissolveRandomSeed = 0;
    float mDissolveTransitionPercent = 0.0F;
    float mLinearTransitionAngle = 0.0F; ///< degrees, not folded
    float mDissolveFeather = 0.0F;       ///< pixels
    bool mUseAlpha = true;
};

/**
 * Sets the two uniforms of the linear transition's place: the picture's corner where the sweep
 * along `angle` (degrees) begins, and the two corners, as one vec4, of the diagonal that spans the
 * sweep. `size` is the picture's, in pixels.
 */
void CalculateLineTransitionCorner(OpenglShader* shader, float angle, const Vec2& size,
                                   const std::string& startPointName,
                                   const std::string& cornerName);

} // namespace Kerovane::Tesselune
