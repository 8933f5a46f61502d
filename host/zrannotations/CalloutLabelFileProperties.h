// Properties of the document that labels can show.

#pragma once

#include <string>

#include "du/SmartPtr.h"
#include "zrk/scene/Scene.h"

namespace zrannotations {

/// Whether the group is that of the document's own properties.
bool IsCalloutLabelGroupFileProperty(const std::string& group);
/// The property's name as the user reads it.
std::string GetCalloutLabelFilePropertyName(const std::string& group, const std::string& name);
/// "" when the document has none. Any thread.
std::string GetCalloutLabelFilePropertyValue(const du::SmartPtr<zrk::Scene>& scene, const std::string& group,
                                             const std::string& name);

}  // namespace zrannotations
