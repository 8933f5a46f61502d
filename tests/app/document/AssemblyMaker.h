// Writes assemblies down for tests.

#pragma once

#include <array>
#include <string>

#include "app/import/Assembly.h"

namespace zrsheet {

class AssemblyMaker {
public:
    explicit AssemblyMaker(std::string name = "model") { m_assembly.name = std::move(name); }

    /// Returns the part's number. An axis-aligned box from the origin.
    int Box(const std::string& name, float x, float y, float z);
    /// Returns the node's number; `part` -1 makes an assembly.
    int Node(const std::string& name, int parent, int part, const std::array<double, 3>& place = {0, 0, 0});
    AssemblyNode& At(int node) { return m_assembly.nodes[static_cast<std::size_t>(node)]; }

    [[nodiscard]] const Assembly& Get() const { return m_assembly; }

private:
    Assembly m_assembly;
};

/// A pin, a plate and the pin once more, at 5 in X, called by these names.
Assembly PinsAndPlate(const std::string& pin = "Pin", const std::string& plate = "Plate");

/// Quarter turn about Z: X becomes Y.
std::array<double, 16> QuarterTurn();

}  // namespace zrsheet
