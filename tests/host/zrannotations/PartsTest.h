// A scene of square parts looked at from above, for tests of what is annotated in it.

#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "dg/Location.h"
#include "du/SmartPtr.h"
#include "zrannotations/TAnnotation.h"
#include "zrk/illustration/SbomInstance.h"
#include "zrk/scene/ShapeInstance.h"
#include "zrk/scene/ShapeScene.h"
#include "zrk/scene/ShapeView.h"

namespace zrannotations {

/// The eye looks along -z; the world's origin lies at the pixel (100, 80), a unit is a pixel, y points up.
class PartsTest : public ::testing::Test {
protected:
    using PartPtr = du::SmartPtr<zrk::ShapeInstance>;
    using ShapePtr = du::SmartPtr<zrg::Shape>;

    PartsTest();
    ~PartsTest() override;

    static dg::Location At(double x, double y, double z) {
        return {dg::FMat33::IDENTITY, dg::DPoint3D(x, y, z)};
    }
    /// A square around the local origin that faces the eye.
    static ShapePtr Square(float size);
    static du::SmartPtr<TAnnotation> Template(const std::string& id, const std::string& text);

    /// An instance that the service structure knows by `id`; in no scene yet.
    du::SmartPtr<zrk::Instance> MakeInstance(const std::string& id, const ShapePtr& shape,
                                             const dg::Location& location);
    PartPtr AddPart(const std::string& id, const ShapePtr& shape, const dg::Location& location);
    void LookFrom(double x, double y);

    const du::SmartPtr<zrk::ShapeScene> m_scene{new zrk::ShapeScene};
    const du::SmartPtr<zrk::ShapeView> m_view{new zrk::ShapeView(m_scene, 7)};

private:
    std::vector<du::SmartPtr<zrk::illustration::SbomInstance>> m_structure;
};

/// Equal to within a thousandth.
void ExpectNear(const dg::DPoint3D& actual, double x, double y, double z);

}  // namespace zrannotations
