// Names a class of kernel objects at run time.

#pragma once

namespace zrk {

/// One constant per class, in static storage; compared by id. The parent is the type of the base class, null
/// at the top.
class ClassType {
public:
    constexpr ClassType(unsigned id, const char* name, const ClassType* parent)
        : m_id(id), m_name(name), m_parent(parent) {}

    constexpr unsigned GetId() const { return m_id; }
    constexpr const char* GetName() const { return m_name; }
    constexpr const ClassType* GetParent() const { return m_parent; }
    /// Whether this is the class with the id or derives from it.
    constexpr bool IsA(unsigned id) const { return m_id == id || (m_parent != nullptr && m_parent->IsA(id)); }

    friend constexpr bool operator==(const ClassType& a, const ClassType& b) { return a.m_id == b.m_id; }

private:
    unsigned m_id;
    const char* m_name;
    const ClassType* m_parent;
};

}  // namespace zrk
