#include "Plugins/Shared/GL/FullPictureQuad.h"

using namespace gl;

namespace Kerovane::Tesselune {

void FullPictureQuad::make() {
    GLVertexArray& vertexArray = mVertexArray.current();
    if (!vertexArray) {
        vertexArray = GLVertexArray::generated();
        glBindVertexArray(vertexArray.name());
    }
    if (!mVertexBuffer) {
        mVertexBuffer = GLBuffer::generated();
        glBindBuffer(GL_ARRAY_BUFFER, mVertexBuffer.name());
        glBufferData(GL_ARRAY_BUFFER, static_cast<GLsizeiptr>(mVertices.size_bytes()),
                     mVertices.data(), GL_STATIC_DRAW);
    }
}

void FullPictureQuad::bind() {
    glBindVertexArray(mVertexArray.current().name());
    glBindBuffer(GL_ARRAY_BUFFER, mVertexBuffer.name());
}

void FullPictureQuad::draw() {
    glDrawArrays(GL_TRIANGLES, 0, 6);
}

void FullPictureQuad::unbind() {
    glBindVertexArray(0);
    glBindBuffer(GL_ARRAY_BUFFER, 0);
}

} // namespace Kerovane::Tesselune
