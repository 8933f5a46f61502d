// A model as the importer hands it over: unique geometry, and the tree of its instances. Plain data, the same
// for every file format: metres, Y upwards. Readers of formats with other units or axes turn what they read.

#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace zrsheet {

/// A curve on a part's surface where two of its faces meet, or where one ends. Seams, where a face such as a
/// cylinder's meets itself, are none.
struct AssemblyEdge {
    bool isSmooth = false;                // the faces go over into each other without a crease
    std::vector<std::uint32_t> vertices;  // of the part, in order along the edge; at least two
};

/// Geometry that no other part of the assembly has: two bodies of equal triangles are one part, whatever they
/// are called. Vertices differ in position from each other, so that triangles that meet share them. No
/// triangle names a vertex twice.
struct AssemblyPart {
    std::string name;
    std::vector<float> positions;          // x, y, z of each vertex, all finite
    std::vector<std::uint32_t> indices;    // three to a triangle, counter-clockwise seen from outside
    std::vector<AssemblyEdge> edges = {};  // empty if the format knows triangles only
};

/// Red, green and blue of a surface as sRGB, from 0 to 1.
using AssemblyColor = std::array<float, 3>;

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
    std::optional<AssemblyColor> color = {};  // of an instance; none: the file says nothing
    std::string product =
        {};  // what it is an instance of, of one line; empty: the file does not tell them apart
};

/// The nodes stand in depth-first order, parents before their children, children in the file's order.
struct Assembly {
    std::string name;  // the file's, without folder and extension
    std::vector<AssemblyPart> parts;
    std::vector<AssemblyNode> nodes;
    std::vector<std::string> warnings;       // what of the file is not in here, and why; one line each
    std::vector<std::string> externalFiles;  // that were read or missed, as paths from the file's folder
};

}  // namespace zrsheet
