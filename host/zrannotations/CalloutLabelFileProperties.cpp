#include "zrannotations/CalloutLabelFileProperties.h"

#include "zrk/world/World.h"
#include "zrkapp/illustration/IllMultiRootContainer.h"

namespace zrannotations {
namespace {

constexpr const char* kDocumentGroup = "Document";

}  // namespace

bool IsCalloutLabelGroupFileProperty(const std::string& group) { return group == kDocumentGroup; }

std::string GetCalloutLabelFilePropertyName(const std::string&, const std::string& name) { return name; }

// One document is open at a time, so the scene does not choose between files.
std::string GetCalloutLabelFilePropertyValue(const du::SmartPtr<zrk::Scene>&, const std::string&,
                                             const std::string& name) {
    const auto world = zrk::World::GetWorld();
    if (!world) return {};
    const auto document = du::DynamicCast<zrkapp::illustration::IllMultiRootContainer>(world->GetMRC());
    return document && document->GetFileInfo() ? document->GetFileInfo()->GetProperty(name) : std::string();
}

}  // namespace zrannotations
