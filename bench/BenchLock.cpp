// What the re-entrant reader-writer lock costs a thread that meets nobody, and threads that do.

#include <benchmark/benchmark.h>

#include "dp/ReadLocker.h"
#include "dp/ReadWriteLock.h"
#include "dp/WriteLocker.h"

namespace {

/// What the thread holds while it takes the lock again and again.
struct Nothing {
    explicit Nothing(dp::ReadWriteLock*) {}
};

template <class Held, class Taken>
void Take(benchmark::State& state) {
    dp::ReadWriteLock lock;
    const Held held(&lock);
    for (auto _ : state) Taken taken(&lock);
}
BENCHMARK(Take<Nothing, dp::ReadLocker>)->Name("ReadUncontended");
BENCHMARK(Take<dp::ReadLocker, dp::ReadLocker>)->Name("ReadAgain");
BENCHMARK(Take<Nothing, dp::WriteLocker>)->Name("WriteUncontended");
BENCHMARK(Take<dp::ReadLocker, dp::WriteLocker>)->Name("Upgrade");

void ReadTogether(benchmark::State& state) {
    static dp::ReadWriteLock lock;
    for (auto _ : state) dp::ReadLocker read(&lock);
}
BENCHMARK(ReadTogether)->Threads(2)->UseRealTime();

void UpgradeTogether(benchmark::State& state) {
    static dp::ReadWriteLock lock;
    for (auto _ : state) {
        const dp::ReadLocker read(&lock);
        const dp::WriteLocker write(&lock);
    }
}
BENCHMARK(UpgradeTogether)->Threads(2)->UseRealTime();

}  // namespace
