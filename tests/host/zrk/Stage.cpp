#include "tests/host/zrk/Stage.h"

#include "tests/support/Cube.h"
#include "zrk/event/PickEvent.h"
#include "zrk/tree/ComponentNode.h"
#include "zrk/world/Kernel.h"

namespace zrk {
namespace {

constexpr int kSize = 200;

/// Remembers how it ended.
class Answer : public PickEvent {
public:
    void OnComplete(int status) override { m_status = status; }
    std::string Text() const {
        if (!IsCompleted()) return "pending";
        if (m_status != 0) return "cancelled";
        if (GetResults().empty()) return "";
        return Stage::NameOf(du::DynamicCast<ShapeInstance>(GetResults().front().GetObject()));
    }

private:
    int m_status = -1;
};

}  // namespace

dg::Location PlaceAt(double x, double y, double z, const dg::FVec3& size) {
    return {dg::FMat33::Scale(size), dg::DPoint3D(x, y, z)};
}

Stage::Stage()
    : m_scene(new ShapeScene), m_view(new ShapeView(m_scene, 1)), m_cube(new Shape(zrtest::MakeCube(0, 1))) {
    Kernel::Start();
    m_scene->AddView(m_view);
    m_view->SetCamera(dg::Camera3D::Orthographic({0, 0, 0}, {0, 0, -1}, {0, 1, 0}, 1.0, kSize, kSize, 1000));
}

Stage::~Stage() {
    m_scene->Close();
    Kernel::Stop();
}

Stage::PartPtr Stage::AddBox(const std::string& name, double x, double y, double z, const dg::FVec3& size) {
    const du::SmartPtr<ComponentNode> node(new ComponentNode(name, m_cube));
    return m_scene->CreateShapeInstance(
        new Instance(du::Symbol("/" + name), name, node, PlaceAt(x, y, z, size)));
}

std::string Stage::NameOf(const PartPtr& part) {
    du::SmartPtr<Instance> instance;
    part->GetInstance(instance);
    return instance->GetName();
}

std::string Stage::Pick(int x, int y, du::Flags flags) {
    const du::SmartPtr<Answer> answer(new Answer);
    m_view->Pick(x, y, flags, answer.get());
    Kernel::GetKernel()->DispatchEvents();
    return answer->Text();
}

std::string Stage::PickOnly(const PartPtr& only, int x, int y, du::Flags flags) {
    const du::SmartPtr<Answer> answer(new Answer);
    m_view->Pick(only, x, y, flags, answer.get());
    Kernel::GetKernel()->DispatchEvents();
    return answer->Text();
}

}  // namespace zrk
