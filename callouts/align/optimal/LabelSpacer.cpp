#include "callouts/align/optimal/LabelSpacer.h"

#include <algorithm>

namespace zrcallouts {

// Seen from the places that labels have when all touch, "apart" reads "shifts never decrease": isotonic
// regression, solved by pooling adjacent violators. Bounds on the first and the last label are bounds on all
// shifts, so the bounded answer is the free one, clamped.
std::span<const double> LabelSpacer::Space(std::span<const SpacedLabel> labels, double gap, double least,
                                           double greatest) {
    m_places.resize(labels.size());
    m_runs.clear();
    if (labels.empty()) return m_places;
    double before = 0.0;
    for (std::size_t i = 0; i < labels.size(); ++i) {
        const SpacedLabel& label = labels[i];
        if (i > 0) before += 0.5 * (labels[i - 1].length + label.length) + gap;
        m_places[i] = before;
        Run run{label.weight, label.weight * (label.wish - before), i + 1};
        while (!m_runs.empty() && m_runs.back().sum * run.weight >= run.sum * m_runs.back().weight) {
            run.weight += m_runs.back().weight;
            run.sum += m_runs.back().sum;
            m_runs.pop_back();
        }
        m_runs.push_back(run);
    }
    const double first = least + 0.5 * labels.front().length;
    const double last = greatest - 0.5 * labels.back().length - before;
    std::size_t i = 0;
    for (const Run& run : m_runs) {
        const double shift = last < first ? 0.5 * (first + last) : std::clamp(run.Place(), first, last);
        for (; i < run.end; ++i) m_places[i] += shift;
    }
    return m_places;
}

}  // namespace zrcallouts
