// Hours of a user's work on several scenes at once: nothing may break, and memory may not grow with the
// work. By itself this runs for seconds; tools/soak.sh sets how long.

#include <gtest/gtest.h>

#include <barrier>
#include <chrono>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <thread>
#include <vector>

#include "du/Localizer.h"
#include "tests/soak/MemoryLog.h"
#include "tests/soak/SoakScene.h"
#include "zrannotations/CalloutTemplates.h"
#include "zrk/world/Kernel.h"
#include "zrk/world/World.h"

namespace zrcallouts {
namespace {

constexpr unsigned kThreads = 4;
constexpr unsigned kPoolThreads = 2;

unsigned Setting(const char* name, unsigned otherwise) {
    const char* text = std::getenv(name);
    return text == nullptr ? otherwise : static_cast<unsigned>(std::stoul(text));
}

class SoakTest : public testing::Test {
protected:
    SoakTest() {
        zrk::Kernel::GetKernel()->StartDispatcher();
        for (unsigned i = 0; i < kThreads; ++i)
            m_scenes.push_back(std::make_unique<SoakScene>(m_seed * kThreads + i, m_turns));
        for (const auto& scene : m_scenes) scene->KeepStart();
    }
    ~SoakTest() override {
        m_scenes.clear();
        zrk::Kernel::GetKernel()->StopDispatcher();
        zrannotations::ClearCalloutTemplates();
        du::Localizer::SetLanguage("en");
    }

    /// All scenes at once, round after round until the time is over, and there is enough to judge from.
    void Run() {
        std::barrier edited(kThreads, [this]() noexcept { zrk::World::GetWorld()->SetLanguage("en"); });
        std::barrier looked(kThreads, [this]() noexcept { EndRound(); });
        std::vector<std::thread> threads;
        for (const auto& scene : m_scenes) {
            threads.emplace_back([this, &scene, &edited, &looked] {
                while (!m_isOver) {
                    scene->Edit(m_editsPerRound);
                    scene->UndoAll();
                    edited.arrive_and_wait();
                    scene->ExpectStart();
                    scene->StartAnew();
                    looked.arrive_and_wait();
                }
            });
        }
        for (auto& thread : threads) thread.join();
    }

    void EndRound() {
        m_edits += kThreads * m_editsPerRound;
        const auto sample = MemoryLog::Take(m_edits);
        m_log.Add(sample);
        const auto now = std::chrono::steady_clock::now();
        m_isOver = (now >= m_end && m_log.IsEnough()) || HasFailure();
        if (now < m_nextLine && !m_isOver) return;
        m_nextLine = now + std::chrono::seconds(30);
        std::cout << m_edits << " edits: heap " << sample.heapBytes / 1024 << " KiB, pool "
                  << sample.poolBytes / 1024 << " KiB, resident " << sample.residentBytes / 1024 << " KiB"
                  << std::endl;
    }

    const unsigned m_seed = Setting("ZR_SOAK_SEED", 1);
    const unsigned m_editsPerRound = Setting("ZR_SOAK_EDITS", 25);
    const std::chrono::steady_clock::time_point m_end =
        std::chrono::steady_clock::now() + std::chrono::seconds(Setting("ZR_SOAK_SECONDS", 4));
    const zrkapp::illustration::HostSession m_session{kPoolThreads};
    std::shared_mutex m_turns;
    std::vector<std::unique_ptr<SoakScene>> m_scenes;
    // Touched by the last thread that ends a round only, but for m_isOver, which the others read after it.
    MemoryLog m_log;
    std::size_t m_edits = 0;
    std::chrono::steady_clock::time_point m_nextLine;
    bool m_isOver = false;
};

TEST_F(SoakTest, FourThreadsEditTheirScenesAndMemoryDoesNotGrow) {
    SCOPED_TRACE("seed " + std::to_string(m_seed));
    Run();
    EXPECT_EQ(m_log.Verdict(), "");
}

}  // namespace
}  // namespace zrcallouts
