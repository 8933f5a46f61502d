// A node of a product structure: it has an identifier and properties.

#pragma once

#include <map>
#include <mutex>
#include <string>
#include <tuple>
#include <vector>

#include "du/SmartPtr.h"
#include "du/Symbol.h"
#include "zrk/object/Object.h"
#include "zrk/object/PropertyValue.h"

namespace zrk {

/// Properties may be read and written from any thread; the rest never changes once made.
class BaseInstance : public Object {
public:
    static const ClassType CLASS_TYPE;

    BaseInstance(const du::Symbol& identifier, const std::string& name);
    ~BaseInstance() override;

    const ClassType& GetClassType() const override { return CLASS_TYPE; }
    std::string GetObjectName() const override { return m_name; }

    virtual bool HasChildren() const = 0;
    /// Unique in the structure and the same from session to session.
    virtual du::Symbol GetIdentifier() const { return m_identifier; }
    /// The values of all pairs (groups[i], names[i]) in order, joined by the unit separator; null when one is
    /// missing. No pairs at all: the empty value. O(pairs x log properties).
    virtual du::SmartPtr<PropertyValue> LookUpProperty(const std::vector<du::Symbol>& groups,
                                                       const std::vector<du::Symbol>& names,
                                                       const du::Symbol& source) const;

    const std::string& GetName() const { return m_name; }
    /// A value for one shape source, or, with the empty source, for all that have none of their own.
    void SetProperty(const du::Symbol& group, const du::Symbol& name, const du::Symbol& value,
                     const du::Symbol& source = du::Symbol::EMPTY);
    /// Nothing when there is none.
    void RemoveProperty(const du::Symbol& group, const du::Symbol& name,
                        const du::Symbol& source = du::Symbol::EMPTY);
    /// False, and `value` untouched, when there is none.
    bool FindProperty(const du::Symbol& group, const du::Symbol& name, const du::Symbol& source,
                      du::Symbol& value) const;

    using PropertyKey = std::tuple<du::Symbol, du::Symbol, du::Symbol>;  // group, name, source
    std::map<PropertyKey, du::Symbol> GetProperties() const;

private:
    const du::Symbol m_identifier;
    const std::string m_name;
    mutable std::mutex m_propertyMutex;  // guards m_properties
    std::map<PropertyKey, du::Symbol> m_properties;
};

}  // namespace zrk
