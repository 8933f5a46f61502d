#include "app/render/EdgeRule.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace zrsheet {
namespace {

// How far the crossing of two facets may lie outside the step between their samples, in steps: room for a
// facet that falls between the samples and for rounding.
constexpr float kCrossingSlack = 1.0F;
// In page pixels. A surface that falls back by less has no visible step.
constexpr double kLeastStep = 0.8;
// In page pixels. From the nearer on, a line between parts grows from contact to overlap.
constexpr double kContactGap = 1.5;
constexpr double kOverlapGap = 9.0;
// Facets of two parts that agree better than this lie in one plane.
constexpr double kSamePlaneGap = 0.05;  // page pixels
constexpr float kSamePlaneCosine = 0.9999F;

float Dot(const dg::FVec3& a, const dg::FVec3& b) { return a.x * b.x + a.y * b.y + a.z * b.z; }

/// How the depths of two neighbouring samples go together.
struct Step {
    float gap = 0.0F;      // between the surface and where the flatter facet would go on
    bool isJoint = false;  // both facets cross between the samples, so one surface runs through both
};

/// The samples stand `distance` apart.
Step StepBetween(const SurfaceSample& a, const SurfaceSample& b, bool isVertical, float distance = 1.0F) {
    const float slopeA = distance * (isVertical ? a.slopeY : a.slopeX);
    const float slopeB = distance * (isVertical ? b.slopeY : b.slopeX);
    const float rise = b.depth - a.depth;
    const float bend = slopeA - slopeB;
    const float crossing = rise - slopeB;  // times `bend` it is where between 0 and 1 the facets cross
    const float slack = kCrossingSlack * std::abs(bend);
    const float share = bend >= 0.0F ? crossing : -crossing;
    return {std::abs(std::abs(slopeA) < std::abs(slopeB) ? rise - slopeA : rise - slopeB),
            share >= -slack && share <= std::abs(bend) + slack};
}

double Blend(double from, double to, double share) {
    const double t = std::clamp(share, 0.0, 1.0);
    return from + (to - from) * t;
}

}  // namespace

EdgeRule::EdgeRule(const SurfaceSampler& sampler, const PictureStyle& style)
    : m_sampler(sampler),
      m_style(style),
      m_creaseCosine(static_cast<float>(std::cos(style.creaseAngle * std::numbers::pi / 180.0))) {}

double EdgeRule::LineWidth(const SurfaceSample& a, const SurfaceSample& b, int x, int y,
                           bool isVertical) const {
    if (a.IsGround() || b.IsGround()) return a.IsGround() == b.IsGround() ? 0.0 : m_style.outlineWidth;
    const bool isCrease = IsCrease(a, b);
    const Step step = StepBetween(a, b, isVertical);
    if (a.part == b.part && !isCrease && step.isJoint) return 0.0;
    const double gap = ToPixels(static_cast<double>(step.gap), a, x, y);
    if (a.part != b.part) {
        const bool isOnePlane = gap < kSamePlaneGap && Dot(a.facet, b.facet) > kSamePlaneCosine;
        if (isOnePlane && m_sampler.Coincide(a, b, x, y, isVertical)) return 0.0;
        return Blend(m_style.contactWidth, m_style.overlapWidth,
                     (gap - kContactGap) / (kOverlapGap - kContactGap));
    }
    if (!step.isJoint && gap > kLeastStep) {
        return Blend(m_style.creaseWidth, m_style.overlapWidth,
                     (gap - kLeastStep) / (kOverlapGap - kLeastStep));
    }
    return isCrease ? m_style.creaseWidth : 0.0;
}

bool EdgeRule::IsSpeck(const SurfaceSample& before, const SurfaceSample& middle, const SurfaceSample& after,
                       int x, int y, bool isVertical) const {
    if (before.IsGround() || before.part != after.part) return false;
    // True of nearly all samples, and told without a step.
    const bool isOtherPart = middle.part != before.part;
    const bool isDeeper = middle.depth > std::max(before.depth, after.depth);
    if (!isOtherPart && !isDeeper && !IsCrease(before, middle)) return false;
    const Step across = StepBetween(before, after, isVertical, 2.0F);
    if (!across.isJoint && ToPixels(static_cast<double>(across.gap), before, x, y) > kLeastStep) return false;
    const auto deeper = static_cast<double>(std::max(before.depth, after.depth));
    if (ToPixels(static_cast<double>(middle.depth) - deeper, before, x, y) > kLeastStep) return true;
    if (IsCrease(before, after)) return false;
    if (!isOtherPart && !IsCrease(before, middle)) return false;
    // What stands before the surface is a thing of its own, however thin.
    const auto surface = 0.5 * (static_cast<double>(before.depth) + static_cast<double>(after.depth));
    const double behind = ToPixels(static_cast<double>(middle.depth) - surface, before, x, y);
    return behind > (isOtherPart ? -kSamePlaneGap : -kLeastStep);
}

double EdgeRule::SamplesPerPagePixel() const { return m_sampler.GetSamplesPerPixel() * m_style.scale; }

bool EdgeRule::IsCrease(const SurfaceSample& a, const SurfaceSample& b) const {
    return Dot(a.normal, b.normal) < m_creaseCosine;
}

double EdgeRule::ToPixels(double depth, const SurfaceSample& at, int x, int y) const {
    return depth * m_sampler.SamplesPerDepth(at, x, y) / SamplesPerPagePixel();
}

}  // namespace zrsheet
