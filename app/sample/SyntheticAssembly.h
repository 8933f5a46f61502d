// Assemblies of any size, for measuring how work grows with them.

#pragma once

#include "app/import/Assembly.h"

namespace zrsheet {

struct SyntheticSize {
    int instances = 1000;  // of parts
    int parts = 100;       // that differ; instances share them in turn
    int levels = 3;        // of assemblies around the instances; 0: all stand side by side
};

/// Prisms in a cube of rows, none touching another; what stands beside each other is in one assembly. The
/// same sizes give the same assembly. Requires: 1 <= parts <= instances, levels not negative. Linear.
[[nodiscard]] Assembly MakeSyntheticAssembly(const SyntheticSize& size);

}  // namespace zrsheet
