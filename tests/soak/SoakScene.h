// One scene among several in a running host, edited at random on a thread of its own.

#pragma once

#include <cstddef>
#include <random>
#include <shared_mutex>

#include "tests/callouts/SceneWalk.h"

namespace zrcallouts {

/// Made and destroyed on the thread that owns the host, whose dispatcher runs. What the scenes share are
/// symbols, the pools of memory and of tasks, the kernel, the world and its language.
class SoakScene : public SceneWalk {
public:
    /// `turns`: held while a scene is committed, undone or looked at, all of which ask for quiet; the
    /// language changes only while nobody holds it. It outlives this.
    SoakScene(unsigned seed, std::shared_mutex& turns);

    void TestBody() override {}

    /// The state that undo has to lead back to. Requires: all scenes are made and rest.
    void KeepStart() { m_start = Look(); }
    /// The way there: `edits` actions of the user, some undone and done again. Expects the engine's
    /// registry to be right all the time.
    void Edit(std::size_t edits);
    /// The way back: undoes all.
    void UndoAll();
    /// Expects that all is as it was at first. Requires: the other scenes rest after UndoAll.
    void ExpectStart();
    /// A new engine for the scene, and no history. The others may go on meanwhile.
    void StartAnew();

protected:
    void Settle() override;
    /// Done between the actions instead: undoing the language is nobody's who does not own it.
    void SwitchLanguage(const OperationPtr&) override {}

private:
    void Act();
    void ChangeLanguage();
    /// Expects the engine's registry to be right, and tells how it got wrong when it is not.
    void Probe();

    std::shared_mutex& m_turns;
    std::string m_start;
    std::string m_diary;  // the edits since the scene was as at first
};

}  // namespace zrcallouts
