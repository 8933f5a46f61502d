#include "tests/host/zrannotations/PartsTest.h"

namespace zrannotations {
namespace {

constexpr int kWidth = 200;
constexpr int kHeight = 160;
constexpr double kDepth = 100.0;
constexpr double kTolerance = 1e-3;

}  // namespace

PartsTest::PartsTest() {
    m_scene->AddView(m_view);
    LookFrom(0, 0);
}

PartsTest::~PartsTest() { m_scene->Close(); }

PartsTest::ShapePtr PartsTest::Square(float size) {
    const float half = size / 2;
    return new zrg::Shape({-half, -half, 0, half, -half, 0, half, half, 0, -half, half, 0},
                          {0, 1, 2, 0, 2, 3});
}

du::SmartPtr<TAnnotation> PartsTest::Template(const std::string& id, const std::string& text) {
    return new TAnnotation(id, {du::SmartPtr<LabelContent>(new LabelContent(text, TextProperties()))},
                           nullptr);
}

du::SmartPtr<zrk::Instance> PartsTest::MakeInstance(const std::string& id, const ShapePtr& shape,
                                                    const dg::Location& location) {
    const du::SmartPtr<zrk::ComponentNode> node(new zrk::ComponentNode(id, new zrk::Shape(shape)));
    const du::SmartPtr<zrk::Instance> instance(new zrk::Instance(du::Symbol("e-" + id), id, node, location));
    m_structure.emplace_back(new zrk::illustration::SbomInstance(du::Symbol(id), id));
    m_structure.back()->SetEbomInstance(instance);
    return instance;
}

PartsTest::PartPtr PartsTest::AddPart(const std::string& id, const ShapePtr& shape,
                                      const dg::Location& location) {
    return m_scene->CreateShapeInstance(MakeInstance(id, shape, location));
}

void PartsTest::LookFrom(double x, double y) {
    m_view->SetCamera(dg::Camera3D::Orthographic(dg::DPoint3D(x, y, 0), dg::DVec3(0, 0, -1),
                                                 dg::DVec3(0, 1, 0), 1.0, kWidth, kHeight, kDepth));
}

void ExpectNear(const dg::DPoint3D& actual, double x, double y, double z) {
    EXPECT_NEAR(actual.x, x, kTolerance);
    EXPECT_NEAR(actual.y, y, kTolerance);
    EXPECT_NEAR(actual.z, z, kTolerance);
}

}  // namespace zrannotations
