#include "Plugins/Shared/GL/OpenglShader.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <span>
#include <vector>

using namespace gl;

namespace Kerovane::Tesselune {

namespace {

constexpr int kLogLimit = 512;

/// Returns the info log. `read` is glGetShaderInfoLog or glGetProgramInfoLog.
std::string InfoLog(unsigned int name, void (*read)(GLuint, GLsizei, GLsizei*, GLchar*)) {
    std::array<char, kLogLimit> log{};
    int length = 0;
    read(name, kLogLimit, &length, log.data());
    return {log.data(), static_cast<std::size_t>(std::clamp(length, 0, kLogLimit))};
}

bool Compile(const GLShader& shader, const std::string& source, const char* stage) {
    const char* text = source.c_str();
    glShaderSource(shader.name(), 1, &text, nullptr);
    glCompileShader(shader.name());
    int compiled = 0;
    glGetShaderiv(shader.name(), GL_COMPILE_STATUS, &compiled);
    if (compiled != 1) {
        dumpShaderErrorS(shader.name(), stage);
    }
    return compiled == 1;
}

bool Link(const GLProgram& program) {
    glLinkProgram(program.name());
    int linked = 0;
    glGetProgramiv(program.name(), GL_LINK_STATUS, &linked);
    if (linked != 1) {
        std::printf("Program error:\n%s\n", InfoLog(program.name(), glGetProgramInfoLog).c_str());
    }
    return linked == 1;
}

float Narrowed(double value) {
    return static_cast<float>(value);
}

/// Calls a GL uniform function unless `location` is -1, the value for a uniform that does not
/// exist.
template <typename... Values>
void SetUniform(int location, void (*set)(GLint, Values...), Values... values) {
    if (location != -1) {
        set(location, values...);
    }
}

} // namespace

OpenglShader::OpenglShader(const std::string& vertex, const std::string& fragment)
    : OpenglShader(vertex, fragment, {}) {}

OpenglShader::OpenglShader(const std::string& vertex, const std::string& fragment,
                           const std::string& geometry)
    : mVertexSource(vertex), mFragmentSource(fragment), mGeometrySource(geometry) {}

OpenglShader::~OpenglShader() = default;

void OpenglShader::addAttributeBinding(const std::string& name, int location) {
    mAttributeBindings.emplace(name, location);
}

void OpenglShader::buildShader() {
    const bool hasGeometry = !mGeometrySource.empty();
    GLShader vertex(glCreateShader(GL_VERTEX_SHADER));
    GLShader fragment(glCreateShader(GL_FRAGMENT_SHADER));
    GLShader geometry(hasGeometry ? glCreateShader(GL_GEOMETRY_SHADER) : 0);
    if (!Compile(vertex, mVertexSource, "vert") || !Compile(fragment, mFragmentSource, "frag") ||
        (hasGeometry && !Compile(geometry, mGeometrySource, "geo"))) {
        return;
    }

    GLProgram program(glCreateProgram());
    glAttachShader(program.name(), vertex.name());
    glAttachShader(program.name(), fragment.name());
    if (hasGeometry) {
        glAttachShader(program.name(), geometry.name());
    }
    for (const auto& [name, location] : mAttributeBindings) {
        glBindAttribLocation(program.name(), static_cast<GLuint>(location), name.c_str());
    }
    if (!Link(program)) {
        return;
    }
    mProgram = std::move(program);
    glDetachShader(mProgram.name(), vertex.name());
    glDetachShader(mProgram.name(), fragment.name());
    vertex.reset();
    fragment.reset();
    if (hasGeometry) {
        glDetachShader(mProgram.name(), geometry.name());
        geometry.reset();
    }
}

void OpenglShader::useProgram() {
    if (!mProgram) {
        buildShader();
    }
    glUseProgram(mProgram.name());
}

void OpenglShader::setUniform1i(const std::string& name, int x) const {
    SetUniform(getUniformLocation(name), glUniform1i, x);
}

void OpenglShader::setUniform2i(const std::string& name, int x, int y) const {
    SetUniform(getUniformLocation(name), glUniform2i, x, y);
}

void OpenglShader::setUniform3i(const std::string& name, int x, int y, int z) const {
    SetUniform(getUniformLocation(name), glUniform3i, x, y, z);
}

void OpenglShader::setUniform4i(const std::string& name, int x, int y, int z, int w) const {
    SetUniform(getUniformLocation(name), glUniform4i, x, y, z, w);
}

void OpenglShader::setUniform1f(const std::string& name, float x) const {
    SetUniform(getUniformLocation(name), glUniform1f, x);
}

void OpenglShader::setUniform2f(const std::string& name, float x, float y) const {
    SetUniform(getUniformLocation(name), glUniform2f, x, y);
}

void OpenglShader::setUniform3f(const std::string& name, float x, float y, float z) const {
    SetUniform(getUniformLocation(name), glUniform3f, x, y, z);
}

void OpenglShader::setUniform4f(const std::string& name, float x, float y, float z, float w) const {
    SetUniform(getUniformLocation(name), glUniform4f, x, y, z, w);
}

void OpenglShader::setUniform1iv(const std::string& name, const int* values, int count) const {
    SetUniform(getUniformLocation(name), glUniform1iv, count, values);
}

void OpenglShader::setUniform2iv(const std::string& name, const int* values, int count) const {
    SetUniform(getUniformLocation(name), glUniform2iv, count, values);
}

void OpenglShader::setUniform3iv(const std::string& name, const int* values, int count) const {
    SetUniform(getUniformLocation(name), glUniform3iv, count, values);
}

void OpenglShader::setUniform4iv(const std::string& name, const int* values, int count) const {
    SetUniform(getUniformLocation(name), glUniform4iv, count, values);
}

void OpenglShader::setUniform1fv(const std::string& name, const float* values, int count) const {
    SetUniform(getUniformLocation(name), glUniform1fv, count, values);
}

void OpenglShader::setUniform2fv(const std::string& name, const float* values, int count) const {
    SetUniform(getUniformLocation(name), glUniform2fv, count, values);
}

void OpenglShader::setUniform3fv(const std::string& name, const float* values, int count) const {
    SetUniform(getUniformLocation(name), glUniform3fv, count, values);
}

void OpenglShader::setUniform4fv(const std::string& name, const float* values, int count) const {
    SetUniform(getUniformLocation(name), glUniform4fv, count, values);
}

void OpenglShader::setUniform2f(const std::string& name, const Vec2& value) const {
    setUniform2f(name, Narrowed(value.x), Narrowed(value.y));
}

void OpenglShader::setUniform3f(const std::string& name, const Vec3& value) const {
    setUniform3f(name, Narrowed(value.x), Narrowed(value.y), Narrowed(value.z));
}

void OpenglShader::setUniform4f(const std::string& name, const Vec4& value) const {
    setUniform4f(name, Narrowed(value.x), Narrowed(value.y), Narrowed(value.z), Narrowed(value.w));
}

void OpenglShader::setUniform4f(const std::string& name, const Color& value) const {
    setUniform4f(name, Narrowed(value.mR), Narrowed(value.mG), Narrowed(value.mB),
                 Narrowed(value.mA));
}

void OpenglShader::setUniformMatrix3f(const std::string& name, Affine* matrices, int count) const {
    const int location = getUniformLocation(name);
    if (location == -1) {
        return;
    }
    std::vector<float> columns;
    columns.reserve(static_cast<std::size_t>(count) * 9);
    for (const Affine& m : std::span(matrices, static_cast<std::size_t>(count))) {
        for (const double element : {m.a, m.b, 0.0, m.c, m.d, 0.0, m.e, m.f, 1.0}) {
            columns.push_back(Narrowed(element));
        }
    }
    glUniformMatrix3fv(location, count, GL_FALSE, columns.data());
}

void OpenglShader::setUniformMatrix4f(const std::string& name, const Mat4& matrix,
                                      int count) const {
    const int location = getUniformLocation(name);
    if (location == -1) {
        return;
    }
    std::array<float, 16> columns{};
    std::ranges::transform(matrix.mElements, columns.begin(), Narrowed);
    glUniformMatrix4fv(location, count, GL_FALSE, columns.data());
}

void OpenglShader::setUniformTexture(const std::string& name, int target, int texture,
                                     int unit) const {
    if (!mProgram) {
        return;
    }
    glActiveTexture(static_cast<GLenum>(static_cast<int>(GL_TEXTURE0) + unit));
    glBindTexture(static_cast<GLenum>(target), static_cast<GLuint>(texture));
    setUniform1i(name, unit);
}

int OpenglShader::getUniformLocation(const std::string& name) const {
    return mProgram ? glGetUniformLocation(mProgram.name(), name.c_str()) : -1;
}

int OpenglShader::getAttributeLocation(const std::string& name) const {
    return glGetAttribLocation(mProgram.name(), name.c_str());
}

void OpenglShader::setAttribute1iv(int location, const int* values, int stride) const {
    if (location != -1) {
        setAttribute(location, 1, GL_INT, values, stride);
    }
}

void OpenglShader::setAttribute1fv(const std::string& name, const float* values, int stride) const {
    setAttribute1fv(existingAttributeLocation(name), values, stride);
}

void OpenglShader::setAttribute1fv(int location, const float* values, int stride) const {
    if (location != -1) {
        setAttribute(location, 1, GL_FLOAT, values, stride);
    }
}

void OpenglShader::setAttribute2fv(const std::string& name, const float* values, int stride) const {
    const int location = existingAttributeLocation(name);
    if (location != -1) {
        setAttribute2fv(location, values, stride);
    }
}

void OpenglShader::setAttribute2fv(int location, const float* values, int stride) const {
    setAttribute(location, 2, GL_FLOAT, values, stride);
}

void OpenglShader::setAttribute3fv(const std::string& name, const float* values, int stride) const {
    const int location = existingAttributeLocation(name);
    if (location != -1) {
        setAttribute3fv(location, values, stride);
    }
}

void OpenglShader::setAttribute3fv(int location, const float* values, int stride) const {
    setAttribute(location, 3, GL_FLOAT, values, stride);
}

void OpenglShader::setAttribute4fv(const std::string& name, const float* values, int stride) const {
    setAttribute4fv(existingAttributeLocation(name), values, stride);
}

void OpenglShader::setAttribute4fv(int location, const float* values, int stride) const {
    if (location != -1) {
        setAttribute(location, 4, GL_FLOAT, values, stride);
    }
}

void OpenglShader::disableVertexAttributeArray(const std::string& name) {
    const int location = existingAttributeLocation(name);
    if (location != -1) {
        disableVertexAttributeArray(location);
    }
}

void OpenglShader::disableVertexAttributeArray(int location) {
    if (mProgram) {
        glDisableVertexAttribArray(static_cast<GLuint>(location));
    }
}

int OpenglShader::existingAttributeLocation(const std::string& name) const {
    return mProgram ? getAttributeLocation(name) : -1;
}

void OpenglShader::setAttribute(int location, int size, GLenum type, const void* values,
                                int stride) const {
    if (!mProgram) {
        return;
    }
    glEnableVertexAttribArray(static_cast<GLuint>(location));
    glVertexAttribPointer(static_cast<GLuint>(location), size, type, GL_FALSE, stride, values);
}

void dumpShaderErrorS(unsigned int shader, const char* stage) {
    std::printf("Shader %s error:\n%s\n", stage, InfoLog(shader, glGetShaderInfoLog).c_str());
}

} // namespace Kerovane::Tesselune
