#include "app/lineart/SceneCurves.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <tuple>
#include <utility>

#include "app/lineart/SharpCurves.h"
#include "app/lineart/SmoothContours.h"
#include "app/render/ParallelFor.h"
#include "app/render/PixelBox.h"

namespace zrsheet {
namespace {

// Shares of the part's and of the scene's extent that may cover a line without hiding it.
constexpr double kPartBias = 2e-4;
constexpr double kSceneBias = 4e-6;
// The same in slacks of the curve: of a pin and its hole now the one is outside, now the other.
constexpr double kSlackBias = 4.0;
// Share of a part's size by which two of one shape may be turned differently and have the same curves.
constexpr double kGrain = 1e-6;

/// A curve, and where it is in the picture.
struct Sighted {
    const Curve* curve = nullptr;
    double bias = 0.0;
    PixelBox box;         // as near as what would have to cover it
    bool isAhead = true;  // of the nearest plane
};

Sighted Sight(const Curve& curve, const Viewer& viewer, double bias) {
    Sighted sighted{&curve, bias, {}, true};
    for (const CurvePoint& point : curve.points) {
        const dg::DPoint3D asked = point.place + point.lift;
        sighted.box.Add(viewer.ToPixel(asked + viewer.TowardsEye(asked) * bias));
        sighted.box.Add(viewer.ToPixel(point.drawn));
        sighted.isAhead = sighted.isAhead && !viewer.IsBefore(asked) && !viewer.IsBefore(point.drawn);
    }
    return sighted;
}

dg::DVec3 PositionOf(const PlacedMesh& part) {
    return dg::DVec3(part.ToWorld()(3, 0), part.ToWorld()(3, 1), part.ToWorld()(3, 2));
}

}  // namespace

class SceneCurves::Maker {
public:
    Maker(std::span<const PlacedMesh> parts, std::span<const CrossingSet> crossings, const Viewer& viewer,
          const PartRaster& raster, const LineRule& rule, double size)
        : m_parts(parts),
          m_crossings(crossings),
          m_viewer(viewer),
          m_raster(raster),
          m_rule(rule),
          m_size(size) {}

    void Make(unsigned threads, SceneCurves& result) {
        FindGroups();
        result.m_curves.resize(m_firsts.size());
        m_sighted.resize(m_firsts.size() + m_crossings.size());
        ParallelFor(m_sighted.size(), threads, [&](std::size_t i) {
            if (i < m_firsts.size()) AddCurves(m_firsts[i], result.m_curves[i]);
            const auto& curves =
                i < m_firsts.size() ? result.m_curves[i] : m_crossings[i - m_firsts.size()].curves;
            const std::uint32_t part =
                i < m_firsts.size() ? m_firsts[i] : m_crossings[i - m_firsts.size()].placement;
            for (const Curve& curve : curves)
                m_sighted[i].push_back(Sight(curve, m_viewer, BiasOf(curve, part)));
        });
        std::vector<std::vector<PlacedCurve>> found(m_parts.size() + m_crossings.size());
        ParallelFor(found.size(), threads, [&](std::size_t i) {
            if (i >= m_parts.size()) {
                const std::size_t crossing = i - m_parts.size();
                Place(m_sighted[m_firsts.size() + crossing], m_crossings[crossing].placement, {}, found[i]);
            } else if (m_groups[i] != kOutside) {
                const auto part = static_cast<std::uint32_t>(i);
                const PlacedMesh& first = m_parts[m_firsts[m_groups[i]]];
                Place(m_sighted[m_groups[i]], part, PositionOf(m_parts[i]) - PositionOf(first), found[i]);
            }
        });
        for (const auto& list : found) result.m_list.insert(result.m_list.end(), list.begin(), list.end());
    }

private:
    static constexpr std::size_t kOutside = ~std::size_t{0};

    // From infinitely far away parts that differ by their place alone look the same.
    void FindGroups() {
        using Turn = std::array<std::int64_t, 9>;
        std::map<std::tuple<const EdgeMesh*, Turn>, std::size_t> groups;
        m_groups.assign(m_parts.size(), kOutside);
        for (std::uint32_t i = 0; i < m_parts.size(); ++i) {
            if (IsOutside(m_parts[i])) continue;
            if (m_viewer.IsParallel()) {
                Turn turn{};
                for (std::size_t k = 0; k < turn.size(); ++k)
                    turn[k] = std::llround(m_parts[i].ToWorld()(k / 3, k % 3) / kGrain);
                const auto [place, isNew] = groups.try_emplace({&m_parts[i].Mesh(), turn}, m_firsts.size());
                m_groups[i] = place->second;
                if (!isNew) continue;
            } else {
                m_groups[i] = m_firsts.size();
            }
            m_firsts.push_back(i);
        }
    }

    bool IsOutside(const PlacedMesh& part) const {
        PixelBox box;
        for (int corner = 0; corner < 8; ++corner) {
            dg::DPoint3D point = part.Low();
            for (int axis = 0; axis < 3; ++axis) {
                if ((corner >> axis & 1) != 0) point[axis] = part.High()[axis];
            }
            if (m_viewer.IsBefore(point)) return false;
            box.Add(m_viewer.ToPixel(point));
        }
        return !m_viewer.Picture().Touches(box);
    }

    void AddCurves(std::uint32_t part, std::vector<Curve>& curves) const {
        AddSharpCurves(m_parts[part], m_viewer, m_rule.creaseAngle, curves);
        AddSmoothContours(m_parts[part], m_viewer, curves);
    }

    double BiasOf(const Curve& curve, std::uint32_t part) const {
        return std::max({kPartBias * m_parts[part].Size(), kSceneBias * m_size, kSlackBias * curve.slack});
    }

    void Place(const std::vector<Sighted>& sighted, std::uint32_t part, const dg::DVec3& shift,
               std::vector<PlacedCurve>& list) const {
        const dg::DVec3 moved = m_viewer.IsParallel()
                                    ? m_viewer.ToPixel(dg::DPoint3D() + shift) - m_viewer.ToPixel({})
                                    : dg::DVec3();
        for (const Sighted& each : sighted) {
            const PixelBox box = each.box.Moved(moved);
            const bool isAhead = m_viewer.IsParallel() ? box.nearest >= 0.0 : each.isAhead;
            if (isAhead && (!m_viewer.Picture().Touches(box) || (!m_rule.withHidden && m_raster.Covers(box))))
                continue;
            list.push_back({each.curve, shift, part, each.bias, isAhead && m_viewer.Picture().Holds(box)});
        }
    }

    std::span<const PlacedMesh> m_parts;
    std::span<const CrossingSet> m_crossings;
    const Viewer& m_viewer;
    const PartRaster& m_raster;
    const LineRule& m_rule;
    double m_size;
    std::vector<std::size_t> m_groups;            // of the parts
    std::vector<std::uint32_t> m_firsts;          // part of each group
    std::vector<std::vector<Sighted>> m_sighted;  // of the groups, then of the crossings
};

SceneCurves::SceneCurves(std::span<const PlacedMesh> parts, std::span<const CrossingSet> crossings,
                         const Viewer& viewer, const PartRaster& raster, const LineRule& rule, double size,
                         unsigned threads) {
    Maker(parts, crossings, viewer, raster, rule, size).Make(threads, *this);
}

}  // namespace zrsheet
