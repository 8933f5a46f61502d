// Writes the sample assembly: zr_sample OUT.glb

#include <cstdio>
#include <fstream>

#include "app/sample/GearReducer.h"
#include "app/sample/GlbWriter.h"

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fputs("usage: zr_sample OUT.glb\n", stderr);
        return 2;
    }
    std::ofstream file(argv[1], std::ios::binary);
    file << zrsheet::WriteGlb(zrsheet::MakeGearReducer()) << std::flush;
    if (!file) std::fprintf(stderr, "%s cannot be written\n", argv[1]);
    return file ? 0 : 1;
}
