// A free stretch beside the model where labels stand side by side.

#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "callouts/align/optimal/LabelForm.h"
#include "callouts/align/optimal/LaneProfile.h"

namespace zrcallouts {

enum class LaneSide : std::uint8_t { Left, Right, Top, Bottom };

/// Everything in pixels. `Along` is the axis that the lane runs along, depth the other one.
class Lane {
public:
    Lane(LaneSide side, double rim, double least, double greatest, double room);

    [[nodiscard]] LaneSide Side() const { return m_side; }
    [[nodiscard]] int Along() const { return m_axis; }
    [[nodiscard]] double Outward() const { return m_outward; }
    [[nodiscard]] double Least() const { return m_least; }
    [[nodiscard]] double Greatest() const { return m_greatest; }

    /// Follows the profile as far as labels do not reach beyond `end` across.
    void Follow(const LaneProfile* profile, double end) {
        m_profile = profile;
        m_end = end;
    }

    /// Whether a label that is so thick stays on the page.
    [[nodiscard]] bool Holds(double thick) const { return thick <= m_room + kTolerance; }
    /// How much farther out labels may go before they leave the page or meet an obstacle, with labels
    /// that are `thick`.
    [[nodiscard]] double Spare(double thick) const { return m_room - m_push - m_pitch - thick; }
    /// Takes a piece off one end.
    void Shorten(bool atLeast, double by) { (atLeast ? m_least : m_greatest) += atLeast ? by : -by; }
    /// Moves it farther out. One that follows a profile keeps off as much more of it to both sides instead,
    /// and so becomes smoother.
    void Push(double by) { m_push += by; }
    /// Labels stand in two rows by turns from then on; leaders of the outer row pass between the inner ones.
    void Double(double pitch) { m_pitch = pitch; }
    [[nodiscard]] bool IsDouble() const { return m_pitch > 0.0; }
    [[nodiscard]] bool IsStraight() const { return m_profile == nullptr; }

    /// Of the middles of labels on straight lanes, in the inner row.
    [[nodiscard]] double Depth(const LabelForm& form) const {
        return m_rim + m_outward * (m_push + 0.5 * form.Length(1 - m_axis));
    }
    /// The middle of a label whose leader passes the inner row at `place`. `isOuter`: in the outer row, in
    /// line with its place and its anchor.
    [[nodiscard]] ScreenPoint Centre(const LabelForm& form, double place, bool isOuter,
                                     const ScreenPoint& anchor) const {
        ScreenPoint centre;
        centre[m_axis] = place;
        if (m_profile != nullptr) return Followed(centre, form);
        centre[1 - m_axis] = Depth(form);
        return isOuter ? Outer(centre, 0.5 * form.Length(m_axis), anchor) : centre;
    }

private:
    static constexpr double kTolerance = 1e-6;  // pixels

    [[nodiscard]] ScreenPoint Followed(ScreenPoint centre, const LabelForm& form) const;
    [[nodiscard]] ScreenPoint Outer(ScreenPoint centre, double half, const ScreenPoint& anchor) const;

    LaneSide m_side;
    int m_axis;
    double m_outward;
    double m_rim;  // where labels begin
    double m_least;
    double m_greatest;
    double m_room;
    double m_push = 0.0;
    double m_pitch = 0.0;                    // from the inner row to the outer one; 0: there is one row
    const LaneProfile* m_profile = nullptr;  // instead of the rim
    double m_end = 0.0;
};

}  // namespace zrcallouts
