// What it costs to make a symbol of a text that the table knows, and of one that it does not.

#include <benchmark/benchmark.h>

#include <atomic>
#include <cstddef>
#include <string>
#include <vector>

#include "du/Symbol.h"

namespace {

std::vector<std::string> Texts(const std::string& prefix, std::size_t count) {
    std::vector<std::string> texts;
    for (std::size_t i = 0; i < count; ++i) texts.push_back(prefix + std::to_string(i));
    return texts;
}

void InternKnown(benchmark::State& state) {
    static const auto texts = Texts("/assembly/part/known ", 1024);
    for (const auto& text : texts) benchmark::DoNotOptimize(du::Symbol(text));
    std::size_t next = 0;
    for (auto _ : state) benchmark::DoNotOptimize(du::Symbol(texts[next++ % texts.size()]));
}
BENCHMARK(InternKnown);
BENCHMARK(InternKnown)->Name("InternKnownTogether")->Threads(2)->UseRealTime();

// The number of runs is fixed: the table keeps every text for good.
void InternNew(benchmark::State& state) {
    static std::atomic<unsigned> batch{0};
    const auto texts = Texts("/assembly/part/new " + std::to_string(++batch) + " ",
                             static_cast<std::size_t>(state.max_iterations));
    std::size_t next = 0;
    for (auto _ : state) benchmark::DoNotOptimize(du::Symbol(texts[next++]));
}
BENCHMARK(InternNew)->Iterations(200000);

void CompareSymbols(benchmark::State& state) {
    const du::Symbol a("/assembly/part/known 1"), b("/assembly/part/known 2");
    for (auto _ : state) benchmark::DoNotOptimize(a == b);
}
BENCHMARK(CompareSymbols);

}  // namespace
