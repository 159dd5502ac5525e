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
 * The programs of all shader variants, each made when it is first asked for.
 *
 * A variant holds its key as a value and owns its program, so that purging deletes both.
 */
class MosaicShaderManager {
public:
    MosaicShaderManager() = delete;

    /// The key's program, owned here and valid until PurgeAllShaders. Compiles nothing.
    static OpenglShader* GetShader(const MosaicRenderParam& param);

    /// A new program with its sources and attribute bindings, owned by the caller.
    static OpenglShader* CreateShader(const MosaicRenderParam& param);

    /// Deletes all programs; a context of their share group must be current.
    static void PurgeAllShaders();

private:
    struct Variant {
        MosaicRenderParam key;
        std::unique_ptr<OpenglShader> program;
    };

    static NeverDestroyed<std::vector<Variant>> mMosaicShaders;
};

} // namespace Kerovane::Tesselune
