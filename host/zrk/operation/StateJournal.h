// What the annotations of a scene were like before a change, each kept once.

#pragma once

#include <memory>
#include <mutex>
#include <unordered_map>
#include <vector>

#include "du/SmartPtr.h"
#include "zrk/annotation/AnnoSet.h"
#include "zrk/annotation/Annotation.h"
#include "zrk/operation/Memento.h"

namespace zrk {

/// Kept are an annotation's state and its place in the set. Any thread.
class StateJournal {
public:
    /// Annotations that `except` has are passed over; it may be null. Held, for a thread that asked for this
    /// journal may still be here when the work is done that the other one was for.
    explicit StateJournal(du::SmartPtr<AnnoSet> annoSet,
                          std::shared_ptr<const StateJournal> except = nullptr);
    StateJournal(const StateJournal&) = delete;
    StateJournal& operator=(const StateJournal&) = delete;
    ~StateJournal();

    /// Nothing for an annotation that is kept already, nor for one that comes late: another thread may have
    /// asked for the journal before CaptureChanged and get here only after it.
    void Keep(const du::SmartPtr<Annotation>& annotation);
    bool Contains(const du::SmartPtr<Annotation>& annotation) const;
    bool IsEmpty() const;

    /// The same annotations as they are now. Those that are as they were are forgotten, here too.
    std::shared_ptr<const StateJournal> CaptureChanged();
    /// Makes all annotations what they were. O(n log n).
    void Restore() const;

private:
    struct Kept {
        du::SmartPtr<Annotation> annotation;
        AnnoSet::Membership membership;
        du::SmartPtr<Memento> state;  // null for annotations that never change
    };

    Kept Capture(const du::SmartPtr<Annotation>& annotation) const;
    std::vector<Kept> AllKept() const;

    const du::SmartPtr<AnnoSet> m_annoSet;
    const std::shared_ptr<const StateJournal> m_except;
    // Guards the three below. Held while a state is captured, which takes the annotation's own leaf lock: of
    // two threads that are about to change it one captures, and the other waits until it has.
    mutable std::mutex m_mutex;
    std::vector<Kept> m_kept;  // in the order in which they were first changed
    std::unordered_map<const Annotation*, std::size_t> m_places;
    bool m_isClosed = false;  // has told what changed
};

}  // namespace zrk
