// A component that is loaded by name while the application runs.

#pragma once

#include <string>

#include "du/RefCounted.h"
#include "du/SmartPtr.h"

namespace zrk {

/// Stays loaded until the process ends: objects of the component may outlive every owner of this. Any thread
/// once made.
class ComponentLibrary {
public:
    /// Loads lib<name>.so from beside the kernel's own library, or from where the loader looks. Throws
    /// std::runtime_error with one line that says what is missing, or which version it is if not the
    /// kernel's.
    explicit ComponentLibrary(const std::string& name);
    ComponentLibrary(const ComponentLibrary&) = delete;
    ComponentLibrary& operator=(const ComponentLibrary&) = delete;
    ~ComponentLibrary();

    /// Asks for an object by three words; false when the component does not know them.
    bool Create(const std::string& verb, const std::string& family, const std::string& kind,
                du::SmartPtr<du::RefCounted>& out) const;

private:
    using VersionEntry = const char* (*)();
    using Entry = void (*)();
    using CreateEntry = bool (*)(const std::string&, const std::string&, const std::string&,
                                 du::SmartPtr<du::RefCounted>&);

    template <class Function>
    Function Find(const char* entry) const;

    std::string m_file;
    void* m_library = nullptr;
    Entry m_terminate = nullptr;
    CreateEntry m_create = nullptr;
};

}  // namespace zrk
