#include "tests/app/document/AssemblyMaker.h"

namespace zrsheet {

int AssemblyMaker::Box(const std::string& name, float x, float y, float z) {
    AssemblyPart part;
    part.name = name;
    part.positions = {0, 0, 0, x, 0, 0, x, y, 0, 0, y, 0, 0, 0, z, x, 0, z, x, y, z, 0, y, z};
    part.indices = {0, 2, 1, 0, 3, 2, 4, 5, 6, 4, 6, 7, 0, 1, 5, 0, 5, 4,
                    3, 6, 2, 3, 7, 6, 1, 2, 6, 1, 6, 5, 0, 4, 7, 0, 7, 3};
    m_assembly.parts.push_back(std::move(part));
    return static_cast<int>(m_assembly.parts.size()) - 1;
}

int AssemblyMaker::Node(const std::string& name, int parent, int part, const std::array<double, 3>& place) {
    AssemblyNode node;
    node.name = name;
    node.parent = parent;
    node.part = part;
    for (std::size_t axis = 0; axis < 3; ++axis) node.matrix[12 + axis] = place[axis];
    m_assembly.nodes.push_back(std::move(node));
    return static_cast<int>(m_assembly.nodes.size()) - 1;
}

Assembly PinsAndPlate(const std::string& pin, const std::string& plate) {
    AssemblyMaker maker;
    const int pinPart = maker.Box("Pin", 1, 1, 1);
    const int platePart = maker.Box("Plate", 9, 9, 1);
    maker.Node(pin, -1, pinPart);
    maker.Node(plate, -1, platePart, {0, 0, 2});
    maker.Node(pin, -1, pinPart, {5, 0, 0});
    return maker.Get();
}

std::array<double, 16> QuarterTurn() { return {0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}; }

}  // namespace zrsheet
