#include "bench/Tracer.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>

namespace zrbench {

Tracer::Tracer() : m_device(rtcNewDevice(nullptr)), m_scene(NewScene()) {}

RTCScene Tracer::NewScene() const {
    const RTCScene scene = rtcNewScene(m_device);
    rtcSetSceneFlags(scene, RTC_SCENE_FLAG_ROBUST);
    return scene;
}

RTCScene Tracer::Build(const zrg::Shape& shape) const {
    const RTCGeometry mesh = rtcNewGeometry(m_device, RTC_GEOMETRY_TYPE_TRIANGLE);
    const auto positions = shape.GetPositions();
    const auto indices = shape.GetIndices();
    std::copy(positions.begin(), positions.end(),
              static_cast<float*>(rtcSetNewGeometryBuffer(mesh, RTC_BUFFER_TYPE_VERTEX, 0, RTC_FORMAT_FLOAT3,
                                                          3 * sizeof(float), positions.size() / 3)));
    std::copy(
        indices.begin(), indices.end(),
        static_cast<std::uint32_t*>(rtcSetNewGeometryBuffer(mesh, RTC_BUFFER_TYPE_INDEX, 0, RTC_FORMAT_UINT3,
                                                            3 * sizeof(std::uint32_t), indices.size() / 3)));
    rtcCommitGeometry(mesh);
    const RTCScene scene = NewScene();
    rtcAttachGeometry(scene, mesh);
    rtcReleaseGeometry(mesh);
    rtcCommitScene(scene);
    return scene;
}

void Tracer::Add(const zrg::Shape& shape, const dg::Location& location) {
    RTCScene& built = m_shapes[&shape];
    if (built == nullptr) built = Build(shape);
    const dg::DMat44& m = location.GetXform();
    std::array<float, 12> columns{};
    for (std::size_t i = 0; i < columns.size(); ++i) columns[i] = static_cast<float>(m(i / 3, i % 3));
    const RTCGeometry instance = rtcNewGeometry(m_device, RTC_GEOMETRY_TYPE_INSTANCE);
    rtcSetGeometryInstancedScene(instance, built);
    rtcSetGeometryTransform(instance, 0, RTC_FORMAT_FLOAT3X4_COLUMN_MAJOR, columns.data());
    rtcCommitGeometry(instance);
    rtcAttachGeometry(m_scene, instance);
    rtcReleaseGeometry(instance);
}

RTCRayHit Tracer::RayOf(const dg::Ray& ray) {
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

bool Tracer::Meets(RTCRayHit ray) const {
    RTCIntersectContext context;
    rtcInitIntersectContext(&context);
    rtcIntersect1(m_scene, &context, &ray);
    return ray.hit.geomID != RTC_INVALID_GEOMETRY_ID;
}

}  // namespace zrbench
