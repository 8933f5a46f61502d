// Base of the kernel's objects: counted, allocated from the pool, typed, and open to attached data.

#pragma once

#include <memory>
#include <mutex>
#include <string>
#include <unordered_map>
#include <vector>

#include "du/RefCounted.h"
#include "du/SmartPtr.h"
#include "du/Symbol.h"
#include "du/UserData.h"
#include "zrk/object/ClassType.h"
#include "zrk/object/MemoryPoolAllocated.h"

namespace zrk {

/// Attached data may be read and written from any thread.
class Object : public MemoryPoolAllocated, public virtual du::RefCounted {
public:
    static const ClassType CLASS_TYPE;

    Object();
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;
    ~Object() override;

    virtual const char* GetDebugClassName() const { return GetClassType().GetName(); }
    virtual const ClassType& GetClassType() const { return CLASS_TYPE; }
    virtual bool IsATypeOfId(unsigned id) const { return GetClassType().IsA(id); }
    /// Appends the object's type and those of its bases, the object's own first.
    virtual void GetClassTypes(std::vector<const ClassType*>& out) const;
    /// Attached data belongs to the caller, who takes it away before it goes; false when the key is taken.
    virtual bool AddUserData(const du::Symbol& key, du::UserData* data);
    /// Null when there is none.
    virtual du::UserData* GetUserData(const du::Symbol& key) const;
    /// Takes away what is attached under the key, counted or not.
    virtual void RemoveUserData(const du::Symbol& key);
    virtual std::string GetObjectDescription() const { return GetObjectName(); }
    virtual std::string GetObjectName() const { return {}; }
    /// Like AddUserData, with a counted reference that the object keeps.
    virtual bool AddRefCountedUserData(const du::Symbol& key, const du::SmartPtr<du::RefCounted>& data);
    virtual du::SmartPtr<du::RefCounted> GetRefCountedUserData(const du::Symbol& key) const;

private:
    struct Attached {
        std::unordered_map<du::Symbol, du::UserData*> plain;
        std::unordered_map<du::Symbol, du::SmartPtr<du::RefCounted>> counted;
    };

    Attached& Attachments();

    mutable std::mutex m_attachedMutex;    // guards m_attached
    std::unique_ptr<Attached> m_attached;  // made when first used: most objects carry none
};

}  // namespace zrk
