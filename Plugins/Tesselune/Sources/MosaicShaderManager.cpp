#include "Plugins/Tesselune/Sources/MosaicShaderManager.h"

#include "Plugins/Tesselune/MosaicShaders.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace Kerovane::Tesselune {

namespace {

constexpr std::string_view kVertexSource =
    "#version 330\n"
    "in vec2 position; in vec2 input_uv; out vec2 uv; "
    "void main() {\tuv = input_uv; \tgl_Position = vec4(position, 0.0, 1.0); }";

std::string_view TransitionCall(int transitionType) {
    switch (transitionType) {
    case 1:
        return "    dissolveTransitionLinear(sample);\n";
    case 2:
        return "    dissolveTransitionRadioIn(sample);\n";
    case 3:
        return "    dissolveTransitionRadioOut(sample);\n";
    default:
        return {};
    }
}

/// The GLSL pieces of a shape. Both are empty for an unknown shape.
struct ShapeText {
    std::string_view cells;
    std::string_view main;
};

ShapeText TextOf(int shapeType) {
    switch (shapeType) {
    case 0:
        return {kSquareCells, kMainSquare};
    case 1:
        return {kTriangleCells, kMainTriangle};
    default:
        return {};
    }
}

std::string FragmentSource(const MosaicRenderParam& param) {
    const ShapeText shape = TextOf(param.shapeType);
    std::string source;
    for (const std::string_view piece :
         {kPrelude, param.hasFeather ? kFeatherTransitions : kPlainTransitions, kDissolveHead,
          TransitionCall(param.transitionType), std::string_view("}\n"), kMosaicColor, shape.cells,
          kMainHead, shape.main, kMainTail}) {
        source += piece;
    }
    return source;
}

} // namespace

NeverDestroyed<std::vector<MosaicShaderManager::Variant>> MosaicShaderManager::mMosaicShaders;

OpenglShader* MosaicShaderManager::GetShader(const MosaicRenderParam& param) {
    const auto known = std::ranges::find(*mMosaicShaders, param, &Variant::key);
    if (known != mMosaicShaders->end()) {
        return known->program.get();
    }
    std::unique_ptr<OpenglShader> program(CreateShader(param));
    mMosaicShaders->push_back({param, std::move(program)});
    return mMosaicShaders->back().program.get();
}

OpenglShader* MosaicShaderManager::CreateShader(const MosaicRenderParam& param) {
    auto program =
        std::make_unique<OpenglShader>(std::string(kVertexSource), FragmentSource(param));
    program->addAttributeBinding("position", kPositionLocation);
    program->addAttributeBinding("input_uv", kTextureCoordinatesLocation);
    return program.release();
}

void MosaicShaderManager::PurgeAllShaders() {
    mMosaicShaders->clear();
    mMosaicShaders->shrink_to_fit(); // the vector is never destroyed, so free its memory here
}

} // namespace Kerovane::Tesselune
