// Writes the sample assembly: zr_sample OUT.glb
// or one of any size, for measuring: zr_sample OUT.glb INSTANCES PARTS LEVELS

#include <charconv>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <string_view>

#include "app/sample/GearReducer.h"
#include "app/sample/GlbWriter.h"
#include "app/sample/SyntheticAssembly.h"

namespace {

constexpr int kBadInput = 2;
constexpr const char* kUsage = "zr_sample OUT.glb [INSTANCES PARTS LEVELS]";

int Refuse(const char* what) {
    std::fprintf(stderr, "zr_sample: %s; usage: %s\n", what, kUsage);
    return kBadInput;
}

int Help() {
    std::printf(
        "usage: %s\nWrites the sample assembly, a gear reducer, as binary glTF, or one for measuring.\n"
        "INSTANCES: at most 1000000, of PARTS different parts, in LEVELS levels of assemblies\n",
        kUsage);
    return 0;
}

bool ReadNumber(const char* text, int& number) {
    const char* const end = text + std::strlen(text);
    const auto [stop, error] = std::from_chars(text, end, number);
    return error == std::errc() && stop == end;
}

bool ReadSize(const char* const* numbers, zrsheet::SyntheticSize& size) {
    constexpr int kMostInstances = 1'000'000;
    return ReadNumber(numbers[0], size.instances) && ReadNumber(numbers[1], size.parts) &&
           ReadNumber(numbers[2], size.levels) && size.parts >= 1 && size.parts <= size.instances &&
           size.instances <= kMostInstances && size.levels >= 0;
}

}  // namespace

int main(int argc, char** argv) {
    const std::string_view first = argc > 1 ? argv[1] : "";
    if (first == "--help" || first == "-h") return Help();
    if (first.empty()) return Refuse("the file to write is missing");
    if (first.starts_with('-')) return Refuse("there are no options but --help");
    if (argc != 2 && argc != 5) return Refuse("the number of arguments is wrong");
    zrsheet::SyntheticSize size;
    if (argc == 5 && !ReadSize(argv + 2, size)) return Refuse("the size is no size of an assembly");
    std::ofstream file(argv[1], std::ios::binary);
    file << zrsheet::WriteGlb(argc == 2 ? zrsheet::MakeGearReducer() : zrsheet::MakeSyntheticAssembly(size))
         << std::flush;
    return file ? 0 : Refuse("the file cannot be written");
}
