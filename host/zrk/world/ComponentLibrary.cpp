#include "zrk/world/ComponentLibrary.h"

#include <dlfcn.h>

#include <filesystem>
#include <stdexcept>

namespace zrk {
namespace {

/// Where this library lies: components are installed beside it.
std::filesystem::path KernelFolder() {
    Dl_info info{};
    if (dladdr(reinterpret_cast<const void*>(&KernelFolder), &info) == 0 || info.dli_fname == nullptr)
        return {};
    return std::filesystem::path(info.dli_fname).parent_path();
}

std::string FindFile(const std::string& name) {
    const std::string file = "lib" + name + ".so";
    const std::filesystem::path beside = KernelFolder() / file;
    std::error_code ignored;
    return std::filesystem::exists(beside, ignored) ? beside.string() : file;
}

}  // namespace

ComponentLibrary::ComponentLibrary(const std::string& name) : m_file(FindFile(name)) {
    m_library = dlopen(m_file.c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
    if (m_library == nullptr)
        throw std::runtime_error("cannot load the component " + m_file + ": " + dlerror());
    const std::string version = Find<VersionEntry>("ZRDllVersion")();
    if (version != ZR_VERSION) {
        throw std::runtime_error("the component " + m_file + " is of version " + version +
                                 ", but this program needs " ZR_VERSION);
    }
    const auto init = Find<Entry>("ZRDllInit");
    m_terminate = Find<Entry>("ZRDllTerminate");
    m_create = Find<CreateEntry>("ZRDllCreateComponent");
    init();
}

ComponentLibrary::~ComponentLibrary() {
    m_terminate();
    dlclose(m_library);
}

template <class Function>
Function ComponentLibrary::Find(const char* entry) const {
    void* address = dlsym(m_library, entry);
    if (address == nullptr) {
        throw std::runtime_error("the component " + m_file + " has no entry " + entry +
                                 "; it belongs to another version");
    }
    return reinterpret_cast<Function>(address);
}

bool ComponentLibrary::Create(const std::string& verb, const std::string& family, const std::string& kind,
                              du::SmartPtr<du::RefCounted>& out) const {
    return m_create(verb, family, kind, out);
}

}  // namespace zrk
