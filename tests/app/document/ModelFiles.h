// The models that whole sheets are made of: the project's sample, written by its program, and assemblies by
// others.

#pragma once

#include <filesystem>
#include <vector>

#include "app/import/Assembly.h"

namespace zrsheet {

/// Imported once for the whole program, as the reader is a process of its own; throws when it cannot be made.
const Assembly& SampleAssembly();

/// The .glb files in the folder of models by others, in order of their names; empty when there is no such
/// folder. The environment variable ZR_MODELS names another one.
std::vector<std::filesystem::path> ModelsByOthers();

/// The same, imported once each.
const Assembly& ImportedModel(const std::filesystem::path& file);

}  // namespace zrsheet
