#include "Plugins/Shared/GL/OpenglShader.h"

#include "Tests/GL/GLFixture.h"
#include "Tests/Support/GLCalls.h"
#include "Tests/Support/LiveGLObjects.h"

#include <algorithm>
#include <functional>

using namespace gl;
using Kerovane::TestSupport::GLCalls;
using Kerovane::TestSupport::LiveGLObjects;

namespace Kerovane::Tesselune {

namespace {

const std::string kVertex = "#version 330\nin vec4 position; in vec4 weight;\n"
                            "void main() { gl_Position = position + weight; }";
const std::string kFragment = R"(#version 330
uniform int i1; uniform ivec2 i2; uniform ivec3 i3; uniform ivec4 i4;
uniform float f1; uniform vec2 f2; uniform vec3 f3; uniform vec4 f4; uniform sampler2D picture;
uniform mat3 affines[2]; uniform mat4 matrix;
out vec4 colour;
void main() {
    colour = vec4(i1 + i2.x + i3.x + i4.x) + f1 + f2.x + f3.x + f4 + texture(picture, vec2(0))
        + vec4(affines[0] * affines[1] * f3, 1) + matrix * f4;
}
)";
const std::string kUnlinkable = "#version 330\nvoid missing(); void main() { missing(); }";
const std::string kBroken = "#version 330\nvoid main() { nonsense; }";

using OpenglShaderTest = GLFixture;

TEST_F(OpenglShaderTest, MakesNoGLCallBeforeItIsUsed) {
    const GLCalls calls;
    OpenglShader shader(kVertex, kFragment);
    shader.addAttributeBinding("position", 0);
    shader.setUniform1f("f1", 1.0F);
    shader.setUniformTexture("picture", static_cast<int>(GL_TEXTURE_2D), 1, 0);
    shader.setAttribute4fv("position", nullptr, 0);
    shader.setAttribute4fv(0, nullptr, 0);
    shader.disableVertexAttributeArray(0);
    EXPECT_EQ(shader.getUniformLocation("f1"), -1);
    EXPECT_EQ(calls.names(), std::vector<std::string>{});
}

TEST_F(OpenglShaderTest, ReportsAFailedBuildAtEveryUseAndLeavesNothingBehind) {
    const std::string geometry = "#version 330\nlayout(points) in;\n"
                                 "layout(points, max_vertices = 1) out;\nvoid main() {}";
    struct {
        std::string vertex, fragment, geometry, report;
    } const kCases[] = {
        {kBroken, kFragment, "", "Shader vert error:\n"},
        {kVertex, kBroken, "", "Shader frag error:\n"},
        {kVertex, kFragment, kBroken, "Shader geo error:\n"},
        {kVertex, kUnlinkable, "", "Program error:\n"},
        {kVertex, kUnlinkable, geometry, "Program error:\n"},
    };
    for (const auto& [vertex, fragment, geometrySource, report] : kCases) {
        const LiveGLObjects live;
        OpenglShader shader(vertex, fragment, geometrySource);
        testing::internal::CaptureStdout();
        shader.useProgram();
        const std::string first = testing::internal::GetCapturedStdout();
        testing::internal::CaptureStdout();
        shader.useProgram();
        EXPECT_EQ(testing::internal::GetCapturedStdout(), first);
        EXPECT_EQ(first.substr(0, report.size()), report) << first;
        EXPECT_GT(first.size(), report.size() + 1) << "the log is missing";
        EXPECT_EQ(live.counts(), (std::map<std::string, int>{})) << report;
    }
}

TEST_F(OpenglShaderTest, DeletesItsShadersOnceTheProgramIsLinked) {
    const std::string geometry = "#version 330\nlayout(triangles) in;\n"
                                 "layout(triangle_strip, max_vertices = 3) out;\nvoid main() {}";
    for (const auto& [source, stages] : {std::pair(std::string(), 2), std::pair(geometry, 3)}) {
        OpenglShader shader(kVertex, kFragment, source);
        const GLCalls calls;
        shader.buildShader();
        EXPECT_EQ(calls.count("glDetachShader"), stages);
        EXPECT_EQ(calls.count("glDeleteShader"), stages);
        EXPECT_EQ(calls.names().back(), "glDeleteShader");
    }
}

TEST_F(OpenglShaderTest, TruncatesALongLog) {
    const std::string longText(2000, 'x');
    OpenglShader shader(kVertex, "#version 330\n#error " + longText + "\nvoid main() {}");
    testing::internal::CaptureStdout();
    shader.useProgram();
    const std::string report = testing::internal::GetCapturedStdout();
    EXPECT_GT(std::ranges::count(report, 'x'), 400);
    EXPECT_LE(report.size(), std::string("Shader frag error:\n\n").size() + 512);
}

TEST_F(OpenglShaderTest, SetsUniformsThatTheProgramHas) {
    OpenglShader shader(kVertex, kFragment);
    shader.useProgram();
    const int ints[] = {5, 6, 7, 8};
    const float floats[] = {0.5F, 0.25F, -1.5F, 8.0F};
    Affine affines[] = {Affine(1, 2, 3, 4, 5, 6), Affine(7, 8, 9, 10, 11, 12)};
    const Mat4 matrix(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, true);
    const Color color(0.25, 0.5, 0.75, 1.0);
    using Name = const std::string&;
    struct {
        const char* name;
        std::vector<float> expected;
        std::function<void(Name)> set;
    } const kCases[] = {
        {"i1", {1}, [&](Name name) { shader.setUniform1i(name, 1); }},
        {"i2", {1, 2}, [&](Name name) { shader.setUniform2i(name, 1, 2); }},
        {"i3", {1, 2, 3}, [&](Name name) { shader.setUniform3i(name, 1, 2, 3); }},
        {"i4", {1, 2, 3, 4}, [&](Name name) { shader.setUniform4i(name, 1, 2, 3, 4); }},
        {"i1", {5}, [&](Name name) { shader.setUniform1iv(name, ints, 1); }},
        {"i2", {5, 6}, [&](Name name) { shader.setUniform2iv(name, ints, 1); }},
        {"i3", {5, 6, 7}, [&](Name name) { shader.setUniform3iv(name, ints, 1); }},
        {"i4", {5, 6, 7, 8}, [&](Name name) { shader.setUniform4iv(name, ints, 1); }},
        {"f1", {1.5}, [&](Name name) { shader.setUniform1f(name, 1.5F); }},
        {"f2", {1.5, 2}, [&](Name name) { shader.setUniform2f(name, 1.5F, 2.0F); }},
        {"f3", {1.5, 2, 3}, [&](Name name) { shader.setUniform3f(name, 1.5F, 2.0F, 3.0F); }},
        {"f4", {1, 2, 3, 4}, [&](Name name) { shader.setUniform4f(name, 1, 2, 3, 4); }},
        {"f1", {0.5}, [&](Name name) { shader.setUniform1fv(name, floats, 1); }},
        {"f2", {0.5, 0.25}, [&](Name name) { shader.setUniform2fv(name, floats, 1); }},
        {"f3", {0.5, 0.25, -1.5}, [&](Name name) { shader.setUniform3fv(name, floats, 1); }},
        {"f4", {0.5, 0.25, -1.5, 8}, [&](Name name) { shader.setUniform4fv(name, floats, 1); }},
        {"f2", {0.1F, 2}, [&](Name name) { shader.setUniform2f(name, Vec2(0.1, 2)); }},
        {"f3", {0.1F, 2, 3}, [&](Name name) { shader.setUniform3f(name, Vec3(0.1, 2, 3)); }},
        {"f4", {0.1F, 2, 3, 4}, [&](Name name) { shader.setUniform4f(name, Vec4(0.1, 2, 3, 4)); }},
        {"f4", {0.25, 0.5, 0.75, 1}, [&](Name name) { shader.setUniform4f(name, color); }},
        {"affines",
         {1, 2, 0, 3, 4, 0, 5, 6, 1},
         [&](Name name) { shader.setUniformMatrix3f(name, affines, 2); }},
        {"affines[1]", {7, 8, 0, 9, 10, 0, 11, 12, 1}, [](Name) {}},
        {"matrix",
         {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16},
         [&](Name name) { shader.setUniformMatrix4f(name, matrix, 1); }},
    };
    int program = 0;
    glGetIntegerv(GL_CURRENT_PROGRAM, &program);
    for (const auto& [name, expected, set] : kCases) {
        set(name);
        std::vector<float> values(16);
        glGetUniformfv(static_cast<GLuint>(program), shader.getUniformLocation(name),
                       values.data());
        values.resize(expected.size());
        EXPECT_EQ(values, expected) << name;
    }
    const GLCalls calls;
    for (const auto& [name, expected, set] : kCases) {
        set("missing");
    }
    shader.setUniformTexture("missing", static_cast<int>(GL_TEXTURE_2D), 0, 3);
    EXPECT_TRUE(std::ranges::none_of(
        calls.names(), [](const std::string& name) { return name.starts_with("glUniform"); }));
    EXPECT_EQ(calls.count("glBindTexture"), 1) << "the texture is bound in every case";
}

TEST_F(OpenglShaderTest, BindsATextureToItsUnit) {
    OpenglShader shader(kVertex, kFragment);
    shader.useProgram();
    const GLTexture texture = FloatTexture({Texel{}}, 1);
    shader.setUniformTexture("picture", static_cast<int>(GL_TEXTURE_2D),
                             static_cast<int>(texture.name()), 2);
    int active = 0;
    int bound = 0;
    glGetIntegerv(GL_ACTIVE_TEXTURE, &active);
    glGetIntegerv(GL_TEXTURE_BINDING_2D, &bound);
    EXPECT_EQ(active, static_cast<int>(GL_TEXTURE2));
    EXPECT_EQ(bound, static_cast<int>(texture.name()));
    int program = 0;
    int unit = 0;
    glGetIntegerv(GL_CURRENT_PROGRAM, &program);
    glGetUniformiv(static_cast<GLuint>(program), shader.getUniformLocation("picture"), &unit);
    EXPECT_EQ(unit, 2);
}

TEST_F(OpenglShaderTest, KeepsTheFirstBindingOfAnAttribute) {
    OpenglShader shader(kVertex, kFragment);
    shader.addAttributeBinding("position", 5);
    shader.addAttributeBinding("position", 2);
    shader.addAttributeBinding("weight", 3);
    shader.useProgram();
    EXPECT_EQ(shader.getAttributeLocation("position"), 5);
    EXPECT_EQ(shader.getAttributeLocation("weight"), 3);
    EXPECT_EQ(shader.getAttributeLocation("missing"), -1);
}

TEST_F(OpenglShaderTest, DescribesAndDisablesAttributes) {
    OpenglShader shader(kVertex, kFragment);
    shader.addAttributeBinding("position", 4);
    shader.useProgram();
    const GLVertexArray vertexArray = GLVertexArray::generated();
    const GLBuffer buffer = GLBuffer::generated();
    glBindVertexArray(vertexArray.name());
    glBindBuffer(GL_ARRAY_BUFFER, buffer.name());

    const auto get = [](GLenum what) {
        int value = 0;
        glGetVertexAttribiv(4, what, &value);
        return value;
    };
    struct {
        int size;
        GLenum type;
        std::function<void()> set;
    } const kCases[] = {
        {1, GL_INT, [&] { shader.setAttribute1iv(4, nullptr, 32); }},
        {1, GL_FLOAT, [&] { shader.setAttribute1fv(4, nullptr, 32); }},
        {2, GL_FLOAT, [&] { shader.setAttribute2fv(4, nullptr, 32); }},
        {3, GL_FLOAT, [&] { shader.setAttribute3fv(4, nullptr, 32); }},
        {4, GL_FLOAT, [&] { shader.setAttribute4fv(4, nullptr, 32); }},
        {1, GL_FLOAT, [&] { shader.setAttribute1fv("position", nullptr, 32); }},
        {2, GL_FLOAT, [&] { shader.setAttribute2fv("position", nullptr, 32); }},
        {3, GL_FLOAT, [&] { shader.setAttribute3fv("position", nullptr, 32); }},
        {4, GL_FLOAT, [&] { shader.setAttribute4fv("position", nullptr, 32); }},
    };
    for (const auto& [size, type, set] : kCases) {
        set();
        EXPECT_EQ(get(GL_VERTEX_ATTRIB_ARRAY_ENABLED), 1);
        EXPECT_EQ(get(GL_VERTEX_ATTRIB_ARRAY_SIZE), size);
        EXPECT_EQ(get(GL_VERTEX_ATTRIB_ARRAY_TYPE), static_cast<int>(type));
        EXPECT_EQ(get(GL_VERTEX_ATTRIB_ARRAY_STRIDE), 32);
        shader.disableVertexAttributeArray(4);
        EXPECT_EQ(get(GL_VERTEX_ATTRIB_ARRAY_ENABLED), 0);
    }
    kCases[0].set();
    shader.disableVertexAttributeArray("position");
    EXPECT_EQ(get(GL_VERTEX_ATTRIB_ARRAY_ENABLED), 0);
}

} // namespace

} // namespace Kerovane::Tesselune
