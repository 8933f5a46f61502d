#include "app/import/gltf/GltfReader.h"

#include <fmt/format.h>

#include "app/import/ImportError.h"
#include "app/import/gltf/GlbContainer.h"
#include "app/import/gltf/GltfBytes.h"
#include "app/import/gltf/GltfParser.h"
#include "app/import/gltf/MeshLoader.h"
#include "app/import/reading/AssemblyTree.h"
#include "app/import/reading/ReadFile.h"

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
        const std::optional<AssemblyColor>& color = m_document.meshes[*from.mesh].color;
        if (from.children.empty()) {
            node.part = *part;
            node.color = color;
            if (node.name.empty()) node.name = meshName;
        } else {
            m_nodes.push_back(
                {meshName.empty() ? from.name : meshName, place, kIdentityMatrix, *part, {}, color});
        }
    }

    const GltfDocument& m_document;
    MeshLoader& m_meshes;
    std::vector<bool> m_seen;
    std::vector<Visit> m_waiting;
    std::vector<AssemblyNode> m_nodes;
};

}  // namespace

Assembly ReadGltf(const std::filesystem::path& file) {
    const std::string content = ReadFile(file);
    const GlbContainer container = OpenContainer(content);
    const GltfDocument document = ParseGltf(container.json);
    GltfBytes bytes(document, container.binary, file.parent_path());
    MeshLoader meshes(document, bytes);
    Assembly assembly;
    assembly.nodes = TreeWalk(document, meshes).Run();
    assembly.parts = meshes.TakeParts();
    FinishTree(assembly);
    return assembly;
}

}  // namespace zrsheet
