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
 * A GL program and its sources. The program is built at the first useProgram, so that an object can
 * be constructed without a context. If the build fails, a message is printed to standard output,
 * the program stays 0 and every setter does nothing.
 *
 * The uniform setters apply to the program in use and look the name up at every call. They ignore
 * names that the program lacks or that the compiler optimised away.
 *
 * `mProgram` is an owner, so that every path deletes the program.
 */
class OpenglShader {
public:
    OpenglShader(const std::string& vertex, const std::string& fragment);
    OpenglShader(const std::string& vertex, const std::string& fragment,
                 const std::string& geometry);

    /// Deletes the program. If it was built, a context of its share group must be current.
    virtual ~OpenglShader();

    OpenglShader(const OpenglShader&) = delete;
    OpenglShader& operator=(const OpenglShader&) = delete;

    /// Sets an attribute's location. Must be called before the build; later calls for the same name
    /// are ignored.
    void addAttributeBinding(const std::string& name, int location);

    /// Compiles and links the program. Prints a failure and then leaves no GL object behind.
    void buildShader();

    /// Makes the program current. Builds it first if no build has succeeded yet.
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

    // `values` holds `count` scalars, or `count` vectors of two, three or four components.
    void setUniform1iv(const std::string& name, const int* values, int count) const;
    void setUniform2iv(const std::string& name, const int* values, int count) const;
    void setUniform3iv(const std::string& name, const int* values, int count) const;
    void setUniform4iv(const std::string& name, const int* values, int count) const;

    void setUniform1fv(const std::string& name, const float* values, int count) const;
    void setUniform2fv(const std::string& name, const float* values, int count) const;
    void setUniform3fv(const std::string& name, const float* values, int count) const;
    void setUniform4fv(const std::string& name, const float* values, int count) const;

    // Values of the math library, narrowed to single precision.
    void setUniform2f(const std::string& name, const Vec2& value) const;
    void setUniform3f(const std::string& name, const Vec3& value) const;
    void setUniform4f(const std::string& name, const Vec4& value) const;
    void setUniform4f(const std::string& name, const Color& value) const;

    /// Sets `count` affine transforms of the plane, each as a mat3.
    void setUniformMatrix3f(const std::string& name, Affine* matrices, int count) const;

    /// Sets one matrix; `count` must be 1.
    void setUniformMatrix4f(const std::string& name, const Mat4& matrix, int count) const;

    /// Binds `texture` to texture unit `unit` and sets the sampler uniform to the unit. Binds the
    /// texture even if the program has no such sampler. Does nothing if there is no program.
    void setUniformTexture(const std::string& name, int target, int texture, int unit) const;

    /// Returns -1 if there is no program or no such uniform.
    int getUniformLocation(const std::string& name) const;

    // Vertex attributes. The setters also enable the attribute's array. `values` is an offset into
    // the bound vertex buffer, `stride` is in bytes.

    /// Returns -1 if there is no such attribute.
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

/// Prints a shader's info log, at most 512 characters, to standard output. `stage` names the shader
/// stage in the message.
void dumpShaderErrorS(unsigned int shader, const char* stage);

} // namespace Kerovane::Tesselune
