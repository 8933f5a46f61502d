// What laying labels out costs: one line of labels, and whole sheets. `sorts` is how many plain sorts of the
// same data take as long.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <random>
#include <vector>

#include "callouts/align/optimal/LabelSpacer.h"
#include "callouts/align/optimal/LayoutQuality.h"
#include "callouts/align/optimal/LayoutSolver.h"
#include "callouts/align/optimal/PlaceOrder.h"

namespace zrcallouts {
namespace {

constexpr double kBalloon = 26.0;  // pixels
constexpr double kGap = 8.0;

double Random(std::mt19937& random) { return static_cast<double>(random()) / 4294967296.0; }

double SecondsToSort(const std::vector<double>& values) {
    double best = 1e9;
    for (int round = 0; round < 5; ++round) {
        std::vector<double> copy = values;
        const auto start = std::chrono::steady_clock::now();
        std::sort(copy.begin(), copy.end());
        best =
            std::min(best, std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
        benchmark::DoNotOptimize(copy.data());
    }
    return best;
}

/// Tells n, and how many plain sorts one iteration takes.
class Report {
public:
    explicit Report(benchmark::State& state) : m_state(state) {}
    void Tell(const std::vector<double>& values) {
        const double seconds =
            std::chrono::duration<double>(std::chrono::steady_clock::now() - m_start).count();
        m_state.counters["n"] = static_cast<double>(values.size());
        m_state.counters["sorts"] =
            seconds / static_cast<double>(m_state.iterations()) / SecondsToSort(values);
    }

private:
    benchmark::State& m_state;
    std::chrono::steady_clock::time_point m_start = std::chrono::steady_clock::now();
};

/// Labels with wishes all over a line that they fill to three quarters; sorting is part of the work.
void SpaceOneLine(benchmark::State& state) {
    const auto count = static_cast<std::size_t>(state.range(0));
    std::mt19937 random(1);
    const double length = (kBalloon + kGap) * static_cast<double>(count) / 0.75;
    std::vector<double> wishes(count);
    for (double& wish : wishes) wish = length * Random(random);
    PlaceOrder order;
    LabelSpacer spacer;
    std::vector<SpacedLabel> labels(count);
    Report report(state);
    for (auto _ : state) {
        const auto sorted = order.Sort(wishes);
        for (std::size_t i = 0; i < count; ++i) labels[i] = {wishes[sorted[i]], 1.0, kBalloon};
        benchmark::DoNotOptimize(spacer.Space(labels, kGap, 0.0, length).data());
    }
    report.Tell(wishes);
}
BENCHMARK(SpaceOneLine)->Arg(100)->Arg(10000)->Arg(1000000)->Unit(benchmark::kMicrosecond);

/// Anchors all over a model whose sides the labels fill to two thirds.
LayoutProblem SheetOf(std::size_t labels) {
    std::mt19937 random(1);
    const double around = (kBalloon + kGap) * static_cast<double>(labels) * 1.5;
    LayoutProblem sheet;
    sheet.page = {0.0, 0.0, 0.28 * around, 0.22 * around};
    sheet.model = {80.0, 80.0, sheet.page.x1 - 80.0, sheet.page.y1 - 80.0};
    for (std::size_t i = 0; i < labels; ++i) {
        LayoutLabel label;
        const double x = Random(random);
        const double y = Random(random);
        label.anchors = {
            {sheet.model.x0 + x * sheet.model.Length(0), sheet.model.y0 + y * sheet.model.Length(1)}};
        label.centre = label.anchors.front();
        sheet.labels.push_back(std::move(label));
    }
    return sheet;
}

void SolveSheet(benchmark::State& state) {
    const LayoutProblem sheet = SheetOf(static_cast<std::size_t>(state.range(0)));
    std::vector<double> places;
    for (const LayoutLabel& label : sheet.labels) places.push_back(label.anchors[0].y);
    Report report(state);
    for (auto _ : state) benchmark::DoNotOptimize(SolveLayout(sheet).data());
    report.Tell(places);
    const LayoutQuality quality = MeasureLayout(sheet, SolveLayout(sheet));
    state.counters["faults"] = static_cast<double>(quality.faults.size());
    state.counters["ratio"] = quality.Ratio();
}
BENCHMARK(SolveSheet)->Arg(30)->Arg(100)->Arg(1000)->Unit(benchmark::kMicrosecond);

/// Far more labels than belong around one picture, on a page that has room for them all: solved and measured.
void CrowdSheet(benchmark::State& state) {
    LayoutProblem sheet = SheetOf(static_cast<std::size_t>(state.range(0)));
    const double factor = 600.0 / sheet.model.Length(0);
    const auto shrink = [&](double at, int axis) {
        const double middle = sheet.page.Middle(axis);
        return middle + factor * (at - middle);
    };
    for (LayoutLabel& label : sheet.labels) {
        label.centre = {shrink(label.centre.x, 0), shrink(label.centre.y, 1)};
        label.anchors = {label.centre};
    }
    sheet.model = {shrink(sheet.model.x0, 0), shrink(sheet.model.y0, 1), shrink(sheet.model.x1, 0),
                   shrink(sheet.model.y1, 1)};
    for (auto _ : state) {
        const LayoutQuality quality = MeasureLayout(sheet, SolveLayout(sheet));
        state.counters["faults"] = static_cast<double>(quality.faults.size());
    }
    state.counters["n"] = static_cast<double>(sheet.labels.size());
}
BENCHMARK(CrowdSheet)->Arg(1000)->Arg(10000)->Arg(100000)->Iterations(1)->Unit(benchmark::kMillisecond);

/// The model turns by half a degree at a time: how many labels change their side.
void TurnModel(benchmark::State& state) {
    const auto count = static_cast<std::size_t>(state.range(0));
    LayoutProblem sheet = SheetOf(count);
    const double middleX = sheet.model.Middle(0);
    std::vector<double> depths;
    std::mt19937 random(2);
    for (std::size_t i = 0; i < count; ++i) depths.push_back((Random(random) - 0.5) * sheet.model.Length(0));
    double changes = 0.0;
    double turns = 0.0;
    constexpr double kAngle = 0.0087;  // radians
    const auto isBeside = [&](const ScreenPoint& centre) {
        return centre.x < sheet.model.x0 || centre.x > sheet.model.x1;
    };
    for (auto _ : state) {
        const auto centres = SolveLayout(sheet);
        for (std::size_t i = 0; i < count; ++i) {
            LayoutLabel& label = sheet.labels[i];
            changes += turns > 0.0 && isBeside(centres[i]) != isBeside(label.centre);
            label.centre = centres[i];
            double& x = label.anchors[0].x;
            const double across = x - middleX;
            x = std::clamp(middleX + across * std::cos(kAngle) - depths[i] * std::sin(kAngle), sheet.model.x0,
                           sheet.model.x1);
            depths[i] = across * std::sin(kAngle) + depths[i] * std::cos(kAngle);
        }
        turns += 1.0;
    }
    state.counters["n"] = static_cast<double>(count);
    state.counters["side_changes_per_turn"] = changes / turns;
}
BENCHMARK(TurnModel)->Arg(50)->Iterations(200)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace zrcallouts
