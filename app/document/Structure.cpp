#include "app/document/Structure.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cmath>
#include <map>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace zrsheet {
namespace {

using Matrix = std::array<double, 16>;

/// First `a`, then `b`.
Matrix Product(const Matrix& a, const Matrix& b) {
    Matrix product{};
    for (std::size_t row = 0; row < 4; ++row) {
        for (std::size_t column = 0; column < 4; ++column) {
            for (std::size_t k = 0; k < 4; ++k)
                product[row * 4 + column] += a[row * 4 + k] * b[k * 4 + column];
        }
    }
    return product;
}

std::string Lower(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return lower;
}

/// The name without a counter behind it: "Screw_2", "Screw.002", "Screw (3)".
std::string_view WithoutCounter(std::string_view name) {
    const std::size_t end = name.find_last_not_of("0123456789.:_-() #");
    return end == std::string_view::npos ? std::string_view() : name.substr(0, end + 1);
}

/// Names that programs give, which tell nothing of the part: kinds of nodes, and the features that a body was
/// made with.
bool IsGeneric(std::string_view name) {
    static constexpr std::array<std::string_view, 25> kGeneric{
        "",      "part",   "solid",  "body",    "mesh",    "compound",   "shape",     "node",    "object",
        "group", "brep",   "model",  "scene",   "root",    "assembly",   "component", "product", "unnamed",
        "pad",   "pocket", "fillet", "chamfer", "extrude", "revolution", "cut"};
    static constexpr std::string_view kSolidMark = " (solid)";
    std::string base = Lower(name);
    if (base.ends_with(kSolidMark)) base.resize(base.size() - kSolidMark.size());
    base = WithoutCounter(base);
    return name.starts_with("=>") || std::find(kGeneric.begin(), kGeneric.end(), base) != kGeneric.end();
}

void PassOn(AssemblyNode&& wrapper, AssemblyNode& node) {
    if (IsGeneric(node.name)) node.name = std::move(wrapper.name);
    if (IsGeneric(node.product)) node.product = std::move(wrapper.product);
    node.matrix = Product(node.matrix, wrapper.matrix);
    node.parent = wrapper.parent;
    for (auto& property : wrapper.properties) {
        const bool isKnown = std::any_of(node.properties.begin(), node.properties.end(),
                                         [&](const auto& own) { return own.first == property.first; });
        if (!isKnown) node.properties.push_back(std::move(property));
    }
}

std::vector<int> ChildCounts(const Assembly& assembly) {
    std::vector<int> counts(assembly.nodes.size());
    for (const auto& node : assembly.nodes) {
        if (node.parent >= 0) ++counts[static_cast<std::size_t>(node.parent)];
    }
    return counts;
}

/// What all names begin with, without counters and loose ends.
std::string CommonBeginning(std::string_view a, std::string_view b) {
    const auto end = std::mismatch(a.begin(), a.end(), b.begin(), b.end()).first;
    std::size_t length = static_cast<std::size_t>(end - a.begin());
    while (length > 0 && length < a.size() && (static_cast<unsigned char>(a[length]) & 0xC0U) == 0x80U)
        --length;
    return std::string(WithoutCounter(a.substr(0, length)));
}

/// Matrices that came through different sums are equal to about a millionth.
void AppendMatrix(std::string& key, const Matrix& matrix) {
    for (const double value : matrix) {
        const double magnitude = std::max(std::abs(value), 1.0);
        const double step = std::exp2(std::ceil(std::log2(magnitude)) - 18.0);
        key += std::to_string(std::llround(value / step)) + ",";
    }
}

}  // namespace

// Parents stand before their children, so that one pass in order meets every wrapper before what it wraps;
// chains of them fold up step by step.
Assembly WithoutWrappers(Assembly assembly) {
    const std::vector<int> counts = ChildCounts(assembly);
    std::vector<int> kept(assembly.nodes.size(), -1);
    std::vector<AssemblyNode> nodes;
    for (std::size_t i = 0; i < assembly.nodes.size(); ++i) {
        AssemblyNode& node = assembly.nodes[i];
        const int parent = node.parent;
        const bool isWrapped = parent >= 0 && counts[static_cast<std::size_t>(parent)] == 1;
        if (isWrapped) {
            PassOn(std::move(assembly.nodes[static_cast<std::size_t>(parent)]), node);
        } else if (parent >= 0) {
            node.parent = kept[static_cast<std::size_t>(parent)];
        }
        if (counts[i] == 1) continue;  // stays in place for its child to fold up
        kept[i] = static_cast<int>(nodes.size());
        nodes.push_back(node);
    }
    assembly.nodes = std::move(nodes);
    return assembly;
}

Assembly WithProductAtTop(Assembly assembly) {
    const auto isRoot = [](const AssemblyNode& node) { return node.parent < 0; };
    const auto& nodes = assembly.nodes;
    if (nodes.empty() || nodes.front().part >= 0 || std::count_if(nodes.begin(), nodes.end(), isRoot) != 1)
        return assembly;
    const AssemblyNode product = nodes.front();
    const std::string& name = ProductName(product);
    if (!IsGeneric(name)) assembly.name = name;
    assembly.nodes.erase(assembly.nodes.begin());
    for (auto& node : assembly.nodes) {
        if (node.parent == 0) node.matrix = Product(node.matrix, product.matrix);
        --node.parent;
    }
    return assembly;
}

std::vector<std::string> InstancePaths(const Assembly& assembly) {
    std::vector<std::string> paths(assembly.nodes.size());
    std::unordered_map<std::string, int> uses;
    for (std::size_t i = 0; i < assembly.nodes.size(); ++i) {
        const AssemblyNode& node = assembly.nodes[i];
        std::string path = node.parent >= 0 ? paths[static_cast<std::size_t>(node.parent)] : std::string();
        path += "/" + node.name;
        std::string unique = path;
        const auto [known, isFirst] = uses.emplace(path, 1);
        if (!isFirst) {
            int& use = known->second;  // stays in place while others come
            do {
                unique = path + ":" + std::to_string(++use);
            } while (!uses.emplace(unique, 1).second);
        }
        paths[i] = unique;
    }
    return paths;
}

const std::string& ProductName(const AssemblyNode& node) {
    return IsGeneric(node.product) ? node.name : node.product;
}

std::vector<std::string> PartNames(const Assembly& assembly) {
    std::vector<std::string> names(assembly.parts.size());
    std::vector<std::string> firstNames(assembly.parts.size());
    for (const auto& node : assembly.nodes) {
        if (node.part < 0) continue;
        const auto part = static_cast<std::size_t>(node.part);
        const std::string& name = ProductName(node);
        if (firstNames[part].empty()) {
            names[part] = firstNames[part] = name;
        } else if (names[part] != name) {
            names[part] = CommonBeginning(names[part], name);
        }
    }
    for (std::size_t i = 0; i < names.size(); ++i) {
        const bool isUseful = names[i].size() >= 3 && !IsGeneric(names[i]);
        if (isUseful || names[i] == firstNames[i]) continue;
        names[i] = IsGeneric(assembly.parts[i].name) ? firstNames[i] : assembly.parts[i].name;
    }
    return names;
}

std::vector<int> ComponentNumbers(const Assembly& assembly) {
    std::vector<int> numbers(assembly.nodes.size());
    std::vector<std::string> contents(assembly.nodes.size());  // of assemblies: what they are made of
    std::map<std::string, int> assemblies;
    const int partCount = static_cast<int>(assembly.parts.size());
    for (std::size_t i = assembly.nodes.size(); i-- > 0;) {
        const AssemblyNode& node = assembly.nodes[i];
        if (node.part >= 0) {
            numbers[i] = node.part;
        } else {
            const int next = partCount + static_cast<int>(assemblies.size());
            numbers[i] = assemblies.emplace(std::exchange(contents[i], {}), next).first->second;
        }
        if (node.parent < 0) continue;
        std::string& above = contents[static_cast<std::size_t>(node.parent)];
        above += std::to_string(numbers[i]) + ":";
        AppendMatrix(above, node.matrix);
    }
    return numbers;
}

}  // namespace zrsheet
