// What the user did in a scene and can undo.

#pragma once

#include <atomic>
#include <cstddef>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "du/SmartPtr.h"

namespace zrk {

class AnnoSet;
class Annotation;
class Operation;
class StateJournal;

/// Operations may be recorded, and changes taken in, from any thread; to undo is the user's, one at a time.
class History {
public:
    explicit History(du::SmartPtr<AnnoSet> annoSet);
    ~History();

    /// A new entry; what was undone can no longer be done again. While a transaction is open the operation's
    /// steps become part of it instead.
    void Record(const du::SmartPtr<Operation>& operation);
    /// False when there is nothing to undo, or while a transaction is open.
    bool Undo();
    bool Redo();
    /// The name of the operation that Undo would undo, "" when there is none.
    std::string GetUndoName() const;
    std::string GetRedoName() const;
    /// In the order in which they were done.
    std::vector<std::string> GetUndoNames() const;
    std::vector<std::string> GetRedoNames() const;
    std::size_t GetUndoCount() const;
    std::size_t GetRedoCount() const;
    /// Forgets everything, an open transaction too, whose changes stay. Operations hold their scene, so a
    /// scene that closes clears its history.
    void Clear();

    /// Whether in any scene of the process a transaction is open or something is being undone: where this is
    /// false the three below need not be asked.
    static bool IsAnyActive() { return s_active.load(std::memory_order_relaxed) != 0; }
    /// Where a change puts its step: the open transaction's operation; null outside one.
    du::SmartPtr<Operation> GetOpenOperation() const;
    /// The open transaction's operation, else the given one, which may be null. While something is undone and
    /// none is given: an operation that is taken back at once, for changes that are only set off by the undo.
    du::SmartPtr<Operation> GetOperationFor(const du::SmartPtr<Operation>& given) const;
    /// Called before an annotation enters, leaves or changes. True when a transaction, or an undo under way,
    /// has its state from before.
    bool Keep(const du::SmartPtr<Annotation>& annotation);

private:
    friend class Transaction;

    struct Entry {
        du::SmartPtr<Operation> operation;
        std::shared_ptr<const StateJournal> before;  // null for what was recorded outside a transaction
        std::shared_ptr<const StateJournal> after;
    };
    using Entries = std::vector<Entry>;
    using Work = void (Operation::*)(const std::function<void()>& afterEach);

    class Activity;

    // For transactions.
    /// False when one is open already.
    bool Begin(const du::SmartPtr<Operation>& operation);
    bool Commit();
    void RollBack();
    void MarkFailed();

    bool Replay(Entries& from, Entries& to, Work work, std::shared_ptr<const StateJournal> Entry::*states);
    /// Does the work while a journal of its own keeps what it changes beside what it is meant to change, then
    /// sets all straight.
    void Run(Operation& operation, Work work, const std::shared_ptr<const StateJournal>& states);
    /// Takes back what a step has set off.
    void UndoSideEffects();

    static std::atomic<unsigned> s_active;

    const du::SmartPtr<AnnoSet> m_annoSet;
    mutable std::mutex m_mutex;  // guards all below; not held while an operation runs
    Entries m_done;
    Entries m_undone;
    du::SmartPtr<Operation> m_open;  // null outside a transaction
    bool m_isFailed = false;
    du::SmartPtr<Operation> m_sideEffects;    // null unless something is being undone
    std::shared_ptr<StateJournal> m_journal;  // of the open transaction, or of what is being undone
};

}  // namespace zrk
