// Rays per second into a few thousand balls that share one shape: through the scene's picks, through rows of
// rays, and through the ray tracer alone, which is the limit of both.

#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "bench/Ball.h"
#include "bench/Tracer.h"
#include "dg/Camera3D.h"
#include "zrg/RayScene.h"
#include "zrk/scene/PickFlags.h"
#include "zrk/scene/PickScene.h"
#include "zrk/scene/ShapeInstance.h"
#include "zrk/scene/ShapeScene.h"
#include "zrk/tree/ComponentNode.h"
#include "zrk/tree/Instance.h"

namespace {

constexpr int kBalls = 4000;
constexpr int kWidth = 512;
constexpr int kHeight = 512;

/// The balls in a cube of 100 x 100 x 100, for the host's scenes and for the tracer itself.
class Balls {
public:
    static const Balls& Get() {
        static const Balls balls;
        return balls;
    }
    const zrk::PickScene& Picks() const { return *m_picks; }
    const dg::Camera3D& Camera() const { return m_camera; }
    const zrbench::Tracer& Tracer() const { return m_tracer; }

private:
    Balls() {
        std::mt19937 random(1);
        std::uniform_real_distribution<float> place(-50, 50), size(0.5F, 2);
        const auto shape = zrbench::Ball(16);
        const du::SmartPtr<zrk::ComponentNode> node(
            new zrk::ComponentNode("ball", du::SmartPtr<zrk::Shape>(new zrk::Shape(shape))));
        for (int i = 0; i < kBalls; ++i) {
            const float scale = size(random);
            const float x = place(random), y = place(random), z = place(random);
            const dg::Location location(dg::FMat33::Scale({scale, scale, scale}), dg::DPoint3D(x, y, z));
            m_tracer.Add(*shape, location);
            m_scene->CreateShapeInstance(
                new zrk::Instance(du::Symbol("/" + std::to_string(i)), "ball", node, location));
        }
        m_tracer.Commit();
        m_picks = m_scene->GetPickScene();
    }

    const du::SmartPtr<zrk::ShapeScene> m_scene{new zrk::ShapeScene};
    const dg::Camera3D m_camera =
        dg::Camera3D::Orthographic({0, 0, 0}, {-1, 1, -1}, {0, 0, 1}, kWidth / 150.0, kWidth, kHeight, 200);
    std::shared_ptr<const zrk::PickScene> m_picks;
    zrbench::Tracer m_tracer;
};

/// Visits the pixels row by row, over and over.
class Pixels {
public:
    double X() const { return m_next % kWidth; }
    double Y() const { return m_next / kWidth % kHeight; }
    void Step() { ++m_next; }

private:
    int m_next = 0;
};

void SetRate(benchmark::State& state, std::int64_t raysEach, std::int64_t hits) {
    state.SetItemsProcessed(state.iterations() * raysEach);
    state.counters["met"] = static_cast<double>(hits) / static_cast<double>(state.iterations() * raysEach);
}

void PickRays(benchmark::State& state) {
    const Balls& balls = Balls::Get();
    std::int64_t hits = 0;
    for (Pixels pixel; auto _ : state) {
        const auto met = balls.Picks().Pick(balls.Camera().PixelRay(pixel.X(), pixel.Y()), zrk::PICK_ALL);
        hits += met.empty() ? 0 : 1;
        pixel.Step();
    }
    SetRate(state, 1, hits);
}
BENCHMARK(PickRays);

void NearestRays(benchmark::State& state) {
    const Balls& balls = Balls::Get();
    std::int64_t hits = 0;
    for (Pixels pixel; auto _ : state) {
        hits += balls.Picks().GetRays().Nearest(balls.Camera().PixelRay(pixel.X(), pixel.Y())) ? 1 : 0;
        pixel.Step();
    }
    SetRate(state, 1, hits);
}
BENCHMARK(NearestRays);

void RowsOfRays(benchmark::State& state) {
    const Balls& balls = Balls::Get();
    std::vector<zrg::RayHit> row(kWidth);
    std::int64_t hits = 0;
    int y = 0;
    for (auto _ : state) {
        balls.Picks().GetRays().NearestRow(balls.Camera(), 0, y, 1, row);
        y = (y + 1) % kHeight;
        for (const auto& hit : row) hits += hit ? 1 : 0;
    }
    SetRate(state, kWidth, hits);
}
BENCHMARK(RowsOfRays);

void TracerAlone(benchmark::State& state) {
    const Balls& balls = Balls::Get();
    std::int64_t hits = 0;
    std::vector<RTCRayHit> rays;
    for (int i = 0; i < kWidth * kHeight; ++i) {
        rays.push_back(
            zrbench::Tracer::RayOf(balls.Camera().PixelRay(i % kWidth, i / kWidth)));  // made beforehand
    }
    std::size_t next = 0;
    for (auto _ : state) {
        hits += balls.Tracer().Meets(rays[next++ % rays.size()]) ? 1 : 0;
    }
    SetRate(state, 1, hits);
}
BENCHMARK(TracerAlone);

}  // namespace
