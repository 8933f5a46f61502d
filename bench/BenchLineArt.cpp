// Line art of many parts: finding their edges once, then drawing a picture of 1200 x 900 pixels.

#include <benchmark/benchmark.h>

#include <cmath>

#include "app/lineart/LineArtist.h"
#include "bench/Ball.h"
#include "dg/Camera3D.h"
#include "zrg/RayScene.h"

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

BENCHMARK(FindEdges)->RangeMultiplier(4)->Range(16, 1024)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(DrawLines)->RangeMultiplier(4)->Range(16, 1024)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
