#include "zrg/RayScene.h"

#include <embree3/rtcore.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <future>
#include <limits>
#include <thread>
#include <unordered_map>
#include <utility>

#include "dg/FBox.h"

namespace zrg {
namespace {

constexpr std::size_t kStream = 128;  // rays handed over together

/// One for the process, and never released: shapes may be freed while the program ends.
RTCDevice Device() {
    static RTCDevice const device = rtcNewDevice(nullptr);
    return device;
}

/// Once committed it may be asked, and be part of other scenes, on any thread.
using ScenePtr = std::shared_ptr<RTCSceneTy>;

ScenePtr NewScene() {
    RTCScene scene = rtcNewScene(Device());
    rtcSetSceneFlags(scene, RTC_SCENE_FLAG_ROBUST);
    return {scene, rtcReleaseScene};
}

ScenePtr BuildShape(const Shape& shape) {
    ScenePtr scene = NewScene();
    if (shape.GetTriangleCount() > 0) {
        RTCGeometry mesh = rtcNewGeometry(Device(), RTC_GEOMETRY_TYPE_TRIANGLE);
        const auto positions = shape.GetPositions();
        const auto indices = shape.GetIndices();
        auto* vertices = static_cast<float*>(rtcSetNewGeometryBuffer(
            mesh, RTC_BUFFER_TYPE_VERTEX, 0, RTC_FORMAT_FLOAT3, 3 * sizeof(float), positions.size() / 3));
        std::copy(positions.begin(), positions.end(), vertices);
        auto* triangles = static_cast<std::uint32_t*>(
            rtcSetNewGeometryBuffer(mesh, RTC_BUFFER_TYPE_INDEX, 0, RTC_FORMAT_UINT3,
                                    3 * sizeof(std::uint32_t), shape.GetTriangleCount()));
        std::copy(indices.begin(), indices.end(), triangles);
        rtcCommitGeometry(mesh);
        rtcAttachGeometry(scene.get(), mesh);
        rtcReleaseGeometry(mesh);
    }
    rtcCommitScene(scene.get());
    return scene;
}

/// One shape is too little work to be shared out; many are dealt to threads as those come for them.
void BuildShapes(const std::vector<std::pair<const Shape*, ScenePtr*>>& shapes) {
    constexpr std::size_t kEnough = 64;  // for a second thread
    constexpr std::size_t kDeal = 16;    // at once
    std::atomic<std::size_t> next{0};
    const auto build = [&] {
        for (std::size_t first = next.fetch_add(kDeal); first < shapes.size();
             first = next.fetch_add(kDeal)) {
            const std::size_t end = std::min(first + kDeal, shapes.size());
            for (std::size_t i = first; i < end; ++i) *shapes[i].second = BuildShape(*shapes[i].first);
        }
    };
    std::vector<std::future<void>> helpers;
    const std::size_t cores = std::max(std::thread::hardware_concurrency(), 1U);
    const std::size_t threads = std::min(cores, shapes.size() / kEnough + 1);
    for (std::size_t i = 1; i < threads; ++i) helpers.push_back(std::async(std::launch::async, build));
    build();
    for (auto& helper : helpers) helper.get();  // throws what was thrown there
}

// Rows of rays are not marked as coherent: on finely meshed parts, where the time goes, that costs more than
// it saves.
RTCIntersectContext Context() {
    RTCIntersectContext context;
    rtcInitIntersectContext(&context);
    return context;
}

RTCRayHit ToEmbree(const dg::DPoint3D& origin, const dg::DVec3& direction, std::uint32_t mask) {
    RTCRayHit hit{};
    hit.ray.org_x = static_cast<float>(origin.x);
    hit.ray.org_y = static_cast<float>(origin.y);
    hit.ray.org_z = static_cast<float>(origin.z);
    hit.ray.dir_x = static_cast<float>(direction.x);
    hit.ray.dir_y = static_cast<float>(direction.y);
    hit.ray.dir_z = static_cast<float>(direction.z);
    hit.ray.tfar = std::numeric_limits<float>::infinity();
    hit.ray.mask = mask;
    hit.hit.geomID = RTC_INVALID_GEOMETRY_ID;
    hit.hit.instID[0] = RTC_INVALID_GEOMETRY_ID;
    return hit;
}

/// A direction from local to outer coordinates or, with the inverse, back.
dg::DVec3 Turn(const dg::DVec3& v, const dg::DMat44& m) {
    return {v.x * m(0, 0) + v.y * m(1, 0) + v.z * m(2, 0), v.x * m(0, 1) + v.y * m(1, 1) + v.z * m(2, 1),
            v.x * m(0, 2) + v.y * m(1, 2) + v.z * m(2, 2)};
}

/// A normal turns by the inverse transposed.
dg::DVec3 TurnNormal(const dg::DVec3& n, const dg::DMat44& inverse) {
    return dg::DVec3(n.x * inverse(0, 0) + n.y * inverse(0, 1) + n.z * inverse(0, 2),
                     n.x * inverse(1, 0) + n.y * inverse(1, 1) + n.z * inverse(1, 2),
                     n.x * inverse(2, 0) + n.y * inverse(2, 1) + n.z * inverse(2, 2))
        .Normalized();
}

/// A placed shape.
struct Placement {
    du::SmartPtr<Shape> shape;
    const ScenePtr* scene = nullptr;  // the shape's own, in the scene's table
    dg::DMat44 toWorld;
    dg::DMat44 toLocal;
    std::uint32_t mask = RayScene::kEverything;
};

}  // namespace

class RayScene::Impl {
public:
    explicit Impl(const Impl* former) : m_former(former) {}

    std::uint32_t Add(const du::SmartPtr<Shape>& shape, const dg::Location& location, std::uint32_t mask) {
        const auto [known, isNew] = m_shapes.try_emplace(shape);
        if (isNew) Find(shape, known->second);
        const dg::DMat44 toWorld = location.GetXform();
        m_placements.push_back({shape, &known->second, toWorld, toWorld.Invert(), mask});
        dg::FBox box;
        if (shape->ComputeDefaultBBox(box)) m_box.Enclose(box * location);
        return static_cast<std::uint32_t>(m_placements.size() - 1);
    }

    // Everything is moved to the middle of the scene, where single precision is finest.
    void Commit() {
        if (!m_box.IsEmpty()) {
            m_origin = dg::DVec3(0.5 * (static_cast<double>(m_box.min.x) + static_cast<double>(m_box.max.x)),
                                 0.5 * (static_cast<double>(m_box.min.y) + static_cast<double>(m_box.max.y)),
                                 0.5 * (static_cast<double>(m_box.min.z) + static_cast<double>(m_box.max.z)));
        }
        BuildShapes(m_toBuild);
        m_toBuild.clear();
        m_former = nullptr;
        m_top = NewScene();
        for (std::size_t i = 0; i < m_placements.size(); ++i) AttachPlacement(static_cast<unsigned>(i));
        rtcCommitScene(m_top.get());
    }

    RayHit Nearest(const dg::Ray& ray, std::uint32_t mask) const {
        RTCIntersectContext context = Context();
        RTCRayHit hit = ToEmbree(ray.origin + m_origin * -1.0, ray.direction, mask);
        rtcIntersect1(m_top.get(), &context, &hit);
        return Resolve(ray, hit);
    }

    bool IsBlocked(const dg::Ray& ray, double from, double to) const {
        RTCIntersectContext context = Context();
        RTCRay probe = ToEmbree(ray.origin + m_origin * -1.0, ray.direction, kEverything).ray;
        probe.tnear = static_cast<float>(from);
        probe.tfar = static_cast<float>(to);
        rtcOccluded1(m_top.get(), &context, &probe);
        return probe.tfar < 0.0F;
    }

    RayHit NearestOf(const dg::Ray& ray, std::uint32_t index) const {
        const Placement& placement = m_placements.at(index);
        RTCIntersectContext context = Context();
        // The direction keeps its local length, so that distances along the ray stay the world's.
        RTCRayHit hit =
            ToEmbree(ray.origin * placement.toLocal, Turn(ray.direction, placement.toLocal), kEverything);
        rtcIntersect1(placement.scene->get(), &context, &hit);
        if (hit.hit.geomID == RTC_INVALID_GEOMETRY_ID) return {};
        hit.hit.instID[0] = index;
        return Resolve(ray, hit);
    }

    void NearestRow(const dg::Camera3D& camera, double x, double y, double step, std::span<RayHit> hits,
                    std::uint32_t mask) const {
        std::array<RTCRayHit, kStream> stream;
        std::array<dg::Ray, kStream> rays;
        for (std::size_t first = 0; first < hits.size(); first += kStream) {
            const std::size_t count = std::min(kStream, hits.size() - first);
            for (std::size_t i = 0; i < count; ++i) {
                rays[i] = camera.PixelRay(x + static_cast<double>(first + i) * step, y);
                stream[i] = ToEmbree(rays[i].origin + m_origin * -1.0, rays[i].direction, mask);
            }
            RTCIntersectContext context = Context();
            context.flags = RTC_INTERSECT_CONTEXT_FLAG_COHERENT;
            rtcIntersect1M(m_top.get(), &context, stream.data(), static_cast<unsigned>(count),
                           sizeof(RTCRayHit));
            for (std::size_t i = 0; i < count; ++i) hits[first + i] = Resolve(rays[i], stream[i]);
        }
    }

    const std::vector<Placement>& GetPlacements() const { return m_placements; }

private:
    /// The scene of a shape stays in place while others come.
    void Find(const du::SmartPtr<Shape>& shape, ScenePtr& scene) {
        if (m_former != nullptr) {
            const auto known = m_former->m_shapes.find(shape);
            if (known != m_former->m_shapes.end()) scene = known->second;
        }
        if (!scene) m_toBuild.emplace_back(shape.get(), &scene);
    }

    void AttachPlacement(unsigned index) {
        const Placement& placement = m_placements[index];
        RTCGeometry instance = rtcNewGeometry(Device(), RTC_GEOMETRY_TYPE_INSTANCE);
        rtcSetGeometryInstancedScene(instance, placement.scene->get());
        const dg::DMat44& m = placement.toWorld;
        const dg::DPoint3D position = dg::DPoint3D(m(3, 0), m(3, 1), m(3, 2)) + m_origin * -1.0;
        std::array<float, 12> columns{};
        for (std::size_t i = 0; i < 9; ++i) columns[i] = static_cast<float>(m(i / 3, i % 3));
        columns[9] = static_cast<float>(position.x);
        columns[10] = static_cast<float>(position.y);
        columns[11] = static_cast<float>(position.z);
        rtcSetGeometryTransform(instance, 0, RTC_FORMAT_FLOAT3X4_COLUMN_MAJOR, columns.data());
        rtcSetGeometryMask(instance, placement.mask);
        rtcCommitGeometry(instance);
        rtcAttachGeometryByID(m_top.get(), instance, index);
        rtcReleaseGeometry(instance);
    }

    static RayHit Resolve(const dg::Ray& ray, const RTCRayHit& hit) {
        if (hit.hit.geomID == RTC_INVALID_GEOMETRY_ID) return {};
        const auto distance = static_cast<double>(hit.ray.tfar);
        return {hit.hit.instID[0],
                hit.hit.primID,
                distance,
                ray.origin + ray.direction * distance,
                {static_cast<double>(hit.hit.Ng_x), static_cast<double>(hit.hit.Ng_y),
                 static_cast<double>(hit.hit.Ng_z)},
                hit.hit.u,
                hit.hit.v};
    }

    const Impl* m_former;  // until this is committed
    std::unordered_map<du::SmartPtr<Shape>, ScenePtr> m_shapes;
    std::vector<std::pair<const Shape*, ScenePtr*>> m_toBuild;  // of the shapes above
    std::vector<Placement> m_placements;
    dg::FBox m_box;
    dg::DVec3 m_origin;
    ScenePtr m_top;
};

RayScene::RayScene(const RayScene* former)
    : m_impl(std::make_unique<Impl>(former != nullptr ? former->m_impl.get() : nullptr)) {}

RayScene::~RayScene() = default;

std::uint32_t RayScene::Add(const du::SmartPtr<Shape>& shape, const dg::Location& location,
                            std::uint32_t mask) {
    return m_impl->Add(shape, location, mask);
}

void RayScene::Commit() { m_impl->Commit(); }

RayHit RayScene::Nearest(const dg::Ray& ray, std::uint32_t mask) const { return m_impl->Nearest(ray, mask); }

RayHit RayScene::NearestOf(const dg::Ray& ray, std::uint32_t placement) const {
    return m_impl->NearestOf(ray, placement);
}

bool RayScene::IsBlocked(const dg::Ray& ray, double from, double to) const {
    return m_impl->IsBlocked(ray, from, to);
}

void RayScene::NearestRow(const dg::Camera3D& camera, double x, double y, double step, std::span<RayHit> hits,
                          std::uint32_t mask) const {
    m_impl->NearestRow(camera, x, y, step, hits, mask);
}

std::uint32_t RayScene::GetPlacementCount() const {
    return static_cast<std::uint32_t>(m_impl->GetPlacements().size());
}

const Shape& RayScene::GetShape(std::uint32_t placement) const {
    return *m_impl->GetPlacements().at(placement).shape;
}

const dg::DMat44& RayScene::GetToWorld(std::uint32_t placement) const {
    return m_impl->GetPlacements().at(placement).toWorld;
}

dg::DVec3 RayScene::NormalToWorld(std::uint32_t placement, const dg::DVec3& normal) const {
    return TurnNormal(normal, m_impl->GetPlacements().at(placement).toLocal);
}

}  // namespace zrg
