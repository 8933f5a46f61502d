// Writes the sample assembly: zr_sample OUT.glb
// or one of any size, for measuring: zr_sample OUT.glb INSTANCES PARTS LEVELS

#include <charconv>
#include <cstdio>
#include <cstring>
#include <fstream>

#include "app/sample/GearReducer.h"
#include "app/sample/GlbWriter.h"
#include "app/sample/SyntheticAssembly.h"

namespace {

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
    zrsheet::SyntheticSize size;
    if (argc != 2 && (argc != 5 || !ReadSize(argv + 2, size))) {
        std::fputs(
            "usage: zr_sample OUT.glb [INSTANCES PARTS LEVELS]\n"
            "INSTANCES: at most 1000000, of PARTS different parts, in LEVELS levels of assemblies\n",
            stderr);
        return 2;
    }
    std::ofstream file(argv[1], std::ios::binary);
    file << zrsheet::WriteGlb(argc == 2 ? zrsheet::MakeGearReducer() : zrsheet::MakeSyntheticAssembly(size))
         << std::flush;
    if (!file) std::fprintf(stderr, "%s cannot be written\n", argv[1]);
    return file ? 0 : 1;
}
