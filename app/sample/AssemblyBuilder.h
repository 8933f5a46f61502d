// Puts an assembly together from parts and places. Millimetres in, metres out.

#pragma once

#include <string>

#include "app/import/Assembly.h"
#include "app/sample/SolidMesh.h"

namespace zrsheet {

/// Turns in quarters about an axis, then a move: where a node stands in its parent.
struct Placement {
    Point3 move{0, 0, 0};
    int quartersAboutX = 0;
    int quartersAboutY = 0;
    double turnAboutZ = 0.0;  // radians, before the others
};

/// What a parts list says of a part.
struct PartData {
    std::string name;
    std::string number;
    std::string material;
};

/// Nodes must be added depth first.
class AssemblyBuilder {
public:
    /// Declares a part; its number is for AddPart.
    int DefinePart(const PartData& data, const SolidMesh& mesh);

    /// Adds nodes and returns their places; `parent` -1 for the root.
    int AddGroup(int parent, const std::string& name, const std::string& number,
                 const Placement& placement = {});
    int AddPart(int parent, int part, const Placement& placement = {});

    [[nodiscard]] Assembly Take() { return std::move(m_assembly); }

private:
    Assembly m_assembly;
    std::vector<PartData> m_data;  // per part
};

}  // namespace zrsheet
