// Makes the tree of a file the structure that an author would have drawn up.

#pragma once

#include <string>
#include <vector>

#include "app/import/Assembly.h"

namespace zrsheet {

/// Assemblies around a single node are gone: exporters write them to carry a transform or a name. Their names
/// and properties pass on to the node where it has none of its own worth reading. Linear.
[[nodiscard]] Assembly WithoutWrappers(Assembly assembly);

/// An assembly around everything is the product itself: its name becomes the model's, its children the top.
/// Linear.
[[nodiscard]] Assembly WithProductAtTop(Assembly assembly);

/// A name of every node that no other has: its place in the tree, such as "/Pump/Rotor/Screw:2". Linear.
[[nodiscard]] std::vector<std::string> InstancePaths(const Assembly& assembly);

/// What an instance is an instance of, as far as the file tells: the instance's own name otherwise.
[[nodiscard]] const std::string& ProductName(const AssemblyNode& node);

/// What each part is called in the parts list: the product name that its instances share, or what their names
/// begin with.
/// Linear.
[[nodiscard]] std::vector<std::string> PartNames(const Assembly& assembly);

/// A number for each node; nodes with the same number are the same part, or assemblies of the same parts in
/// the same places.
[[nodiscard]] std::vector<int> ComponentNumbers(const Assembly& assembly);

}  // namespace zrsheet
