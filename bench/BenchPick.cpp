// Rays per second into a few thousand balls that share one shape: through the scene's picks, through rows of
// rays, and through the ray tracer alone, which is the limit of both.

#include <benchmark/benchmark.h>
#include <embree3/rtcore.h>

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <numbers>
#include <random>
#include <string>
#include <vector>

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

/// A ball of radius 1: `rings` rings of twice as many vertices.
du::SmartPtr<zrg::Shape> Ball(unsigned rings) {
    std::vector<float> positions;
    std::vector<std::uint32_t> indices;
    const unsigned sectors = 2 * rings;
    for (unsigned ring = 0; ring <= rings; ++ring) {
        const double polar = std::numbers::pi * ring / rings;
        for (unsigned sector = 0; sector < sectors; ++sector) {
            const double around = 2.0 * std::numbers::pi * sector / sectors;
            for (const double value :
                 {std::sin(polar) * std::cos(around), std::sin(polar) * std::sin(around), std::cos(polar)}) {
                positions.push_back(static_cast<float>(value));
            }
            if (ring == rings) continue;
            const unsigned here = ring * sectors + sector;
            const unsigned beside = ring * sectors + (sector + 1) % sectors;
            indices.insert(indices.end(),
                           {here, here + sectors, beside, beside, here + sectors, beside + sectors});
        }
    }
    return new zrg::Shape(positions, indices);
}

/// The balls in a cube of 100 x 100 x 100, for the host's scenes and for the tracer itself.
class Balls {
public:
    static const Balls& Get() {
        static const Balls balls;
        return balls;
    }
    const zrk::PickScene& Picks() const { return *m_picks; }
    const dg::Camera3D& Camera() const { return m_camera; }
    RTCScene Tracer() const { return m_tracer; }

private:
    Balls() {
        std::mt19937 random(1);
        std::uniform_real_distribution<float> place(-50, 50), size(0.5F, 2);
        const auto shape = Ball(16);
        const du::SmartPtr<zrk::ComponentNode> node(
            new zrk::ComponentNode("ball", du::SmartPtr<zrk::Shape>(new zrk::Shape(shape))));
        const RTCDevice device = rtcNewDevice(nullptr);
        const RTCScene ball = BuildBall(device, *shape);
        m_tracer = NewTracerScene(device);
        for (int i = 0; i < kBalls; ++i) {
            const float scale = size(random);
            const std::array<float, 12> columns{
                scale, 0, 0, 0, scale, 0, 0, 0, scale, place(random), place(random), place(random)};
            AddToTracer(device, ball, columns);
            AddToScene(node, columns, i);
        }
        rtcCommitScene(m_tracer);
        m_picks = m_scene->GetPickScene();
    }

    static RTCScene NewTracerScene(RTCDevice device) {
        const RTCScene scene = rtcNewScene(device);
        rtcSetSceneFlags(scene, RTC_SCENE_FLAG_ROBUST);
        return scene;
    }

    static RTCScene BuildBall(RTCDevice device, const zrg::Shape& shape) {
        const RTCGeometry mesh = rtcNewGeometry(device, RTC_GEOMETRY_TYPE_TRIANGLE);
        const auto positions = shape.GetPositions();
        const auto indices = shape.GetIndices();
        std::copy(
            positions.begin(), positions.end(),
            static_cast<float*>(rtcSetNewGeometryBuffer(mesh, RTC_BUFFER_TYPE_VERTEX, 0, RTC_FORMAT_FLOAT3,
                                                        3 * sizeof(float), positions.size() / 3)));
        std::copy(indices.begin(), indices.end(),
                  static_cast<std::uint32_t*>(
                      rtcSetNewGeometryBuffer(mesh, RTC_BUFFER_TYPE_INDEX, 0, RTC_FORMAT_UINT3,
                                              3 * sizeof(std::uint32_t), indices.size() / 3)));
        rtcCommitGeometry(mesh);
        const RTCScene scene = NewTracerScene(device);
        rtcAttachGeometry(scene, mesh);
        rtcReleaseGeometry(mesh);
        rtcCommitScene(scene);
        return scene;
    }

    void AddToTracer(RTCDevice device, RTCScene ball, const std::array<float, 12>& columns) {
        const RTCGeometry instance = rtcNewGeometry(device, RTC_GEOMETRY_TYPE_INSTANCE);
        rtcSetGeometryInstancedScene(instance, ball);
        rtcSetGeometryTransform(instance, 0, RTC_FORMAT_FLOAT3X4_COLUMN_MAJOR, columns.data());
        rtcCommitGeometry(instance);
        rtcAttachGeometry(m_tracer, instance);
        rtcReleaseGeometry(instance);
    }

    void AddToScene(const du::SmartPtr<zrk::ComponentNode>& node, const std::array<float, 12>& columns,
                    int number) {
        const dg::Location location(dg::FMat33::Scale({columns[0], columns[0], columns[0]}),
                                    dg::DPoint3D(columns[9], columns[10], columns[11]));
        m_scene->CreateShapeInstance(
            new zrk::Instance(du::Symbol("/" + std::to_string(number)), "ball", node, location));
    }

    const du::SmartPtr<zrk::ShapeScene> m_scene{new zrk::ShapeScene};
    const dg::Camera3D m_camera =
        dg::Camera3D::Orthographic({0, 0, 0}, {-1, 1, -1}, {0, 0, 1}, kWidth / 150.0, kWidth, kHeight, 200);
    std::shared_ptr<const zrk::PickScene> m_picks;
    RTCScene m_tracer = nullptr;  // lives as long as the process
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

RTCRayHit TracerRay(const dg::Ray& ray) {
    RTCRayHit hit{};
    hit.ray.org_x = static_cast<float>(ray.origin.x);
    hit.ray.org_y = static_cast<float>(ray.origin.y);
    hit.ray.org_z = static_cast<float>(ray.origin.z);
    hit.ray.dir_x = static_cast<float>(ray.direction.x);
    hit.ray.dir_y = static_cast<float>(ray.direction.y);
    hit.ray.dir_z = static_cast<float>(ray.direction.z);
    hit.ray.tfar = std::numeric_limits<float>::infinity();
    hit.ray.mask = 0xFFFFFFFFU;
    hit.hit.geomID = RTC_INVALID_GEOMETRY_ID;
    hit.hit.instID[0] = RTC_INVALID_GEOMETRY_ID;
    return hit;
}

void TracerAlone(benchmark::State& state) {
    const Balls& balls = Balls::Get();
    std::int64_t hits = 0;
    std::vector<RTCRayHit> rays;
    for (int i = 0; i < kWidth * kHeight; ++i) {
        rays.push_back(TracerRay(balls.Camera().PixelRay(i % kWidth, i / kWidth)));  // made beforehand
    }
    std::size_t next = 0;
    for (auto _ : state) {
        RTCIntersectContext context;
        rtcInitIntersectContext(&context);
        RTCRayHit ray = rays[next++ % rays.size()];
        rtcIntersect1(balls.Tracer(), &context, &ray);
        hits += ray.hit.geomID != RTC_INVALID_GEOMETRY_ID ? 1 : 0;
    }
    SetRate(state, 1, hits);
}
BENCHMARK(TracerAlone);

}  // namespace
