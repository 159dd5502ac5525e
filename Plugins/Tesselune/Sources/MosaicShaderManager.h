#pragma once

#include "Plugins/Shared/GL/OpenglShader.h"
#include "Plugins/Shared/Helper/NeverDestroyed.h"
#include "Plugins/Tesselune/Sources/MosaicRender.h"

#include <memory>
#include <vector>

namespace Kerovane::Tesselune {

/// Locations of the vertex attributes in every variant.
constexpr int kPositionLocation = 0;           ///< two floats, clip space
constexpr int kTextureCoordinatesLocation = 1; ///< two floats, 0 to 1

/**
 * Caches the program of each shader variant, created at its first request.
 *
 * A variant owns its program, so that PurgeAllShaders deletes the programs with the variants.
 */
class MosaicShaderManager {
public:
    MosaicShaderManager() = delete;

    /// Returns the program for `param`, owned by this class and valid until PurgeAllShaders.
    /// Compiles nothing: OpenglShader does so at its first use.
    static OpenglShader* GetShader(const MosaicRenderParam& param);

    /// Creates a program with its sources and attribute bindings; the caller owns it.
    static OpenglShader* CreateShader(const MosaicRenderParam& param);

    /// Deletes all programs. A context of their share group must be current.
    static void PurgeAllShaders();

private:
    struct Variant {
        MosaicRenderParam key;
        std::unique_ptr<OpenglShader> program;
    };

    static NeverDestroyed<std::vector<Variant>> mMosaicShaders;
};

} // namespace Kerovane::Tesselune
