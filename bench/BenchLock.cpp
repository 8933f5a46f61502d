// What the re-entrant reader-writer lock costs a thread that meets nobody, and threads that do.

#include <benchmark/benchmark.h>

#include "dp/ReadLocker.h"
#include "dp/ReadWriteLock.h"
#include "dp/WriteLocker.h"

namespace {

void ReadUncontended(benchmark::State& state) {
    dp::ReadWriteLock lock;
    for (auto _ : state) dp::ReadLocker read(&lock);
}
BENCHMARK(ReadUncontended);

void ReadAgain(benchmark::State& state) {
    dp::ReadWriteLock lock;
    const dp::ReadLocker outer(&lock);
    for (auto _ : state) dp::ReadLocker inner(&lock);
}
BENCHMARK(ReadAgain);

void WriteUncontended(benchmark::State& state) {
    dp::ReadWriteLock lock;
    for (auto _ : state) dp::WriteLocker write(&lock);
}
BENCHMARK(WriteUncontended);

void Upgrade(benchmark::State& state) {
    dp::ReadWriteLock lock;
    const dp::ReadLocker read(&lock);
    for (auto _ : state) dp::WriteLocker write(&lock);
}
BENCHMARK(Upgrade);

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
