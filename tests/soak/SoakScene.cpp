#include "tests/soak/SoakScene.h"

#include <future>
#include <mutex>

#include "zrk/operation/Transaction.h"
#include "zrk/world/Kernel.h"
#include "zrk/world/World.h"

namespace zrcallouts {
namespace {

/// What was posted before has run when this comes back.
void AwaitDispatcher() {
    std::promise<void> reached;
    zrk::Kernel::GetKernel()->Post([&reached](int) { reached.set_value(); });
    reached.get_future().wait();
}

}  // namespace

SoakScene::SoakScene(unsigned seed, std::shared_mutex& turns)
    : SceneWalk([random = std::mt19937(seed)]() mutable { return static_cast<unsigned>(random()); },
                Host::kRunning),
      m_turns(turns) {}

void SoakScene::Edit(std::size_t edits) {
    auto& history = m_scene->GetHistory();
    for (std::size_t i = 0; i < edits && !HasFailure(); ++i) {
        const unsigned choice = Below(10);
        if (choice < 6) {
            Act();
        } else {
            const std::shared_lock turn(m_turns);
            const bool isDone = choice < 8 ? history.Undo() : history.Redo();
            m_diary += choice < 8 ? "undo" : "redo";
            m_diary += isDone ? "\n" : " of nothing\n";
            Settle();
        }
        Probe();
    }
}

void SoakScene::Act() {
    if (Chance(6)) ChangeLanguage();
    std::shared_lock turn(m_turns,
                          std::defer_lock);  // outlives the transaction, which may end in a roll back
    zrk::Transaction transaction(m_scene, "Act");
    for (unsigned count = 1 + Below(3); count > 0; --count)
        m_diary += DoOne(transaction.GetOperation()) + ", ";
    turn.lock();
    Settle();
    const bool isKept = !Chance(8);
    m_diary += isKept ? "committed\n" : "given up\n";
    if (isKept) transaction.Commit();
}

void SoakScene::Probe() {
    const std::shared_lock turn(m_turns);
    const std::string fault = RegistryFault();
    EXPECT_EQ(fault, "") << "after\n" << m_diary << "in\n" << (fault.empty() ? "" : Look());
}

void SoakScene::ChangeLanguage() {
    const std::lock_guard turn(m_turns);
    zrk::World::GetWorld()->SetLanguage(Chance(2) ? "de" : "en");
}

void SoakScene::UndoAll() {
    const std::shared_lock turn(m_turns);
    while (m_scene->GetHistory().Undo()) {
    }
    Settle();
}

void SoakScene::ExpectStart() { EXPECT_EQ(Look(), m_start) << "undone to the start"; }

void SoakScene::StartAnew() {
    m_scene->GetHistory().Clear();
    m_diary.clear();
    StopEngine();
    StartEngine();
    ForgetRegrouping();
}

void SoakScene::Settle() {
    do {
        WaitForPool();
        AwaitDispatcher();
        AwaitDispatcher();  // what it ran may have posted more
    } while (m_engine->GetPickRequestCount() > 0);
}

}  // namespace zrcallouts
