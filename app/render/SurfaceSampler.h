// What the camera sees, sample by sample: which part, how deep, how the surface runs.

#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "app/render/SmoothNormals.h"
#include "dg/Camera3D.h"
#include "dg/FVec3.h"
#include "zrg/RayScene.h"

namespace zrsheet {

/// The surface met by the ray through one sample. Depth runs as the camera's pixel space has it, which keeps
/// planes plane: the depth of a facet changes by the slopes from sample to sample.
struct SurfaceSample {
    static constexpr std::uint32_t kGround = 0xFFFFFFFFU;

    std::uint32_t part = kGround;
    std::uint32_t placement = kGround;
    float depth = 1.0F;
    float slopeX = 0.0F;    // of depth, to the next sample on the right
    float slopeY = 0.0F;    // to the next sample below
    dg::FVec3 facet;        // normal of the triangle in the world, towards the eye
    dg::FVec3 normal;       // the same, smoothed
    bool isTurned = false;  // the triangle's winding shows it from behind

    bool IsGround() const { return part == kGround; }
};

/// Rows and columns of samples, the last ones excluded.
struct SampleWindow {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
};

/// A grid of `samplesPerPixel` squared samples a pixel, laid so that pixel (x, y) is the square from there to
/// (x + 1, y + 1) in the camera's pixel space. The scene, the parts and the camera must outlive it. Reading:
/// any thread.
class SurfaceSampler {
public:
    SurfaceSampler(const zrg::RayScene& scene, const dg::Camera3D& camera,
                   std::span<const std::uint32_t> partOfPlacement, double samplesPerPixel);

    /// Smooths normals: one entry for each placement, null where `normal` shall remain the facet's.
    void SetSmoothing(std::span<const SmoothNormals* const> normals) { m_normals = normals; }

    int GetWidth() const { return m_width; }
    int GetHeight() const { return m_height; }
    double GetSamplesPerPixel() const { return m_samplesPerPixel; }
    /// Finds the ground without asking rays. Pays for whole pictures: O(placements).
    void FindGround();
    /// Around it there is nothing but ground, as far as it was found. Rows beyond the picture may be in it.
    const SampleWindow& GetWindow() const { return m_window; }

    /// Fills the part of a row that begins at a column; rows beyond the picture are sampled too, up to its
    /// height. Requires: the columns are in the grid.
    void SampleRow(int y, int firstColumn, std::span<SurfaceSample> row) const;

    /// Do the placements of both samples have a surface at the same depth in both? Then which one the ray
    /// reports is chance. The samples stand at (x, y) and one step further.
    bool Coincide(const SurfaceSample& a, const SurfaceSample& b, int x, int y, bool isVertical) const;

    /// How many samples wide a change of depth by 1 is at a place.
    double SamplesPerDepth(const SurfaceSample& sample, int x, int y) const;

private:
    SampleWindow Everything() const { return {0, -m_height, m_width, 2 * m_height}; }
    SampleWindow WindowOfParts() const;
    SurfaceSample DescribeFacet(const zrg::RayHit& hit) const;
    bool IsSmoothed(std::uint32_t placement) const {
        return !m_normals.empty() && m_normals[placement] != nullptr;
    }
    dg::FVec3 SmoothedNormal(const zrg::RayHit& hit, bool isTurned) const;
    double SamplesPerDepth(const dg::DPoint3D& point) const;
    bool IsMetAt(std::uint32_t placement, const SurfaceSample& sample, int x, int y) const;
    double ToPixel(int sample) const { return (sample + 0.5) / m_samplesPerPixel; }
    double DepthOf(const dg::DPoint3D& point) const;

    const zrg::RayScene& m_scene;
    const dg::Camera3D& m_camera;
    std::span<const std::uint32_t> m_partOfPlacement;
    std::span<const SmoothNormals* const> m_normals;
    double m_samplesPerPixel;
    int m_width;
    int m_height;
    SampleWindow m_window;
};

}  // namespace zrsheet
