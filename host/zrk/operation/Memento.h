// What an object was like at one moment.

#pragma once

#include <utility>

#include "du/RefCounted.h"
#include "du/SmartPtr.h"

namespace zrk {

class Memento : public virtual du::RefCounted {
public:
    ~Memento() override;

    /// Requires: `other` is of the same object.
    virtual bool Equals(const Memento& other) const = 0;
    /// Makes the object what it was, and tells who has to follow.
    virtual void Restore() const = 0;
};

/// For an Owner with CaptureState() and RestoreState(state), whose states can be compared.
template <class Owner>
class StateMemento : public Memento {
public:
    explicit StateMemento(du::SmartPtr<Owner> owner)
        : m_owner(std::move(owner)), m_state(m_owner->CaptureState()) {}

    bool Equals(const Memento& other) const override {
        return m_state == static_cast<const StateMemento&>(other).m_state;
    }
    void Restore() const override { m_owner->RestoreState(m_state); }

private:
    const du::SmartPtr<Owner> m_owner;
    const decltype(std::declval<const Owner&>().CaptureState()) m_state;
};

}  // namespace zrk
