#include "callouts/align/optimal/Lane.h"

#include <algorithm>
#include <cmath>

namespace zrcallouts {
namespace {

constexpr double kSteepest = 1.0;  // of leaders to the outer row, beyond which they are not followed

}  // namespace

Lane::Lane(LaneSide side, double rim, double least, double greatest, double room)
    : m_side(side),
      m_axis(side == LaneSide::Left || side == LaneSide::Right ? 1 : 0),
      m_outward(side == LaneSide::Left || side == LaneSide::Top ? -1.0 : 1.0),
      m_rim(rim),
      m_least(least),
      m_greatest(greatest),
      m_room(room) {}

ScreenPoint Lane::Followed(ScreenPoint centre, const LabelForm& form) const {
    const double half = 0.5 * form.Length(1 - m_axis);
    double& depth = centre[1 - m_axis];
    depth = m_profile->Rim(centre[m_axis], 0.5 * form.Length(m_axis), m_push) + m_outward * half;
    depth = m_outward < 0.0 ? std::max(depth, m_end + half) : std::min(depth, m_end - half);
    return centre;
}

/// Behind the inner row, where the leader to the place in it leads on.
ScreenPoint Lane::Outer(ScreenPoint centre, double half, const ScreenPoint& anchor) const {
    const double depth = std::abs(centre[1 - m_axis] - anchor[1 - m_axis]);
    const double slope = depth > 0.0 ? (centre[m_axis] - anchor[m_axis]) / depth : 0.0;
    const double place = centre[m_axis] + m_pitch * std::clamp(slope, -kSteepest, kSteepest);
    centre[m_axis] = std::clamp(place, m_least + half, std::max(m_greatest - half, m_least + half));
    centre[1 - m_axis] += m_outward * m_pitch;
    return centre;
}

}  // namespace zrcallouts
