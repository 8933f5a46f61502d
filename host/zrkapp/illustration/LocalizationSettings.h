// What of a document is translated.

#pragma once

#include <atomic>

namespace zrkapp::illustration {

/// Any thread.
class LocalizationSettings {
public:
    /// Whether the texts of notes and callouts are.
    bool GetNotes() const { return m_notes.load(std::memory_order_relaxed); }
    void SetNotes(bool notes) { m_notes.store(notes, std::memory_order_relaxed); }

private:
    std::atomic<bool> m_notes{false};  // alone: no other field goes with it
};

}  // namespace zrkapp::illustration
