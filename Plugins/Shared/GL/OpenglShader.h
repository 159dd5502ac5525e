#pragma once

#include "Plugins/Shared/GL/GLObject.h"
#include "Plugins/Shared/Math/Affine.h"
#include "Plugins/Shared/Math/Color.h"
#include "Plugins/Shared/Math/Mat4.h"
#include "Plugins/Shared/Math/Vec2.h"
#include "Plugins/Shared/Math/Vec3.h"
#include "Plugins/Shared/Math/Vec4.h"

#include <map>
#include <string>

namespace Kerovane::Tesselune {

/**
 * One GL program with its sources, built at the first useProgram, so that an object can be made
 * without a context. If the build fails, a message goes to standard output, the program stays 0
 * and every setter does nothing.
 *
 * The uniform setters work on the program in use. Each looks its name up at every call; a name that
 * the program lacks, or that the compiler dropped, is no error.
 *
 * `mProgram` is an owner instead of a plain name, so that every way out deletes the program.
 */
class OpenglShader {
public:
    OpenglShader(const std::string& vertex, const std::string& fragment);
    OpenglShader(const std::string& vertex, const std::string& fragment,
                 const std::string& geometry);

    /// Deletes the program; a context of its share group must be current if it was built.
    virtual ~OpenglShader();

    OpenglShader(const OpenglShader&) = delete;
    OpenglShader& operator=(const OpenglShader&) = delete;

    /// Fixes an attribute's location. The first call for a name counts, and only before the build.
    void addAttributeBinding(const std::string& name, int location);

    /// Compiles and links. A failure is printed, and leaves no GL object behind.
    void buildShader();

    /// Puts the program in use. Builds it first if no build has succeeded yet.
    void useProgram();

    // Uniforms

    void setUniform1i(const std::string& name, int x) const;
    void setUniform2i(const std::string& name, int x, int y) const;
    void setUniform3i(const std::string& name, int x, int y, int z) const;
    void setUniform4i(const std::string& name, int x, int y, int z, int w) const;

    void setUniform1f(const std::string& name, float x) const;
    void setUniform2f(const std::string& name, float x, float y) const;
    void setUniform3f(const std::string& name, float x, float y, float z) const;
    void setUniform4f(const std::string& name, float x, float y, float z, float w) const;

    // `values` holds `count` scalars, or vectors of two, three or four.
    void setUniform1iv(const std::string& name, const int* values, int count) const;
    void setUniform2iv(const std::string& name, const int* values, int count) const;
    void setUniform3iv(const std::string& name, const int* values, int count) const;
    void setUniform4iv(const std::string& name, const int* values, int count) const;

    void setUniform1fv(const std::string& name, const float* values, int count) const;
    void setUniform2fv(const std::string& name, const float* values, int count) const;
    void setUniform3fv(const std::string& name, const float* values, int count) const;
    void setUniform4fv(const std::string& name, const float* values, int count) const;

    // Math values, narrowed to single precision.
    void setUniform2f(const std::string& name, const Vec2& value) const;
    void setUniform3f(const std::string& name, const Vec3& value) const;
    void setUniform4f(const std::string& name, const Vec4& value) const;
    void setUniform4f(const std::string& name, const Color& value) const;

    /// `count` transforms of the plane, each as a mat3.
    void setUniformMatrix3f(const std::string& name, Affine* matrices, int count) const;

    /// One matrix; `count` must be 1.
    void setUniformMatrix4f(const std::string& name, const Mat4& matrix, int count) const;

    /// Binds `texture` to texture unit `unit` and points the sampler at the unit. Binds it even if
    /// the program has no such sampler; does nothing if there is no program.
    void setUniformTexture(const std::string& name, int target, int texture, int unit) const;

    /// -1 if there is no program or no such uniform.
    int getUniformLocation(const std::string& name) const;

    // Vertex attributes: the setters also enable the attribute's array. `values` is an offset into
    // the bound vertex buffer, `stride` counts bytes.

    /// -1 if there is no program or no such attribute.
    int getAttributeLocation(const std::string& name) const;

    void setAttribute1iv(int location, const int* values, int stride) const;
    void setAttribute1fv(const std::string& name, const float* values, int stride) const;
    void setAttribute1fv(int location, const float* values, int stride) const;
    void setAttribute2fv(const std::string& name, const float* values, int stride) const;
    void setAttribute2fv(int location, const float* values, int stride) const;
    void setAttribute3fv(const std::string& name, const float* values, int stride) const;
    void setAttribute3fv(int location, const float* values, int stride) const;
    void setAttribute4fv(const std::string& name, const float* values, int stride) const;
    void setAttribute4fv(int location, const float* values, int stride) const;

    void disableVertexAttributeArray(const std::string& name);
    void disableVertexAttributeArray(int location);

private:
    int existingAttributeLocation(const std::string& name) const;
    void setAttribute(int location, int size, gl::GLenum type, const void* values,
                      int stride) const;

    std::string mVertexSource;
    std::string mFragmentSource;
    std::string mGeometrySource; ///< empty: no geometry stage
    GLProgram mProgram;
    std::map<std::string, int> mAttributeBindings;
};

/// Prints a shader's log, at most 512 characters of it, to standard output; `stage` names it.
void dumpShaderErrorS(unsigned int shader, const char* stage);

} // namespace Kerovane::Tesselune
