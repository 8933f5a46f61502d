// Tells which leaders end on an edge of what the view shows.

#pragma once

#include <cstdint>
#include <unordered_map>
#include <vector>

#include "app/render/PictureStyle.h"
#include "dg/Camera3D.h"
#include "zrk/scene/PickScene.h"

namespace zrsheet {

/// By the rule that draws the picture's lines. The scene outlives it. Any thread.
class AnchorEdges {
public:
    explicit AnchorEdges(const zrk::PickScene& scene);

    [[nodiscard]] bool IsShown(const zrk::ShapeInstance& part) const;
    /// Has the part an edge or its outline so near to `pixel` that it lies on the line, and is not covered
    /// there? Some forty rays.
    [[nodiscard]] bool IsOnEdge(const zrk::ShapeInstance& part, const dg::Camera3D& camera,
                                const dg::DPoint3D& pixel) const;

private:
    const zrk::PickScene& m_scene;
    PictureStyle m_style;
    std::vector<std::uint32_t> m_numbers;  // of the placements
    std::unordered_map<const zrk::ShapeInstance*, std::uint32_t> m_placements;
};

}  // namespace zrsheet
