#include "app/import/process/AssemblyStream.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "app/import/ImportError.h"

namespace zrsheet {
namespace {

constexpr std::uint64_t kMagic = 0x32'4d'53'41'52'5a;  // "ZRASM2"

class Writer {
public:
    template <class T>
    void Put(const T& value) {
        m_bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
    }
    void Put(const std::string& text) {
        Put(std::uint64_t{text.size()});
        m_bytes.append(text);
    }
    template <class T>
    void Put(const std::vector<T>& values) {
        Put(std::uint64_t{values.size()});
        m_bytes.append(reinterpret_cast<const char*>(values.data()), values.size() * sizeof(T));
    }
    void Put(const std::vector<std::string>& texts) {
        Put(std::uint64_t{texts.size()});
        for (const std::string& text : texts) Put(text);
    }
    std::string Take() { return std::move(m_bytes); }

private:
    std::string m_bytes;
};

class Reader {
public:
    explicit Reader(std::string_view bytes) : m_bytes(bytes) {}

    template <class T>
    T Get() {
        T value;
        std::memcpy(&value, Take(sizeof value).data(), sizeof value);
        return value;
    }
    // A number of things of at least `size` bytes each: more than are left cannot be true, and is not
    // allocated for.
    std::size_t GetCount(std::size_t size) {
        const auto count = Get<std::uint64_t>();
        if (count > m_bytes.size() / size) Refuse();
        return count;
    }
    std::string GetText() { return std::string(Take(GetCount(1))); }
    template <class T>
    std::vector<T> GetValues() {
        std::vector<T> values(GetCount(sizeof(T)));
        const std::string_view bytes = Take(values.size() * sizeof(T));
        if (!bytes.empty()) std::memcpy(values.data(), bytes.data(), bytes.size());
        return values;
    }
    std::vector<std::string> GetTexts() {
        std::vector<std::string> texts(GetCount(sizeof(std::uint64_t)));
        for (std::string& text : texts) text = GetText();
        return texts;
    }
    void Require(bool holds) const {
        if (!holds) Refuse();
    }
    bool AtEnd() const { return m_bytes.empty(); }

private:
    [[noreturn]] static void Refuse() {
        throw ImportError("the reader's answer is damaged; the file is probably damaged, export it again");
    }
    std::string_view Take(std::size_t count) {
        Require(count <= m_bytes.size());
        const std::string_view taken = m_bytes.substr(0, count);
        m_bytes.remove_prefix(count);
        return taken;
    }
    std::string_view m_bytes;
};

AssemblyEdge ReadEdge(Reader& in, std::size_t vertices) {
    AssemblyEdge edge{in.Get<std::uint8_t>() != 0, in.GetValues<std::uint32_t>()};
    in.Require(edge.vertices.size() >= 2);
    in.Require(std::ranges::all_of(edge.vertices, [vertices](std::uint32_t i) { return i < vertices; }));
    return edge;
}

AssemblyPart ReadPart(Reader& in) {
    AssemblyPart part{in.GetText(), in.GetValues<float>(), in.GetValues<std::uint32_t>()};
    const std::size_t vertices = part.positions.size() / 3;
    in.Require(part.positions.size() % 3 == 0 && part.indices.size() % 3 == 0 && !part.indices.empty());
    in.Require(std::ranges::all_of(part.positions, [](float x) { return std::isfinite(x); }));
    in.Require(std::ranges::all_of(part.indices, [vertices](std::uint32_t i) { return i < vertices; }));
    part.edges.resize(in.GetCount(sizeof(std::uint64_t)));
    for (AssemblyEdge& edge : part.edges) edge = ReadEdge(in, vertices);
    return part;
}

std::optional<AssemblyColor> ReadColor(Reader& in) {
    if (in.Get<std::uint8_t>() == 0) return std::nullopt;
    const auto color = in.Get<AssemblyColor>();
    in.Require(std::ranges::all_of(color, [](float share) { return share >= 0.0F && share <= 1.0F; }));
    return color;
}

AssemblyNode ReadNode(Reader& in, std::size_t place, std::size_t parts) {
    AssemblyNode node;
    node.name = in.GetText();
    node.parent = in.Get<int>();
    node.matrix = in.Get<std::array<double, 16>>();
    node.part = in.Get<int>();
    in.Require(node.parent >= -1 && node.parent < static_cast<int>(place));
    in.Require(node.part >= -1 && node.part < static_cast<int>(parts));
    in.Require(std::ranges::all_of(node.matrix, [](double x) { return std::isfinite(x); }));
    for (std::size_t left = in.GetCount(2 * sizeof(std::uint64_t)); left > 0; --left) {
        std::string key = in.GetText();
        node.properties.emplace_back(std::move(key), in.GetText());
    }
    node.color = ReadColor(in);
    node.product = in.GetText();
    return node;
}

void WritePart(Writer& out, const AssemblyPart& part) {
    out.Put(part.name);
    out.Put(part.positions);
    out.Put(part.indices);
    out.Put(std::uint64_t{part.edges.size()});
    for (const AssemblyEdge& edge : part.edges) {
        out.Put(std::uint8_t{edge.isSmooth});
        out.Put(edge.vertices);
    }
}

void WriteNode(Writer& out, const AssemblyNode& node) {
    out.Put(node.name);
    out.Put(node.parent);
    out.Put(node.matrix);
    out.Put(node.part);
    out.Put(std::uint64_t{node.properties.size()});
    for (const auto& [key, value] : node.properties) {
        out.Put(key);
        out.Put(value);
    }
    out.Put(std::uint8_t{node.color.has_value()});
    if (node.color) out.Put(*node.color);
    out.Put(node.product);
}

}  // namespace

std::string WriteAssembly(const Assembly& assembly) {
    Writer out;
    out.Put(kMagic);
    out.Put(assembly.name);
    out.Put(std::uint64_t{assembly.parts.size()});
    for (const AssemblyPart& part : assembly.parts) WritePart(out, part);
    out.Put(std::uint64_t{assembly.nodes.size()});
    for (const AssemblyNode& node : assembly.nodes) WriteNode(out, node);
    out.Put(assembly.warnings);
    out.Put(assembly.externalFiles);
    return out.Take();
}

Assembly ReadAssembly(std::string_view bytes) {
    Reader in(bytes);
    in.Require(in.Get<std::uint64_t>() == kMagic);
    Assembly assembly;
    assembly.name = in.GetText();
    const std::size_t parts = in.GetCount(3 * sizeof(std::uint64_t));
    for (std::size_t i = 0; i < parts; ++i) assembly.parts.push_back(ReadPart(in));
    const std::size_t nodes = in.GetCount(2 * sizeof(std::uint64_t));
    for (std::size_t i = 0; i < nodes; ++i) assembly.nodes.push_back(ReadNode(in, i, parts));
    assembly.warnings = in.GetTexts();
    assembly.externalFiles = in.GetTexts();
    in.Require(in.AtEnd());
    return assembly;
}

}  // namespace zrsheet
