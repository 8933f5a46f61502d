#include "app/sample/SyntheticAssembly.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <string>
#include <utility>

namespace zrsheet {
namespace {

constexpr double kPitch = 0.03;  // metres from one instance to the next

/// Upright, open nowhere. Its number of sides and its measures tell it from all others.
AssemblyPart MakePrism(int number) {
    constexpr int kFewestSides = 4;
    constexpr int kKinds = 9;
    const auto sides = static_cast<std::uint32_t>(kFewestSides + number % kKinds);
    const double radius = 0.3 * kPitch * (1 + 0.3 * std::sin(number));
    const double height = 0.4 * kPitch * (1 + 0.5 * std::sin(0.7 * number));
    AssemblyPart part{"Prism " + std::to_string(number), {}, {}};
    for (std::uint32_t i = 0; i < sides; ++i) {
        const double angle = 2 * std::numbers::pi * i / sides;
        for (const double y : {0.0, height}) {
            for (const double value : {radius * std::sin(angle), y, radius * std::cos(angle)})
                part.positions.push_back(static_cast<float>(value));
        }
    }
    for (std::uint32_t i = 0; i < sides; ++i) {
        const std::uint32_t low = 2 * i;
        const std::uint32_t next = 2 * ((i + 1) % sides);
        part.indices.insert(part.indices.end(), {low, next, low + 1, next, next + 1, low + 1});
    }
    for (std::uint32_t i = 1; i + 1 < sides; ++i)
        part.indices.insert(part.indices.end(), {0, 2 * i + 2, 2 * i, 1, 2 * i + 1, 2 * i + 3});
    return part;
}

class SyntheticMaker {
public:
    explicit SyntheticMaker(const SyntheticSize& size)
        : m_size(size),
          m_row(static_cast<int>(std::ceil(std::cbrt(size.instances)))),
          m_branches(static_cast<int>(std::ceil(std::pow(size.instances, 1.0 / (size.levels + 1))))) {}

    Assembly Run() {
        m_assembly.name = "synthetic";
        for (int i = 0; i < m_size.parts; ++i) m_assembly.parts.push_back(MakePrism(i));
        Fill(AddNode("Synthetic", -1, 0), 0, m_size.instances, m_size.levels);
        return std::move(m_assembly);
    }

private:
    using Place = std::array<double, 3>;

    [[nodiscard]] Place PlaceOf(int instance) const {
        const int layer = m_row * m_row;
        const int above = instance / layer;
        const int behind = instance % layer / m_row;
        return {kPitch * (instance % m_row), kPitch * above, kPitch * behind};
    }

    /// The node stands where its first instance does.
    int AddNode(std::string name, int parent, int instance) {
        Place move = PlaceOf(instance);
        m_places.push_back(move);
        if (parent >= 0) {
            const Place& origin = m_places[static_cast<std::size_t>(parent)];
            for (std::size_t axis = 0; axis < 3; ++axis) move[axis] -= origin[axis];
        }
        AssemblyNode node;
        node.name = std::move(name);
        node.parent = parent;
        std::copy(move.begin(), move.end(), node.matrix.begin() + 12);
        m_assembly.nodes.push_back(std::move(node));
        return static_cast<int>(m_assembly.nodes.size()) - 1;
    }

    void AddInstance(int parent, int instance) {
        const int part = instance % m_size.parts;
        const std::string number = std::to_string(part);
        AssemblyNode& node =
            m_assembly.nodes[static_cast<std::size_t>(AddNode("Prism " + number, parent, instance))];
        node.part = part;
        node.properties = {{"PartNumber", "SY-" + number}};
    }

    /// Shares the instances out evenly.
    void Fill(int parent, int first, int count, int levels) {
        const int children = levels == 0 ? count : std::min(m_branches, count);
        for (int child = 0; child < children; ++child) {
            const auto at = [&](int i) {
                return first + static_cast<int>(static_cast<std::int64_t>(count) * i / children);
            };
            const int start = at(child);
            const int size = at(child + 1) - start;
            if (size == 1) {
                AddInstance(parent, start);
            } else {
                Fill(AddNode("Group " + std::to_string(++m_groups), parent, start), start, size, levels - 1);
            }
        }
    }

    const SyntheticSize m_size;
    const int m_row;       // instances in it
    const int m_branches;  // of an assembly
    int m_groups = 0;
    Assembly m_assembly;
    std::vector<Place> m_places;  // of the nodes, in the whole
};

}  // namespace

Assembly MakeSyntheticAssembly(const SyntheticSize& size) { return SyntheticMaker(size).Run(); }

}  // namespace zrsheet
