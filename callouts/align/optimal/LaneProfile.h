// How far out one side of the model reaches, along the side.

#pragma once

#include <cstddef>
#include <vector>

#include "callouts/align/optimal/LayoutProblem.h"

namespace zrcallouts {

/// For labels that follow an outline instead of a straight line. Everything in pixels.
class LaneProfile {
public:
    /// Of the side of `problem.model` that runs along `axis` and looks `outward`, +1 or -1 on the other axis.
    /// `blocks` are kept off like the outlines.
    LaneProfile(const LayoutProblem& problem, const std::vector<ScreenBox>& blocks, int axis, double outward);

    /// Where labels that reach `half` to both sides of `place` may begin: outside the outlines and
    /// obstacles by the rules' distance, outside the circle if the pattern is one, and on this side's part of
    /// the screen, so that labels of two sides never meet. `beside`: how much farther to both sides the
    /// outlines count.
    [[nodiscard]] double Rim(double place, double half, double beside = 0.0) const;
    /// The places at which the pattern wants labels.
    [[nodiscard]] double Least() const { return m_least; }
    [[nodiscard]] double Greatest() const { return m_greatest; }

private:
    void Enclose(const ScreenPoint& from, const ScreenPoint& to);
    void Enclose(double place, double depth);
    [[nodiscard]] std::size_t BinOf(double place) const;
    [[nodiscard]] double Circle(double place, double half) const;
    [[nodiscard]] double Wedge(double place, double half) const;

    int m_axis;
    double m_outward;
    double m_distance;
    double m_gap;
    ScreenBox m_model;
    double m_start;  // of the first bin
    double m_least;
    double m_greatest;
    double m_radius = 0.0;  // of the circle, along and across; 0: none
    double m_depthRadius = 0.0;
    std::vector<double>
        m_bins;  // how far out, times `outward`, from the model's middle; least if nothing is there
};

}  // namespace zrcallouts
