#include "app/document/ProductModel.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cfloat>

#include "tests/app/document/AssemblyMaker.h"
#include "tests/app/document/ModelFiles.h"
#include "zrk/tree/ComponentNode.h"
#include "zrkapp/illustration/HostSession.h"

namespace zrsheet {
namespace {

/// The extent of all vertices of the scene in the view, pixels.
PageBox ProjectedBox(const ProductModel& model) {
    dg::Camera3D camera;
    model.View()->GetCamera(camera);
    PageBox box{DBL_MAX, DBL_MAX, -DBL_MAX, -DBL_MAX};
    for (const auto& part : model.Scene()->GetShapeInstances()) {
        dg::Location location;
        part->GetLocation(location);
        const auto positions = part->GetShape()->GetShapeData()->GetPositions();
        for (std::size_t i = 0; i < positions.size(); i += 3) {
            const dg::DPoint3D local(static_cast<double>(positions[i]), static_cast<double>(positions[i + 1]),
                                     static_cast<double>(positions[i + 2]));
            const dg::DPoint3D pixel = local * location * camera.GetWorldToPixel();
            EXPECT_GT(pixel.z, 0.0) << "before the nearest plane";
            EXPECT_LT(pixel.z, 1.0) << "behind the farthest plane";
            box = {std::min(box.x0, pixel.x), std::min(box.y0, pixel.y), std::max(box.x1, pixel.x),
                   std::max(box.y1, pixel.y)};
        }
    }
    return box;
}

void ExpectTight(const ProductModel& model, int width, int height, double margin) {
    const PageBox box = ProjectedBox(model);
    const PageBox& told = model.ScreenBox();
    EXPECT_NEAR(box.x0, told.x0, 0.01);
    EXPECT_NEAR(box.y0, told.y0, 0.01);
    EXPECT_NEAR(box.x1, told.x1, 0.01);
    EXPECT_NEAR(box.y1, told.y1, 0.01);
    EXPECT_NEAR(0.5 * (box.x0 + box.x1), 0.5 * width, 0.01) << "not in the middle";
    EXPECT_NEAR(0.5 * (box.y0 + box.y1), 0.5 * height, 0.01) << "not in the middle";
    const double spareX = width - 2 * margin - (box.x1 - box.x0);
    const double spareY = height - 2 * margin - (box.y1 - box.y0);
    EXPECT_NEAR(std::min(spareX, spareY), 0.0, 0.01) << "neither axis is filled, or one is too full";
}

TEST(ProductModel, FillsTheViewWhateverTheDirection) {
    const zrkapp::illustration::HostSession session(1);
    ProductModel model(SampleAssembly());
    for (const auto name : ViewNames()) {
        SCOPED_TRACE(name);
        model.LookAt(ParseViewDirection(std::string(name)), 700, 500, 76.0);
        ExpectTight(model, 700, 500, 76.0);
    }
    model.LookAt(ParseViewDirection("0.1,-20,0.3"), 300, 900, 10.0);
    ExpectTight(model, 300, 900, 10.0);
}

// Lines are drawn where a CAD file's faces crease, and where it knows triangles only by their angles.
TEST(ProductModel, KeepsCreasesButNoSmoothEdges) {
    AssemblyMaker maker;
    const int told = maker.Box("Told", 1, 2, 3);
    maker.Node("a", -1, told);
    maker.Node("b", -1, maker.Box("Untold", 3, 2, 1));
    Assembly assembly = maker.Get();
    assembly.parts[static_cast<std::size_t>(told)].edges = {
        {false, {0, 1, 3}}, {true, {1, 5}}, {false, {4, 5}}};
    const zrkapp::illustration::HostSession session(1);
    const ProductModel model(std::move(assembly));
    std::vector<std::optional<zrg::Shape::Creases>> found;
    for (const auto& part : model.Scene()->GetShapeInstances())
        found.push_back(part->GetShape()->GetShapeData()->GetCreases());
    EXPECT_THAT(found, testing::UnorderedElementsAre(zrg::Shape::Creases{0, 1, 1, 3, 4, 5}, std::nullopt));
}

// Parts in places that other assemblies moved and turned stand where the file put them.
TEST(ProductModel, BuildsTheStructureOfTheFile) {
    AssemblyMaker maker("machine");
    const int box = maker.Box("Box", 1, 2, 3);
    const int arm = maker.Node("Arm", -1, -1, {10, 0, 0});
    maker.At(arm).matrix = QuarterTurn();
    maker.At(arm).matrix[12] = 10;
    maker.Node("Box_1", arm, box, {1, 0, 0});
    maker.Node("Box_2", arm, box, {5, 0, 0});
    const int last = maker.Node("Box_3", -1, box);
    maker.At(last).properties = {{"Material", "Brass"}};
    const zrkapp::illustration::HostSession session(1);
    const ProductModel model(maker.Get());
    EXPECT_EQ(model.Name(), "machine");
    EXPECT_EQ(model.PartCount(), 1U);
    EXPECT_EQ(model.LeafCount(), 3U);
    EXPECT_EQ(model.TriangleCount(), 36U);
    ASSERT_EQ(model.Instances().size(), 4U);
    EXPECT_EQ(model.Instances()[2]->GetIdentifier().Text(), "/Arm/Box_2");
    EXPECT_EQ(ProductModel::NameOf(*model.Instances()[2]), "Box")
        << "parts are called what their instances share";
    EXPECT_EQ(model.Instances()[1]->GetComponentNode(), model.Instances()[3]->GetComponentNode());
    EXPECT_NE(model.Instances()[0]->GetComponentNode(), model.Instances()[1]->GetComponentNode());
    du::Symbol material;
    EXPECT_TRUE(model.Instances()[3]->FindProperty(du::Symbol::EMPTY, du::Symbol("Material"),
                                                   du::Symbol::EMPTY, material));
    EXPECT_EQ(material.Text(), "Brass");
    dg::Location location;
    model.Scene()->GetShapeInstances()[1]->GetLocation(location);
    const dg::DPoint3D corner =
        dg::DPoint3D(1, 0, 0) * location;  // 1 and 5 along the arm, which points along Y
    EXPECT_NEAR(corner.x, 10.0, 1e-9);
    EXPECT_NEAR(corner.y, 6.0, 1e-9);
}

}  // namespace
}  // namespace zrsheet
