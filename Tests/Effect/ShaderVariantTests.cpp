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

/** A test with a GL context and an empty cache of variants. */
class ShaderVariants : public testing::Test {
protected:
    ~ShaderVariants() override { MosaicShaderManager::PurgeAllShaders(); }

    /// The program's fragment source, as GL got it.
    static std::string fragmentSource(const MosaicRenderParam& key) {
        // The object deletes its shaders when it has linked them, so a stop before that is needed.
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

int Occurrences(const std::string& text, const std::string& part) {
    int count = 0;
    for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
        ++count;
    }
    return count;
}

TEST_F(ShaderVariants, AreMadeOnceForEachKey) {
    std::set<OpenglShader*> programs;
    for (int round = 0; round < 2; ++round) {
        for (const MosaicRenderParam& key : AllKeys()) {
            programs.insert(MosaicShaderManager::GetShader(key));
        }
    }
    EXPECT_EQ(programs.size(), 12U);
}

TEST_F(ShaderVariants, AllBuildOnTheGL) {
    for (const MosaicRenderParam& key : AllKeys()) {
        testing::internal::CaptureStdout();
        MosaicShaderManager::GetShader(key)->useProgram();
        EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
        EXPECT_NE(MosaicShaderManager::GetShader(key)->getUniformLocation("videoTexture"), -1);
    }
}

TEST_F(ShaderVariants, AreValidByTheLanguagesReferenceCompiler) {
    const std::filesystem::path file =
        std::filesystem::path(testing::TempDir()) / "TesseluneVariant.frag";
    for (const MosaicRenderParam& key : AllKeys()) {
        std::ofstream(file) << fragmentSource(key);
        const std::string command = std::string(GLSLANG_VALIDATOR) + " " + file.string();
        EXPECT_EQ(std::system(command.c_str()), 0); // NOLINT(cert-env33-c): the command is ours
    }
    std::filesystem::remove(file);
}

TEST_F(ShaderVariants, HoldOneFormOfEachTransitionAndCallOne) {
    const std::string kCalls[] = {"dissolveTransitionLinear", "dissolveTransitionRadioIn",
                                  "dissolveTransitionRadioOut"};
    for (const MosaicRenderParam& key : AllKeys()) {
        const std::string source = fragmentSource(key);
        EXPECT_EQ(source.find("#version 330\n"), 0U);
        EXPECT_EQ(source.back(), '}');
        for (int transition = 1; transition <= 3; ++transition) {
            const std::string& name = kCalls[transition - 1];
            EXPECT_EQ(Occurrences(source, "void " + name + "("), 1);
            EXPECT_EQ(Occurrences(source, "    " + name + "(sample);\n}\n"),
                      key.transitionType == transition ? 1 : 0);
        }
        EXPECT_EQ(Occurrences(source, "getSquareColor(") > 0, key.shapeType == 0);
        EXPECT_EQ(Occurrences(source, "getTriangleColor(") > 0, key.shapeType == 1);
        EXPECT_EQ(Occurrences(source, "fadeFeatherPercent") > 0, key.hasFeather);
    }
}

} // namespace

} // namespace Kerovane::Tesselune
