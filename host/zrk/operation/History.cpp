#include "zrk/operation/History.h"

#include <utility>

#include "zrk/object/Checked.h"
#include "zrk/operation/Operation.h"
#include "zrk/operation/StateJournal.h"

namespace zrk {

std::atomic<unsigned> History::s_active{0};

/// While one lives, changes ask their scene's history.
class History::Activity {
public:
    Activity() { s_active.fetch_add(1, std::memory_order_relaxed); }
    Activity(const Activity&) = delete;
    Activity& operator=(const Activity&) = delete;
    ~Activity() { s_active.fetch_sub(1, std::memory_order_relaxed); }
};

History::History(du::SmartPtr<AnnoSet> annoSet) : m_annoSet(std::move(annoSet)) {}

History::~History() = default;

void History::Record(const du::SmartPtr<Operation>& operation) {
    Entries forgotten;
    const std::lock_guard hold(m_mutex);
    if (m_open) {
        m_open->Append(*operation);
        return;
    }
    m_done.push_back({operation, nullptr, nullptr});
    forgotten.swap(m_undone);
}

bool History::Undo() { return Replay(m_done, m_undone, &Operation::Undo, &Entry::before); }

bool History::Redo() { return Replay(m_undone, m_done, &Operation::Redo, &Entry::after); }

bool History::Replay(Entries& from, Entries& to, Work work,
                     std::shared_ptr<const StateJournal> Entry::*states) {
    Entry entry;
    {
        const std::lock_guard hold(m_mutex);
        if (from.empty() || m_open) return false;
        entry = std::move(from.back());
        from.pop_back();
    }
    if (entry.*states) {
        Run(*entry.operation, work, entry.*states);
    } else {
        (*entry.operation.*work)({});
    }
    const std::lock_guard hold(m_mutex);
    to.push_back(std::move(entry));
    return true;
}

// What the steps, and the states, set off (an engine follows items and insets, say) is no part of the
// operation: what it changes beside the states is put back, and the states have the last word.
void History::Run(Operation& operation, Work work, const std::shared_ptr<const StateJournal>& states) {
    const Activity activity;
    const auto sideEffects = std::make_shared<StateJournal>(m_annoSet, states);
    {
        const std::lock_guard hold(m_mutex);
        m_journal = sideEffects;
        m_sideEffects = Checked(new Operation({}, operation.GetScene(), true));
    }
    (operation.*work)([this] { UndoSideEffects(); });
    states->Restore();
    UndoSideEffects();
    {
        const std::lock_guard hold(m_mutex);
        m_journal = nullptr;
        m_sideEffects = nullptr;
    }
    if (sideEffects->IsEmpty()) return;
    sideEffects->Restore();
    states->Restore();
}

void History::UndoSideEffects() {
    du::SmartPtr<Operation> sideEffects;
    {
        const std::lock_guard hold(m_mutex);
        sideEffects = m_sideEffects;
    }
    if (!sideEffects->HasUndo()) return;
    const du::SmartPtr<Operation> next(Checked(new Operation({}, sideEffects->GetScene(), true)));
    {
        const std::lock_guard hold(m_mutex);
        m_sideEffects = next;
    }
    sideEffects->Undo();
}

bool History::Begin(const du::SmartPtr<Operation>& operation) {
    const std::lock_guard hold(m_mutex);
    if (m_open) return false;
    m_open = operation;
    m_isFailed = false;
    m_journal = std::make_shared<StateJournal>(m_annoSet);
    s_active.fetch_add(1, std::memory_order_relaxed);
    return true;
}

bool History::Commit() {
    bool isFailed = false;
    Entry entry;
    std::shared_ptr<StateJournal> journal;
    {
        const std::lock_guard hold(m_mutex);
        isFailed = m_isFailed;
        entry.operation = m_open;
        journal = m_journal;
    }
    if (isFailed) RollBack();
    if (isFailed || !entry.operation) return !isFailed;
    entry.after = journal->CaptureChanged();
    entry.before = journal;
    Entries forgotten;
    const std::lock_guard hold(m_mutex);
    s_active.fetch_sub(1, std::memory_order_relaxed);
    m_open = nullptr;
    m_journal = nullptr;
    if (journal->IsEmpty() && !entry.operation->HasUndo()) return true;
    m_done.push_back(std::move(entry));
    forgotten.swap(m_undone);
    return true;
}

void History::RollBack() {
    du::SmartPtr<Operation> operation;
    std::shared_ptr<StateJournal> journal;
    {
        const std::lock_guard hold(m_mutex);
        std::swap(operation, m_open);
        std::swap(journal, m_journal);
    }
    if (!operation) return;
    Run(*operation, &Operation::Undo, journal);
    s_active.fetch_sub(1, std::memory_order_relaxed);
}

void History::MarkFailed() {
    const std::lock_guard hold(m_mutex);
    m_isFailed = true;
}

du::SmartPtr<Operation> History::GetOpenOperation() const {
    const std::lock_guard hold(m_mutex);
    return m_open;
}

du::SmartPtr<Operation> History::GetOperationFor(const du::SmartPtr<Operation>& given) const {
    const std::lock_guard hold(m_mutex);
    return m_open ? m_open : given ? given : m_sideEffects;
}

bool History::Keep(const du::SmartPtr<Annotation>& annotation) {
    std::shared_ptr<StateJournal> journal;
    {
        const std::lock_guard hold(m_mutex);
        journal = m_journal;
    }
    if (journal) journal->Keep(annotation);
    return static_cast<bool>(journal);
}

std::string History::GetUndoName() const {
    const std::lock_guard hold(m_mutex);
    return m_done.empty() ? std::string() : m_done.back().operation->GetName();
}

std::string History::GetRedoName() const {
    const std::lock_guard hold(m_mutex);
    return m_undone.empty() ? std::string() : m_undone.back().operation->GetName();
}

std::vector<std::string> History::GetUndoNames() const {
    const std::lock_guard hold(m_mutex);
    std::vector<std::string> names;
    for (const Entry& entry : m_done) names.push_back(entry.operation->GetName());
    return names;
}

std::vector<std::string> History::GetRedoNames() const {
    const std::lock_guard hold(m_mutex);
    std::vector<std::string> names;
    for (auto entry = m_undone.rbegin(); entry != m_undone.rend(); ++entry) {
        names.push_back(entry->operation->GetName());
    }
    return names;
}

std::size_t History::GetUndoCount() const {
    const std::lock_guard hold(m_mutex);
    return m_done.size();
}

std::size_t History::GetRedoCount() const {
    const std::lock_guard hold(m_mutex);
    return m_undone.size();
}

void History::Clear() {
    Entries done;
    Entries undone;
    du::SmartPtr<Operation> open;
    std::shared_ptr<StateJournal> journal;
    const std::lock_guard hold(m_mutex);
    if (m_open) s_active.fetch_sub(1, std::memory_order_relaxed);
    done.swap(m_done);
    undone.swap(m_undone);
    std::swap(open, m_open);
    std::swap(journal, m_journal);
}

}  // namespace zrk
