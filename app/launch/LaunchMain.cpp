// zrsheet: looks whether the libraries that the program itself is linked with are there and belong together,
// then becomes the program. Were they missing, the system's loader would end it before its first line, in
// words that tell nobody what to do.

#include <dlfcn.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <string>

namespace {

constexpr int kBadInput = 2;
constexpr const char* kComponent = "libzrcallouts.so";
constexpr const char* kProgram = "zrsheet-app";

int Fail(const std::string& message) {
    std::fprintf(stderr, "zrsheet: %s; install zrsheet again\n", message.c_str());
    return kBadInput;
}

/// What is wrong with the component, or with a library that it needs; "" when nothing is.
std::string ComponentFault(const std::filesystem::path& libraries) {
    void* component = dlopen(kComponent, RTLD_NOW | RTLD_LOCAL);
    if (component == nullptr)
        return std::string("cannot load ") + dlerror() + " (libraries belong into " + libraries.string() +
               ")";
    void* entry = dlsym(component, "ZRDllVersion");
    if (entry == nullptr) return std::string("the component ") + kComponent + " tells no version";
    const std::string version = reinterpret_cast<const char* (*)()>(entry)();
    if (version == ZR_VERSION) return {};
    Dl_info place{};
    dladdr(entry, &place);
    const auto file = std::filesystem::weakly_canonical(place.dli_fname).string();
    return "the component " + file + " is of version " + version + ", but this program needs " ZR_VERSION;
}

}  // namespace

int main(int, char** argv) {
    std::error_code error;
    const auto folder = std::filesystem::read_symlink("/proc/self/exe", error).parent_path();
    const std::string fault = ComponentFault(folder.parent_path() / "lib");
    if (!fault.empty()) return Fail(fault);
    const std::string program = (folder / kProgram).string();
    execv(program.c_str(), argv);
    return Fail("cannot run " + program + ": " + std::strerror(errno));
}
