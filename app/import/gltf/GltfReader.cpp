#include "app/import/gltf/GltfReader.h"

#include <fmt/format.h>

#include "app/import/ImportError.h"
#include "app/import/ReadFile.h"
#include "app/import/gltf/GlbContainer.h"
#include "app/import/gltf/GltfBytes.h"
#include "app/import/gltf/GltfParser.h"
#include "app/import/gltf/MeshLoader.h"

namespace zrsheet {
namespace {

constexpr std::size_t kMostDepth = 10'000;

// Walks the nodes depth first without recursion: files with chains of 100,000 nodes exist.
class TreeWalk {
public:
    TreeWalk(const GltfDocument& document, MeshLoader& meshes)
        : m_document(document), m_meshes(meshes), m_seen(document.nodes.size(), false) {}

    std::vector<AssemblyNode> Run() {
        Push(m_document.roots, -1, 1);
        while (!m_waiting.empty()) {
            const Visit visit = m_waiting.back();
            m_waiting.pop_back();
            Enter(visit);
        }
        return std::move(m_nodes);
    }

private:
    struct Visit {
        std::size_t node;
        int parent;
        std::size_t depth;
    };

    void Push(const std::vector<std::size_t>& nodes, int parent, std::size_t depth) {
        for (auto node = nodes.rbegin(); node != nodes.rend(); ++node)
            m_waiting.push_back({*node, parent, depth});
    }

    void Enter(const Visit& visit) {
        if (m_seen[visit.node]) {
            throw ImportError(fmt::format(
                "node {} is reached twice, nodes must be a tree; export the file again", visit.node));
        }
        m_seen[visit.node] = true;
        if (visit.depth > kMostDepth) {
            throw ImportError(
                fmt::format("nodes are nested deeper than {} at node {}; export the file with a flatter "
                            "structure",
                            kMostDepth, visit.node));
        }
        Append(m_document.nodes[visit.node], visit);
    }

    void Append(const GltfNode& from, const Visit& visit) {
        const int place = static_cast<int>(m_nodes.size());
        m_nodes.push_back({from.name, visit.parent, from.matrix, -1, from.properties});
        AddMesh(from, place);
        Push(from.children, place, visit.depth + 1);
    }

    void AddMesh(const GltfNode& from, int place) {
        if (!from.mesh) return;
        const std::optional<int> part = m_meshes.PartOf(*from.mesh);
        if (!part) return;
        const std::string& meshName = m_document.meshes[*from.mesh].name;
        AssemblyNode& node = m_nodes[static_cast<std::size_t>(place)];
        if (from.children.empty()) {
            node.part = *part;
            if (node.name.empty()) node.name = meshName;
        } else {
            m_nodes.push_back({meshName.empty() ? from.name : meshName, place, kIdentityMatrix, *part, {}});
        }
    }

    const GltfDocument& m_document;
    MeshLoader& m_meshes;
    std::vector<bool> m_seen;
    std::vector<Visit> m_waiting;
    std::vector<AssemblyNode> m_nodes;
};

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

Assembly ReadGltf(const std::filesystem::path& file) {
    const std::string content = ReadFile(file);
    const GlbContainer container = OpenContainer(content);
    const GltfDocument document = ParseGltf(container.json);
    GltfBytes bytes(document, container.binary, file.parent_path());
    MeshLoader meshes(document, bytes);
    Assembly assembly;
    assembly.nodes = WithoutEmpty(TreeWalk(document, meshes).Run());
    if (assembly.nodes.empty())
        throw ImportError("there are no triangles in it; export the bodies with the file");
    assembly.parts = meshes.TakeParts();
    NameAll(assembly);
    return assembly;
}

}  // namespace zrsheet
