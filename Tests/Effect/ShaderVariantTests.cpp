#include "Plugins/Tesselune/Sources/MosaicShaderManager.h"

#include "Plugins/Shared/GL/AEOpenGLContext.h"
#include "Tests/Support/GLObserver.h"

#include <glbinding/Binding.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <set>
#include <string>
#include <vector>

using namespace gl;

namespace Kerovane::Tesselune {

namespace {

std::vector<MosaicRenderParam> AllKeys() {
    std::vector<MosaicRenderParam> keys;
    for (const int shape : {0, 1}) {
        for (const int transition : {1, 2, 3}) {
            for (const bool feather : {false, true}) {
                keys.push_back({shape, transition, feather});
            }
        }
    }
    return keys;
}

/** A test with a GL context and an empty cache of shader variants. */
class ShaderVariants : public testing::Test {
protected:
    ~ShaderVariants() override { MosaicShaderManager::PurgeAllShaders(); }

    /// Returns the fragment shader's source, as passed to GL.
    static std::string fragmentSource(const MosaicRenderParam& key) {
        // Copies the source during glShaderSource, because OpenglShader deletes its shaders after
        // linking.
        const std::unique_ptr<OpenglShader> shader(MosaicShaderManager::CreateShader(key));
        std::string source;
        const TestSupport::GLObserver texts(glbinding::Binding::ShaderSource,
                                            [&source](GLuint, GLsizei, const GLchar* const* text,
                                                      const GLint*) { source = *text; });
        shader->useProgram();
        return source;
    }

    AEOpenGLContext mContext{nullptr};
};

TEST_F(ShaderVariants, AreMadeOnceForEachKey) {
    std::set<OpenglShader*> programs;
    for (int round = 0; round < 2; ++round) {
        for (const MosaicRenderParam& key : AllKeys()) {
            programs.insert(MosaicShaderManager::GetShader(key));
        }
    }
    EXPECT_EQ(programs.size(), 12U);
}

TEST_F(ShaderVariants, CompileWithoutMessages) {
    for (const MosaicRenderParam& key : AllKeys()) {
        testing::internal::CaptureStdout();
        MosaicShaderManager::GetShader(key)->useProgram();
        EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
        EXPECT_NE(MosaicShaderManager::GetShader(key)->getUniformLocation("videoTexture"), -1);
    }
}

TEST_F(ShaderVariants, PassTheGlslReferenceCompiler) {
    const std::filesystem::path file =
        std::filesystem::path(testing::TempDir()) / "TesseluneVariant.frag";
    for (const MosaicRenderParam& key : AllKeys()) {
        std::ofstream(file) << fragmentSource(key);
        const std::string command = std::string(GLSLANG_VALIDATOR) + " " + file.string();
        EXPECT_EQ(std::system(command.c_str()), 0); // NOLINT(cert-env33-c): the command is ours
    }
    std::filesystem::remove(file);
}

} // namespace

} // namespace Kerovane::Tesselune
