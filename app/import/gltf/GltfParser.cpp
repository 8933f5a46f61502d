#include "app/import/gltf/GltfParser.h"

#include <fmt/format.h>
#include <simdjson.h>

#include <algorithm>
#include <cmath>

#include "app/import/ImportError.h"
#include "app/import/Utf8Text.h"

namespace zrsheet {
namespace {

namespace json = simdjson::dom;

[[noreturn]] void Refuse(const std::string& what) { throw ImportError(what + "; export the file again"); }

// One object of a table of the document, with a name for messages: "accessor 12".
class Entry {
public:
    Entry(json::element element, std::string place) : m_place(std::move(place)) {
        if (element.get(m_object) != simdjson::SUCCESS) Refuse(m_place + " is no object");
    }

    const std::string& Place() const { return m_place; }

    bool Has(std::string_view key) const { return m_object[key].error() == simdjson::SUCCESS; }
    json::element Get(std::string_view key) const {
        json::element found;
        if (m_object[key].get(found) != simdjson::SUCCESS) Refuse(fmt::format("{} has no {}", m_place, key));
        return found;
    }
    Entry Child(std::string_view key) const { return Entry(Get(key), fmt::format("{} {}", m_place, key)); }

    std::size_t Count(std::string_view key) const { return AsCount(Get(key), key); }
    std::size_t Count(std::string_view key, std::size_t otherwise) const {
        return Has(key) ? Count(key) : otherwise;
    }
    // A place in a table of `size` entries.
    std::size_t Index(std::string_view key, std::size_t size) const {
        return CheckIndex(AsCount(Get(key), key), key, size);
    }
    std::optional<std::size_t> OptionalIndex(std::string_view key, std::size_t size) const {
        return Has(key) ? std::optional(Index(key, size)) : std::nullopt;
    }
    std::vector<std::size_t> Indices(std::string_view key, std::size_t size) const {
        std::vector<std::size_t> indices;
        if (!Has(key)) return indices;
        for (const json::element element : Array(key)) {
            indices.push_back(CheckIndex(AsCount(element, key), key, size));
        }
        return indices;
    }
    bool Flag(std::string_view key) const {
        bool flag = false;
        return m_object[key].get(flag) == simdjson::SUCCESS && flag;
    }
    std::string Text(std::string_view key) const {
        std::string_view text;
        return m_object[key].get(text) == simdjson::SUCCESS ? std::string(text) : std::string();
    }
    template <std::size_t Size>
    std::array<double, Size> Numbers(std::string_view key, std::array<double, Size> numbers) const {
        if (!Has(key)) return numbers;
        const json::array array = Array(key);
        if (array.size() != Size)
            Refuse(fmt::format("{} has a {} of {} numbers", m_place, key, array.size()));
        std::size_t i = 0;
        for (const json::element element : array) {
            if (element.get(numbers[i++]) != simdjson::SUCCESS)
                Refuse(fmt::format("{}: {} holds no number", m_place, key));
        }
        return numbers;
    }
    json::array Array(std::string_view key) const {
        json::array array;
        if (Get(key).get(array) != simdjson::SUCCESS) Refuse(fmt::format("{}: {} is no array", m_place, key));
        return array;
    }
    json::object Object() const { return m_object; }

private:
    std::size_t AsCount(json::element element, std::string_view key) const {
        std::uint64_t whole = 0;
        if (element.get(whole) == simdjson::SUCCESS) return whole;
        double number = 0;  // some exporters write 12.0
        constexpr double kMostExact = 9007199254740992.0;
        if (element.get(number) == simdjson::SUCCESS && number >= 0 && number < kMostExact &&
            number == std::floor(number)) {
            return static_cast<std::size_t>(number);
        }
        Refuse(fmt::format("{}: {} is no whole number", m_place, key));
    }
    std::size_t CheckIndex(std::size_t index, std::string_view key, std::size_t size) const {
        if (index >= size) Refuse(fmt::format("{}: {} {} does not exist", m_place, key, index));
        return index;
    }

    json::object m_object;
    std::string m_place;
};

std::vector<Entry> Table(const Entry& parent, std::string_view key, std::string_view singular) {
    std::vector<Entry> entries;
    if (!parent.Has(key)) return entries;
    for (const json::element element : parent.Array(key)) {
        entries.emplace_back(element, fmt::format("{} {}", singular, entries.size()));
    }
    return entries;
}

// Extensions that change what is drawn but no geometry are harmless here, required or not.
bool IsKnownExtension(std::string_view name) {
    constexpr std::array<std::string_view, 4> kRead{"KHR_draco_mesh_compression", "EXT_meshopt_compression",
                                                    "KHR_mesh_quantization", "KHR_lights_punctual"};
    constexpr std::array<std::string_view, 4> kLooks{"KHR_materials_", "KHR_texture_", "EXT_texture_",
                                                     "MSFT_texture_"};
    return std::ranges::find(kRead, name) != kRead.end() ||
           std::ranges::any_of(kLooks, [name](std::string_view prefix) { return name.starts_with(prefix); });
}

void RequireReadable(const Entry& top) {
    const std::string version = top.Child("asset").Text("version");
    if (!version.starts_with("2.")) Refuse(fmt::format("glTF version \"{}\" is not 2.0", version));
    if (!top.Has("extensionsRequired")) return;
    for (const json::element element : top.Array("extensionsRequired")) {
        std::string_view name;
        if (element.get(name) == simdjson::SUCCESS && IsKnownExtension(name)) continue;
        throw ImportError(fmt::format("the file requires the extension \"{}\"; export it without", name));
    }
}

std::optional<Entry> Extension(const Entry& entry, std::string_view name) {
    if (!entry.Has("extensions")) return std::nullopt;
    const Entry extensions = entry.Child("extensions");
    return extensions.Has(name) ? std::optional(extensions.Child(name)) : std::nullopt;
}

GltfBufferView ParseView(const Entry& entry, std::size_t buffers) {
    GltfBufferView view{entry.Index("buffer", buffers), entry.Count("byteOffset", 0),
                        entry.Count("byteLength"), entry.Count("byteStride", 0), std::nullopt};
    if (const auto packing = Extension(entry, "EXT_meshopt_compression")) {
        view.packing = GltfPacking{packing->Index("buffer", buffers),
                                   packing->Count("byteOffset", 0),
                                   packing->Count("byteLength"),
                                   packing->Count("byteStride"),
                                   packing->Count("count"),
                                   packing->Text("mode"),
                                   packing->Text("filter")};
    }
    return view;
}

unsigned ComponentType(const Entry& entry) {
    const std::size_t type = entry.Count("componentType");
    if (type < 5120 || type > 5126 || type == 5124)
        Refuse(fmt::format("{}: component type {} is unknown", entry.Place(), type));
    return static_cast<unsigned>(type);
}

GltfSlice ParseSlice(const Entry& entry, std::size_t views, unsigned componentType) {
    return {entry.Index("bufferView", views), entry.Count("byteOffset", 0), componentType};
}

GltfAccessor ParseAccessor(const Entry& entry, std::size_t views) {
    GltfAccessor accessor;
    accessor.componentType = ComponentType(entry);
    const std::string type = entry.Text("type");
    accessor.components = type == "SCALAR" ? 1 : type == "VEC2" ? 2 : type == "VEC3" ? 3 : 4;
    accessor.count = entry.Count("count");
    accessor.normalized = entry.Flag("normalized");
    if (entry.Has("bufferView")) accessor.base = ParseSlice(entry, views, accessor.componentType);
    if (entry.Has("sparse")) {
        const Entry sparse = entry.Child("sparse");
        const Entry places = sparse.Child("indices");
        accessor.sparse = GltfSparse{sparse.Count("count"), ParseSlice(places, views, ComponentType(places)),
                                     ParseSlice(sparse.Child("values"), views, accessor.componentType)};
    }
    return accessor;
}

GltfPrimitive ParsePrimitive(const Entry& entry, const GltfDocument& document) {
    GltfPrimitive primitive;
    primitive.mode = static_cast<unsigned>(std::min<std::size_t>(entry.Count("mode", 4), 7));
    if (entry.Has("attributes")) {
        primitive.positions = entry.Child("attributes").OptionalIndex("POSITION", document.accessors.size());
    }
    primitive.indices = entry.OptionalIndex("indices", document.accessors.size());
    if (const auto draco = Extension(entry, "KHR_draco_mesh_compression")) {
        const std::size_t id = draco->Child("attributes").Count("POSITION");
        primitive.draco =
            GltfDraco{draco->Index("bufferView", document.views.size()), static_cast<std::uint32_t>(id)};
    }
    return primitive;
}

// The transfer function of sRGB; what lies outside is taken for its nearest end.
float FromLinear(double share) {
    share = std::clamp(share, 0.0, 1.0);
    return static_cast<float>(share <= 0.0031308 ? 12.92 * share
                                                 : 1.055 * std::pow(share, 1.0 / 2.4) - 0.055);
}

std::optional<AssemblyColor> ParseMaterial(const Entry& entry) {
    if (!entry.Has("pbrMetallicRoughness")) return std::nullopt;
    const Entry surface = entry.Child("pbrMetallicRoughness");
    if (!surface.Has("baseColorFactor") || surface.Has("baseColorTexture")) return std::nullopt;
    const auto [red, green, blue, alpha] = surface.Numbers<4>("baseColorFactor", {});
    return AssemblyColor{FromLinear(red), FromLinear(green), FromLinear(blue)};
}

GltfMesh ParseMesh(const Entry& entry, const GltfDocument& document) {
    GltfMesh mesh{OneLine(entry.Text("name")), {}, {}};
    for (const Entry& primitive : Table(entry, "primitives", entry.Place() + " primitive")) {
        const auto material = primitive.OptionalIndex("material", document.materials.size());
        if (material && mesh.primitives.empty()) mesh.color = document.materials[*material];
        mesh.primitives.push_back(ParsePrimitive(primitive, document));
    }
    return mesh;
}

// Scale, then rotation, then translation; glTF's columns are the rows of p' = p * M, so that both lie alike
// in memory.
std::array<double, 16> ParseMatrix(const Entry& entry) {
    if (entry.Has("matrix")) return entry.Numbers<16>("matrix", {});
    const auto [tx, ty, tz] = entry.Numbers<3>("translation", {0, 0, 0});
    const auto [x, y, z, w] = entry.Numbers<4>("rotation", {0, 0, 0, 1});
    const auto [sx, sy, sz] = entry.Numbers<3>("scale", {1, 1, 1});
    return {sx * (1 - 2 * (y * y + z * z)),
            sx * 2 * (x * y + z * w),
            sx * 2 * (x * z - y * w),
            0,
            sy * 2 * (x * y - z * w),
            sy * (1 - 2 * (x * x + z * z)),
            sy * 2 * (y * z + x * w),
            0,
            sz * 2 * (x * z + y * w),
            sz * 2 * (y * z - x * w),
            sz * (1 - 2 * (x * x + y * y)),
            0,
            tx,
            ty,
            tz,
            1};
}

std::vector<std::pair<std::string, std::string>> ParseProperties(const Entry& entry) {
    std::vector<std::pair<std::string, std::string>> properties;
    json::object extras;
    if (!entry.Has("extras") || entry.Get("extras").get(extras) != simdjson::SUCCESS) return properties;
    for (const auto [key, value] : extras) {
        if (value.is_array() || value.is_object() || value.is_null()) continue;
        std::string_view text;
        properties.emplace_back(
            OneLine(key), value.get(text) == simdjson::SUCCESS ? OneLine(text) : simdjson::minify(value));
    }
    return properties;
}

GltfNode ParseNode(const Entry& entry, std::size_t nodes, std::size_t meshes) {
    GltfNode node{OneLine(entry.Text("name")), entry.OptionalIndex("mesh", meshes),
                  entry.Indices("children", nodes), ParseMatrix(entry), ParseProperties(entry)};
    if (!std::ranges::all_of(node.matrix, [](double number) { return std::isfinite(number); })) {
        Refuse(entry.Place() + " has a transform beyond all numbers");
    }
    return node;
}

std::vector<std::size_t> ParseRoots(const Entry& top, const GltfDocument& document) {
    const std::vector<Entry> scenes = Table(top, "scenes", "scene");
    if (!scenes.empty() || top.Has("scene")) {
        const std::size_t shown = top.Has("scene") ? top.Index("scene", scenes.size()) : 0;
        return scenes[shown].Indices("nodes", document.nodes.size());
    }
    std::vector<bool> isChild(document.nodes.size(), false);
    for (const GltfNode& node : document.nodes) {
        for (const std::size_t child : node.children) isChild[child] = true;
    }
    std::vector<std::size_t> roots;
    for (std::size_t i = 0; i < document.nodes.size(); ++i) {
        if (!isChild[i]) roots.push_back(i);
    }
    return roots;
}

GltfDocument ParseDocument(const Entry& top) {
    RequireReadable(top);
    GltfDocument document;
    for (const Entry& entry : Table(top, "buffers", "buffer")) {
        document.buffers.push_back(
            {entry.Has("uri") ? std::optional(entry.Text("uri")) : std::nullopt, entry.Count("byteLength")});
    }
    for (const Entry& entry : Table(top, "bufferViews", "buffer view")) {
        document.views.push_back(ParseView(entry, document.buffers.size()));
    }
    for (const Entry& entry : Table(top, "accessors", "accessor")) {
        document.accessors.push_back(ParseAccessor(entry, document.views.size()));
    }
    for (const Entry& entry : Table(top, "materials", "material"))
        document.materials.push_back(ParseMaterial(entry));
    for (const Entry& entry : Table(top, "meshes", "mesh"))
        document.meshes.push_back(ParseMesh(entry, document));
    const std::vector<Entry> nodes = Table(top, "nodes", "node");
    for (const Entry& entry : nodes) {
        document.nodes.push_back(ParseNode(entry, nodes.size(), document.meshes.size()));
    }
    document.roots = ParseRoots(top, document);
    return document;
}

}  // namespace

GltfDocument ParseGltf(std::string_view text) {
    const std::string valid = ValidUtf8(text);  // names in some other encoding must not cost the whole model
    json::parser parser;
    json::element top;
    if (const auto error = parser.parse(valid).get(top); error != simdjson::SUCCESS) {
        Refuse(fmt::format("its JSON text is damaged ({})", simdjson::error_message(error)));
    }
    return ParseDocument(Entry(top, "the file"));
}

}  // namespace zrsheet
