#include "zrannotations/CalloutLeader.h"

#include "zrk/illustration/SbomInstance.h"

namespace zrannotations {
namespace {

std::string IdOf(const du::SmartPtr<zrk::ShapeInstance>& shapeInstance) {
    du::SmartPtr<zrk::Instance> instance;
    if (shapeInstance) shapeInstance->GetInstance(instance);
    if (!instance) return {};
    if (instance->Is3dSymbol()) return instance->GetIdentifier();
    const auto* sbom = instance->GetSbomInstance();
    return sbom != nullptr ? sbom->GetIdentifier().Text() : std::string();
}

}  // namespace

CalloutLeader::CalloutLeader(const dg::DPoint3D& anchor,
                             const du::SmartPtr<zrk::ShapeInstance>& shapeInstance,
                             const du::SmartPtr<zrk::BaseInstance>& assembly)
    : m_anchor(anchor),
      m_shapeInstance(shapeInstance),
      m_assembly(assembly),
      m_instanceId(IdOf(shapeInstance)) {}

CalloutLeader::CalloutLeader(const dg::DPoint3D& anchor, const std::string& instanceId)
    : m_anchor(anchor), m_instanceId(instanceId) {}

CalloutLeader::~CalloutLeader() = default;

}  // namespace zrannotations
