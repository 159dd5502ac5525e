#pragma once

#include "Plugins/Shared/GL/GLObject.h"
#include "Plugins/Shared/GL/PerContext.h"

#include <cstdint>
#include <span>

namespace Kerovane::Tesselune {

/**
 * The vertices of a pass that draws the whole picture as one quad: a vertex buffer, uploaded once
 * and shared by all contexts, and a vertex array for each context, because contexts do not share
 * vertex arrays.
 */
class FullPictureQuad {
public:
    /// `vertices` holds six vertices with the same number of floats each and must outlive the
    /// object.
    explicit FullPictureQuad(std::span<const float> vertices) : mVertices(vertices) {}

    /// Creates the current context's vertex array and the vertex buffer if they do not exist yet.
    void make();

    /// Binds the vertex array and the buffer. Call `make` first.
    void bind();

    /// Draws the six vertices with the program in use.
    static void draw();

    /// Returns the buffer offset of the first vertex's float `number`, in the form that attribute
    /// setters take.
    static const float* offset(std::uintptr_t number) {
        return reinterpret_cast<const float*>(number * sizeof(float)); // NOLINT(*-no-int-to-ptr)
    }

    /// Unbinds the vertex array and the vertex buffer.
    static void unbind();

private:
    std::span<const float> mVertices;
    PerContext<GLVertexArray> mVertexArray;
    GLBuffer mVertexBuffer;
};

} // namespace Kerovane::Tesselune
