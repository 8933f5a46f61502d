#include "app/document/SymbolShapes.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>
#include <vector>

#include "app/document/UserError.h"
#include "zrg/Shape.h"
#include "zrk/object/Checked.h"
#include "zrk/scene/Shape.h"

namespace zrsheet {
namespace {

constexpr std::array<std::string_view, 3> kNames{"arrow", "cross", "diamond"};

using Corner = std::array<float, 3>;

/// Collects convex solids.
class SolidBuilder {
public:
    /// A pyramid from a level square around the vertical axis to its tip, both with their heights.
    void AddPyramid(float half, float base, float tip) {
        std::array<std::uint32_t, 4> square{AddCorner({-half, base, -half}), AddCorner({half, base, -half}),
                                            AddCorner({half, base, half}), AddCorner({-half, base, half})};
        // Counter-clockwise from outside, whichever end points up.
        if (tip > base) std::reverse(square.begin(), square.end());
        const std::uint32_t top = AddCorner({0, tip, 0});
        for (std::size_t i = 0; i < 4; ++i) AddTriangle(square[i], square[(i + 1) % 4], top);
        AddTriangle(square[0], square[2], square[1]);
        AddTriangle(square[0], square[3], square[2]);
    }

    void AddBox(const Corner& least, const Corner& most) {
        static constexpr std::array<std::array<std::uint32_t, 3>, 12> kTriangles{{{0, 2, 3},
                                                                                  {0, 3, 1},
                                                                                  {4, 5, 7},
                                                                                  {4, 7, 6},
                                                                                  {0, 1, 5},
                                                                                  {0, 5, 4},
                                                                                  {2, 6, 7},
                                                                                  {2, 7, 3},
                                                                                  {0, 4, 6},
                                                                                  {0, 6, 2},
                                                                                  {1, 3, 7},
                                                                                  {1, 7, 5}}};
        std::uint32_t first = 0;
        for (std::uint32_t i = 0; i < 8; ++i) {
            const std::uint32_t corner =
                AddCorner({(i & 1U) != 0 ? most[0] : least[0], (i & 2U) != 0 ? most[1] : least[1],
                           (i & 4U) != 0 ? most[2] : least[2]});
            if (i == 0) first = corner;
        }
        for (const auto& t : kTriangles) AddTriangle(first + t[0], first + t[1], first + t[2]);
    }

    du::SmartPtr<zrk::Shape> Take() {
        return du::SmartPtr<zrk::Shape>(zrk::Checked(new zrk::Shape(
            du::SmartPtr<zrg::Shape>(new zrg::Shape(std::move(m_positions), std::move(m_indices))))));
    }

private:
    std::uint32_t AddCorner(const Corner& corner) {
        m_positions.insert(m_positions.end(), corner.begin(), corner.end());
        return static_cast<std::uint32_t>(m_positions.size() / 3 - 1);
    }

    void AddTriangle(std::uint32_t a, std::uint32_t b, std::uint32_t c) {
        for (const std::uint32_t index : {a, b, c}) m_indices.push_back(index);
    }

    std::vector<float> m_positions;
    std::vector<std::uint32_t> m_indices;
};

du::SmartPtr<zrk::Shape> MakeShape(std::string_view name) {
    constexpr float kThin = 0.08F;
    SolidBuilder builder;
    if (name == "arrow") {
        builder.AddPyramid(0.2F, 0.45F, 0.0F);
        builder.AddBox({-kThin, 0.45F, -kThin}, {kThin, 1.0F, kThin});
    } else if (name == "cross") {
        builder.AddBox({-0.5F, -kThin, -kThin}, {0.5F, kThin, kThin});
        builder.AddBox({-kThin, -0.5F, -kThin}, {kThin, 0.5F, kThin});
        builder.AddBox({-kThin, -kThin, -0.5F}, {kThin, kThin, 0.5F});
    } else {
        builder.AddPyramid(0.35F, 0.0F, 0.5F);
        builder.AddPyramid(0.35F, 0.0F, -0.5F);
    }
    return builder.Take();
}

using Components = std::array<du::SmartPtr<zrk::ComponentNode>, kNames.size()>;

Components MakeComponents() {
    Components components;
    for (std::size_t i = 0; i < kNames.size(); ++i) {
        components[i] = zrk::Checked(new zrk::ComponentNode(std::string(kNames[i]), MakeShape(kNames[i])));
    }
    return components;
}

}  // namespace

std::span<const std::string_view> SymbolShapeNames() { return kNames; }

du::SmartPtr<zrk::ComponentNode> SymbolComponent(const std::string& name) {
    static const Components kComponents = MakeComponents();
    const auto known = std::find(kNames.begin(), kNames.end(), name);
    if (known == kNames.end()) {
        throw UserError("symbol '" + name + "': not known; use arrow, cross or diamond");
    }
    return kComponents[static_cast<std::size_t>(known - kNames.begin())];
}

}  // namespace zrsheet
