#pragma once

#include "Plugins/Shared/GL/GLObject.h"
#include "Plugins/Shared/GL/PerContext.h"

#include <cstdint>
#include <span>

namespace Kerovane::Tesselune {

/**
 * The vertices of a pass that draws the whole picture as one quad: a vertex buffer, uploaded once
 * and shared by all contexts, and a vertex array, which contexts don't share.
 *
 * `mVertexBuffer` is an owner instead of a plain name, so that it deletes its object.
 * `mVertexArray` holds one owner for each context, as a frame may be drawn in another context than
 * the last.
 */
class FullPictureQuad {
public:
    /// Six vertices of the same number of floats each; the table must outlive the object.
    explicit FullPictureQuad(std::span<const float> vertices) : mVertices(vertices) {}

    /// Makes what does not exist yet: the current context's vertex array, and the buffer.
    void make();

    /// Binds the vertex array and the buffer. `make` comes first.
    void bind();

    /// Draws the six vertices with the program in use.
    static void draw();

    /// The buffer offset of float `number` of the first vertex, as attribute setters take it.
    static const float* offset(std::uintptr_t number) {
        return reinterpret_cast<const float*>(number * sizeof(float)); // NOLINT(*-no-int-to-ptr)
    }

    /// Leaves no vertex array and no vertex buffer bound.
    static void unbind();

private:
    std::span<const float> mVertices;
    PerContext<GLVertexArray> mVertexArray;
    GLBuffer mVertexBuffer;
};

} // namespace Kerovane::Tesselune
