#include "app/import/reading/AssemblyTree.h"

#include <fmt/format.h>

#include <utility>

#include "app/import/ImportError.h"

namespace zrsheet {
namespace {

std::size_t ParentOf(const AssemblyNode& node) { return static_cast<std::size_t>(node.parent); }

std::vector<AssemblyNode> WithoutEmpty(std::vector<AssemblyNode> nodes) {
    std::vector<bool> isFull(nodes.size(), false);
    for (std::size_t i = nodes.size(); i-- > 0;) {
        if (nodes[i].part >= 0) isFull[i] = true;
        if (isFull[i] && nodes[i].parent >= 0) isFull[ParentOf(nodes[i])] = true;
    }
    std::vector<AssemblyNode> full;
    std::vector<int> newPlaces(nodes.size(), -1);
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        if (!isFull[i]) continue;
        newPlaces[i] = static_cast<int>(full.size());
        if (nodes[i].parent >= 0) nodes[i].parent = newPlaces[ParentOf(nodes[i])];
        full.push_back(std::move(nodes[i]));
    }
    return full;
}

// Some files name only the wrapper around a body.
void NameOnlyChildren(std::vector<AssemblyNode>& nodes) {
    std::vector<int> children(nodes.size(), 0);
    for (const AssemblyNode& node : nodes) {
        if (node.parent >= 0) ++children[ParentOf(node)];
    }
    for (AssemblyNode& node : nodes) {
        const bool isOnlyChild = node.parent >= 0 && children[ParentOf(node)] == 1;
        if (node.name.empty() && isOnlyChild) node.name = nodes[ParentOf(node)].name;
    }
}

void NameAll(Assembly& assembly) {
    NameOnlyChildren(assembly.nodes);
    int assemblies = 0;
    for (AssemblyNode& node : assembly.nodes) {
        if (node.part < 0) {
            if (node.name.empty()) node.name = fmt::format("Assembly {}", ++assemblies);
            continue;
        }
        std::string& partName = assembly.parts[static_cast<std::size_t>(node.part)].name;
        if (partName.empty()) partName = node.name;
        if (partName.empty()) partName = fmt::format("Part {}", node.part + 1);
        if (node.name.empty()) node.name = partName;
    }
}

}  // namespace

void FinishTree(Assembly& assembly) {
    assembly.nodes = WithoutEmpty(std::move(assembly.nodes));
    if (assembly.nodes.empty())
        throw ImportError("there are no triangles in it; export the bodies with the file");
    NameAll(assembly);
}

}  // namespace zrsheet
