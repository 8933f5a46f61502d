// The model inside the host: its scene, its engineering and service structures, and the view that looks at
// it.

#pragma once

#include <cstddef>
#include <string>
#include <unordered_map>
#include <vector>

#include "app/document/PageGeometry.h"
#include "app/document/ViewDirection.h"
#include "app/import/Assembly.h"
#include "dg/Color.h"
#include "dg/FBox.h"
#include "du/SmartPtr.h"
#include "zrk/illustration/Illustration3dScene.h"
#include "zrk/illustration/SbomInstance.h"
#include "zrk/scene/ShapeView.h"

namespace zrsheet {

/// Needs a host session, whose world shows the model from then on; closes the scene at the end. One thread.
class ProductModel {
public:
    using SbomPtr = du::SmartPtr<zrk::illustration::SbomInstance>;

    /// Takes over the geometry.
    explicit ProductModel(Assembly assembly);
    ProductModel(const ProductModel&) = delete;
    ProductModel& operator=(const ProductModel&) = delete;
    ~ProductModel();

    /// Looks at all that is shown (the whole model when nothing is), as large as `width` x `height` pixels
    /// less `margin` on each side allow.
    void LookAt(const ViewDirection& direction, int width, int height, double margin);

    /// How wide and high that is, in the model's units; never nothing. O(vertices).
    [[nodiscard]] PagePoint ExtentFrom(const ViewDirection& direction) const;

    /// The rectangle of what is shown, in the viewport of the view as it looks now; empty at its middle when
    /// nothing is. O(vertices).
    [[nodiscard]] PageBox ScreenBox() const;

    [[nodiscard]] const du::SmartPtr<zrk::illustration::Illustration3dScene>& Scene() const {
        return m_scene;
    }
    [[nodiscard]] const du::SmartPtr<zrk::ShapeView>& View() const { return m_view; }
    /// The product itself.
    [[nodiscard]] const SbomPtr& Root() const { return m_root; }
    /// Everything below the product, parents before their children. Identifiers are paths.
    [[nodiscard]] const std::vector<SbomPtr>& Instances() const { return m_instances; }
    [[nodiscard]] const std::string& Name() const { return m_name; }
    /// What the parts list calls a part or assembly.
    [[nodiscard]] static std::string NameOf(const zrk::illustration::SbomInstance& instance);

    /// Does the file give any part a colour?
    [[nodiscard]] bool HasColors() const { return !m_colors.empty(); }
    /// White if the file gives it none.
    [[nodiscard]] dg::Color ColorOf(const zrk::ShapeInstance& part) const;

    [[nodiscard]] std::size_t PartCount() const { return m_partCount; }
    [[nodiscard]] std::size_t LeafCount() const { return m_leafCount; }
    /// Of all instances together.
    [[nodiscard]] std::size_t TriangleCount() const { return m_triangleCount; }

private:
    void Build(Assembly& assembly);

    std::string m_name;
    du::SmartPtr<zrk::illustration::Illustration3dScene> m_scene;
    du::SmartPtr<zrk::ShapeView> m_view;
    SbomPtr m_root;
    std::vector<SbomPtr> m_instances;
    std::unordered_map<const zrk::Instance*, dg::Color> m_colors;  // only looked up, never walked
    std::size_t m_partCount = 0;
    std::size_t m_leafCount = 0;
    std::size_t m_triangleCount = 0;
};

}  // namespace zrsheet
