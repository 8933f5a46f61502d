// A model as the importer hands it over: unique geometry, and the tree of its instances. Plain data, the same
// for every file format. Coordinates are the file's own (glTF: metres, Y upwards); whoever looks at them
// turns them.

#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace zrsheet {

/// Geometry that no other part of the assembly has: two bodies of equal triangles are one part, whatever they
/// are called. Vertices differ in position from each other, so that triangles that meet share them. No
/// triangle names a vertex twice.
struct AssemblyPart {
    std::string name;
    std::vector<float> positions;        // x, y, z of each vertex, all finite
    std::vector<std::uint32_t> indices;  // three to a triangle, counter-clockwise seen from outside
};

/// The matrix that leaves every point where it is.
inline constexpr std::array<double, 16> kIdentityMatrix{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

/// An assembly, or a leaf: one instance of a part. Every node has a part or a part somewhere below it, never
/// both.
struct AssemblyNode {
    std::string name;  // valid UTF-8 of one line, never empty
    int parent = -1;   // always less than the node's own place; -1 for a root
    std::array<double, 16> matrix =
        kIdentityMatrix;  // to the parent's space, p' = p * M, translation in 12 to 14
    int part = -1;        // -1: an assembly
    std::vector<std::pair<std::string, std::string>> properties;  // in the file's order
};

/// The nodes stand in depth-first order, parents before their children, children in the file's order.
struct Assembly {
    std::string name;  // the file's, without folder and extension
    std::vector<AssemblyPart> parts;
    std::vector<AssemblyNode> nodes;
};

}  // namespace zrsheet
