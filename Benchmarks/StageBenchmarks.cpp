// Times each stage of a frame alone, including GL's work: glFinish ends every iteration.

#include "Benchmarks/BenchmarkPicture.h"
#include "Benchmarks/Names.h"
#include "Benchmarks/Suites.h"
#include "Host/Session/EffectSession.h"
#include "Plugins/Shared/GL/AEOpenGLContextManager.h"
#include "Plugins/Shared/GL/AEOpenGLUtilities.h"
#include "Plugins/Shared/GL/AEOpenglMainFrameBuffer.h"
#include "Plugins/Shared/GL/SaveRestoreGLContextMac.h"
#include "Plugins/Tesselune/Sources/MosaicShaderManager.h"

#include <benchmark/benchmark.h>

#include <string>
#include <string_view>

namespace Kerovane::Benchmarks {

namespace {

using namespace Tesselune;

/// The environment of a stage: a context, targets, a picture and the host's records.
class Stage {
public:
    Stage(benchmark::State& state, Host::Depth depth)
        : mInput(BenchmarkPicture(depth, static_cast<A_long>(state.range(0)),
                                  static_cast<A_long>(state.range(1)))),
          mOutput(depth, mInput.width(), mInput.height()) {
        mSession.call(PF_Cmd_PARAMS_SETUP);
        AEOpenGLContextManager::setupContextManager();
        AEOpenGLContextManager::getCurrentRenderContext()->makeContextCurrent();
        frameBuffer().prepare(mInput.width(), mInput.height(), true);
    }

    ~Stage() {
        frameBuffer().destory();
        MosaicShaderManager::PurgeAllShaders();
    }

    Stage(const Stage&) = delete;
    Stage& operator=(const Stage&) = delete;

    static AEOpenglMainFrameBuffer& frameBuffer() {
        return *AEOpenglMainFrameBuffer::mainFrameBuffer();
    }

    void set(std::string_view name, double value) {
        mSession.values().set(Host::FindParameter(mSession.parameters(), name)->id(), value);
    }

    void fetchParameters(MosaicRender& renderer) {
        renderer.preaprea(&mSession.inData(), &mSession.outData(), 0, &mInput.layer());
    }

    GLTexture upload() {
        GLTexture texture(AEOpenGLUtilities::UploadTexture(
            Host::PixelFormatOf(mInput.depth()), &mInput.layer(), &mOutput.layer(),
            &mSession.inData(), mBytes, mType, mMultiplier, false));
        return texture;
    }

    void draw(MosaicRender& renderer, const GLTexture& texture) {
        renderer.draw(&mInput.layer(), texture.name(), mMultiplier);
    }

    void download() {
        AEOpenGLUtilities::DownloadTexture(static_cast<unsigned int>(mInput.width()),
                                           static_cast<unsigned int>(mInput.height()),
                                           &mInput.layer(), &mOutput.layer(), &mSession.inData(),
                                           Host::PixelFormatOf(mInput.depth()), mBytes, mType);
    }

    float multiplier() const { return mMultiplier; }

private:
    Host::EffectSession mSession{TESSELUNE_MODULE};
    Host::World mInput;
    Host::World mOutput;
    unsigned long mBytes = 0;
    gl::GLenum mType = gl::GL_UNSIGNED_BYTE;
    float mMultiplier = 1.0F;
};

void ContextSwitch(benchmark::State& state) {
    AEOpenGLContextManager::setupContextManager();
    AEOpenGLContext* effects = AEOpenGLContextManager::getCurrentRenderContext();
    AEOpenGLContext hosts(nullptr);
    for ([[maybe_unused]] auto _ : state) {
        SaveRestoreGLContextMac hostContext;
        effects->makeContextCurrent();
        hostContext.restore();
    }
}

void Parameters(benchmark::State& state, Host::Depth depth) {
    Stage stage(state, depth);
    MosaicRender renderer;
    for ([[maybe_unused]] auto _ : state) {
        stage.fetchParameters(renderer);
    }
}

void BeginDrawing(benchmark::State& state, Host::Depth depth) {
    const Stage stage(state, depth);
    for ([[maybe_unused]] auto _ : state) {
        Stage::frameBuffer().beginDrawing();
        gl::glFinish();
        state.PauseTiming();
        Stage::frameBuffer().clearStack();
        state.ResumeTiming();
    }
}

void Upload(benchmark::State& state, Host::Depth depth) {
    Stage stage(state, depth);
    for ([[maybe_unused]] auto _ : state) {
        const GLTexture texture = stage.upload();
        gl::glFinish();
    }
}

void Draw(benchmark::State& state, int shapeType, int levels) {
    Stage stage(state, Host::Depth::Bits8);
    stage.set("Shape Type", shapeType + 1);
    stage.set("Size Random", levels > 0 ? 100 : 0);
    stage.set("Size Level", levels > 0 ? levels : 3);
    MosaicRender renderer;
    stage.fetchParameters(renderer);
    const GLTexture texture = stage.upload();
    Stage::frameBuffer().beginDrawing();
    stage.draw(renderer, texture);
    gl::glFinish();
    for ([[maybe_unused]] auto _ : state) {
        stage.draw(renderer, texture);
        gl::glFinish();
    }
}

void Resolve(benchmark::State& state, Host::Depth depth) {
    const Stage stage(state, depth);
    for ([[maybe_unused]] auto _ : state) {
        state.PauseTiming();
        Stage::frameBuffer().beginDrawing();
        gl::glFinish();
        state.ResumeTiming();
        const GLTexture picture(Stage::frameBuffer().popRenderContext());
        gl::glFinish();
    }
}

void ScreenPass(benchmark::State& state, Host::Depth depth) {
    Stage stage(state, depth);
    stage.upload(); // sets the multiplier that the depth needs
    Stage::frameBuffer().beginDrawing();
    const GLTexture picture(Stage::frameBuffer().popRenderContext());
    Stage::frameBuffer().beginDrawing();
    ScreenRender pass;
    pass.draw(picture.name(), stage.multiplier());
    gl::glFinish();
    for ([[maybe_unused]] auto _ : state) {
        pass.draw(picture.name(), stage.multiplier());
        gl::glFinish();
    }
}

void ReadBack(benchmark::State& state, Host::Depth depth) {
    Stage stage(state, depth);
    stage.upload(); // sets the pixel type that the depth needs
    Stage::frameBuffer().beginDrawing();
    Stage::frameBuffer().endDrawing(stage.multiplier());
    gl::glFinish();
    for ([[maybe_unused]] auto _ : state) {
        stage.download();
    }
}

/// Times a shader build. Includes a draw, because the driver generates machine code at the first
/// draw.
void ShaderBuild(benchmark::State& state, int shapeType) {
    Stage stage(state, Host::Depth::Bits8);
    stage.set("Shape Type", shapeType + 1);
    MosaicRender renderer;
    stage.fetchParameters(renderer);
    const GLTexture texture = stage.upload();
    Stage::frameBuffer().beginDrawing();
    for ([[maybe_unused]] auto _ : state) {
        MosaicShaderManager::PurgeAllShaders();
        stage.draw(renderer, texture);
        gl::glFinish();
    }
}

benchmark::internal::Benchmark* Register(const std::string& name, auto function,
                                         auto... arguments) {
    return benchmark::RegisterBenchmark(name.c_str(), function, arguments...)
        ->MeasureProcessCPUTime()
        ->UseRealTime()
        ->Unit(benchmark::kMillisecond);
}

void RegisterStage(const std::string& name, auto function, auto... arguments) {
    Register(name, function, arguments...)->Args({1920, 1080});
}

} // namespace

void RegisterStageBenchmarks() {
    Register("Stage/context switch", ContextSwitch);
    for (const Host::Depth depth : kDepths) {
        RegisterStage("Stage/parameters/" + BitsName(depth), Parameters, depth);
        RegisterStage("Stage/begin drawing/" + BitsName(depth), BeginDrawing, depth);
        RegisterStage("Stage/upload/" + BitsName(depth), Upload, depth);
        RegisterStage("Stage/resolve/" + BitsName(depth), Resolve, depth);
        RegisterStage("Stage/screen pass/" + BitsName(depth), ScreenPass, depth);
        RegisterStage("Stage/read-back/" + BitsName(depth), ReadBack, depth);
    }
    for (const int shapeType : {0, 1}) {
        for (const int levels : {0, 5}) {
            RegisterStage("Stage/draw/" + ShapeName(shapeType) + "/" + std::to_string(levels) +
                              " levels",
                          Draw, shapeType, levels);
        }
        // Few pixels, so that the draw takes little of the time.
        Register("Stage/shader build/" + ShapeName(shapeType), ShaderBuild, shapeType)
            ->Args({16, 16});
    }
}

} // namespace Kerovane::Benchmarks
