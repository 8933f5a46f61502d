// Line art of many parts: finding their edges once, then drawing a picture of 1200 x 900 pixels; and of a
// STEP file, from reading it to the SVG.

#include <benchmark/benchmark.h>
#include <unistd.h>

#include <chrono>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <utility>

#include "app/document/Document.h"
#include "app/export/ExportSheet.h"
#include "app/import/process/ImportModel.h"
#include "app/lineart/LineArtist.h"
#include "app/sheet/Figure.h"
#include "app/sheet/SheetMaker.h"
#include "bench/Ball.h"
#include "dg/Camera3D.h"
#include "zrg/RayScene.h"
#include "zrkapp/illustration/HostSession.h"

namespace {

constexpr unsigned kThreads = 2;

/// `count` balls side by side, each a fifth into the next; half of them stretched.
class Parts {
public:
    explicit Parts(std::int64_t count) {
        const auto columns = static_cast<std::int64_t>(std::ceil(std::sqrt(static_cast<double>(count))));
        const auto shape = zrbench::Ball(12);
        for (std::int64_t i = 0; i < count; ++i) {
            const double x = 1.8 * static_cast<double>(i % columns);
            const double y = 1.8 * static_cast<double>(i / columns);
            const dg::FVec3 scale(1.0F, 1.0F, i % 2 == 0 ? 1.0F : 2.0F);
            m_scene.Add(shape, dg::Location(dg::FMat33::Scale(scale), {x, y, 0.0}));
        }
        m_scene.Commit();
        const double size = 1.8 * static_cast<double>(columns);
        m_camera = dg::Camera3D::Orthographic({0.5 * size, 0.5 * size, 0}, {-0.5, 0.6, -1}, {0, 1, 0},
                                              800.0 / size, 1200, 900, 10.0 * size);
    }
    const zrg::RayScene& Scene() const { return m_scene; }
    const dg::Camera3D& Camera() const { return m_camera; }

private:
    zrg::RayScene m_scene;
    dg::Camera3D m_camera;
};

void FindEdges(benchmark::State& state) {
    const Parts parts(state.range(0));
    for (auto _ : state) {
        const zrsheet::LineArtist artist(parts.Scene(), {}, kThreads);
        benchmark::DoNotOptimize(&artist);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void DrawLines(benchmark::State& state) {
    const Parts parts(state.range(0));
    const zrsheet::LineArtist artist(parts.Scene(), {}, kThreads);
    for (auto _ : state) benchmark::DoNotOptimize(artist.Draw(parts.Camera()));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

double SecondsSince(std::chrono::steady_clock::time_point start) {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

void DrawSvg(zrsheet::Assembly assembly, const std::filesystem::path& svg) {
    const zrkapp::illustration::HostSession session(kThreads);
    zrsheet::Document document(std::move(assembly), {});
    zrsheet::FrameModel(document, {});
    ExportSheet(zrsheet::DrawSheet(document, kThreads), svg);
}

/// Reading and triangulating in the reader's process, as the application does without its cache; then all
/// that a sheet without callouts takes. `ratio` is drawing to reading.
void StepToSvg(benchmark::State& state, const char* file) {
    const char* models = std::getenv("ZR_MODELS");
    const auto model = std::filesystem::path(models != nullptr ? models : ZR_MODELS) / file;
    if (!std::filesystem::exists(model)) {
        state.SkipWithError("the file is not there; ZR_MODELS names its folder");
        return;
    }
    const auto svg = std::filesystem::temp_directory_path() / ("bench-" + std::to_string(getpid()) + ".svg");
    double reading = 0.0;
    double drawing = 0.0;
    for (auto _ : state) {
        const auto start = std::chrono::steady_clock::now();
        zrsheet::Assembly assembly = zrsheet::ImportModel(model);
        reading += SecondsSince(start);
        const auto middle = std::chrono::steady_clock::now();
        DrawSvg(std::move(assembly), svg);
        drawing += SecondsSince(middle);
    }
    std::filesystem::remove(svg);
    const auto runs = static_cast<double>(state.iterations());
    state.counters["read_ms"] = 1000.0 * reading / runs;
    state.counters["draw_ms"] = 1000.0 * drawing / runs;
    state.counters["ratio"] = drawing / reading;
}

BENCHMARK(FindEdges)->RangeMultiplier(4)->Range(16, 1024)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(DrawLines)->RangeMultiplier(4)->Range(16, 1024)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(StepToSvg, 576 parts, "step/as1_x32_scale.step")
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->MinTime(3.0);
BENCHMARK_CAPTURE(StepToSvg, 18 parts, "step/as1-oc-214.stp")
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->MinTime(3.0);
BENCHMARK_CAPTURE(StepToSvg, V4 engine, "step/asm4_V4_engine.step")
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->MinTime(3.0);

}  // namespace
