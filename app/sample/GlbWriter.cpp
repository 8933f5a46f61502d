#include "app/sample/GlbWriter.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace zrsheet {
namespace {

using Json = nlohmann::ordered_json;

class GlbDocument {
public:
    explicit GlbDocument(const Assembly& assembly) {
        m_json["asset"] = {{"version", "2.0"}, {"generator", "zr_sample"}};
        m_json["scene"] = 0;
        for (const AssemblyPart& part : assembly.parts) AddMesh(part);
        AddNodes(assembly);
        m_json["buffers"] = Json::array({{{"byteLength", m_binary.size()}}});
    }

    std::string Bytes() const {
        constexpr std::uint32_t kJson = 0x4E4F'534A;
        constexpr std::uint32_t kBinary = 0x004E'4942;
        std::string text = m_json.dump();
        text.resize((text.size() + 3) / 4 * 4, ' ');
        std::string bytes = "glTF";
        AppendWord(bytes, 2);
        AppendWord(bytes, 12 + 8 + text.size() + 8 + m_binary.size());
        AppendWord(bytes, text.size());
        AppendWord(bytes, kJson);
        bytes += text;
        AppendWord(bytes, m_binary.size());
        AppendWord(bytes, kBinary);
        return bytes + m_binary;
    }

private:
    static void AppendWord(std::string& bytes, std::size_t value) {
        const auto word = static_cast<std::uint32_t>(value);
        bytes.append(reinterpret_cast<const char*>(&word), sizeof word);
    }

    // Elements are all four bytes wide, so that the binary chunk needs no padding.
    template <class T>
    Json& AddAccessor(const std::vector<T>& values, unsigned componentType, std::size_t components,
                      int target) {
        const std::size_t length = values.size() * sizeof(T);
        m_json["bufferViews"].push_back(
            {{"buffer", 0}, {"byteOffset", m_binary.size()}, {"byteLength", length}, {"target", target}});
        m_binary.append(reinterpret_cast<const char*>(values.data()), length);
        m_json["accessors"].push_back({{"bufferView", m_json["bufferViews"].size() - 1},
                                       {"componentType", componentType},
                                       {"count", values.size() / components},
                                       {"type", components == 3 ? "VEC3" : "SCALAR"}});
        return m_json["accessors"].back();
    }

    void AddMesh(const AssemblyPart& part) {
        constexpr int kVertices = 34962;
        constexpr int kIndices = 34963;
        std::array<float, 3> low{};
        std::array<float, 3> high{};
        for (std::size_t i = 0; i < part.positions.size(); ++i) {
            const float x = part.positions[i];
            low[i % 3] = i < 3 ? x : std::min(low[i % 3], x);
            high[i % 3] = i < 3 ? x : std::max(high[i % 3], x);
        }
        Json& positions = AddAccessor(part.positions, 5126, 3, kVertices);
        positions["min"] = low;
        positions["max"] = high;
        const std::size_t accessor = m_json["accessors"].size();
        AddAccessor(part.indices, 5125, 1, kIndices);
        const Json primitive{{"attributes", {{"POSITION", accessor - 1}}}, {"indices", accessor}};
        m_json["meshes"].push_back({{"name", part.name}, {"primitives", Json::array({primitive})}});
    }

    void AddNodes(const Assembly& assembly) {
        Json nodes = Json::array();
        Json roots = Json::array();
        for (std::size_t i = 0; i < assembly.nodes.size(); ++i) {
            const AssemblyNode& node = assembly.nodes[i];
            nodes.push_back({{"name", node.name}, {"matrix", node.matrix}});
            if (node.part >= 0) nodes.back()["mesh"] = node.part;
            for (const auto& [key, value] : node.properties) nodes.back()["extras"][key] = value;
            Json& siblings =
                node.parent < 0 ? roots : nodes[static_cast<std::size_t>(node.parent)]["children"];
            siblings.push_back(i);
        }
        m_json["scenes"] = Json::array({{{"nodes", roots}}});
        m_json["nodes"] = std::move(nodes);
    }

    Json m_json;
    std::string m_binary;
};

}  // namespace

std::string WriteGlb(const Assembly& assembly) { return GlbDocument(assembly).Bytes(); }

}  // namespace zrsheet
