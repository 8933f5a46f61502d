// One action of the user: all that it changes in a scene is undone and done again together.

#pragma once

#include <string>

#include "du/SmartPtr.h"
#include "zrk/operation/Operation.h"

namespace zrk {

class Scene;

/// From the constructor on every change of the scene's objects is taken in, whoever makes it, on whatever
/// thread and under whatever operation: annotations that enter, leave or change, parts, views, items, and the
/// operations that are recorded meanwhile. Nothing is taken in while something is undone or done again.
///
/// A transaction on a scene that has one open already joins it: its end does nothing by itself, and when it
/// ends without Commit the outer one can only roll back. Undo and Redo of the scene's history do nothing
/// while one is open.
///
/// Of callouts and insets the state before their first change is kept, and at Commit the state after; what
/// the engine derives for itself (dashed, dimmed, clipped, order of drawing) is no part of it.
class Transaction {
public:
    /// `name` is what the user reads in the history.
    Transaction(const du::SmartPtr<Scene>& scene, const std::string& name);
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;
    /// Without Commit before: takes everything back. No entry is left, and what was undone before can still
    /// be done again.
    ~Transaction();

    /// Makes one entry in the scene's history, none when nothing changed. False, with everything taken back,
    /// when a transaction that had joined was not committed. Requires: no other thread changes the scene.
    bool Commit();

    /// Where changes of what belongs to no scene (properties, templates, settings) put their steps, after
    /// the change is made. Null once the transaction has ended.
    du::SmartPtr<Operation> GetOperation() const;

private:
    const du::SmartPtr<Scene> m_scene;
    const bool m_isOutermost;
    bool m_isOpen = true;
};

}  // namespace zrk
