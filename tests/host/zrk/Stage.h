// A small scene to test on: boxes on a table, seen straight from above.

#pragma once

#include <string>

#include "du/Flags.h"
#include "du/SmartPtr.h"
#include "zrk/scene/PickFlags.h"
#include "zrk/scene/Shape.h"
#include "zrk/scene/ShapeInstance.h"
#include "zrk/scene/ShapeScene.h"
#include "zrk/scene/ShapeView.h"
#include "zrk/tree/Instance.h"

namespace zrk {

/// Starts the kernel and stops it at its end. A unit is a pixel; the world's origin is the pixel (100, 100),
/// y upwards, of a picture of 200 x 200.
class Stage {
public:
    using PartPtr = du::SmartPtr<ShapeInstance>;

    Stage();
    Stage(const Stage&) = delete;
    Stage& operator=(const Stage&) = delete;
    ~Stage();

    /// A cube of size 1, stretched, with its lowest corner at (x, y, z).
    PartPtr AddBox(const std::string& name, double x, double y, double z, const dg::FVec3& size);
    /// What is met under the pixel: a name, "" for nothing, "pending" or "cancelled".
    std::string Pick(int x, int y, du::Flags flags = PICK_ALL);
    std::string PickOnly(const PartPtr& only, int x, int y, du::Flags flags = PICK_ALL);
    static std::string NameOf(const PartPtr& part);

    const du::SmartPtr<ShapeScene>& GetScene() const { return m_scene; }
    const du::SmartPtr<ShapeView>& GetView() const { return m_view; }

private:
    const du::SmartPtr<ShapeScene> m_scene;
    const du::SmartPtr<ShapeView> m_view;
    const du::SmartPtr<Shape> m_cube;
};

dg::Location PlaceAt(double x, double y, double z, const dg::FVec3& size = {1, 1, 1});

}  // namespace zrk
