// The callout templates that the application offers.

#pragma once

#include <string>
#include <vector>

#include "du/SmartPtr.h"
#include "zrannotations/TAnnotation.h"

namespace zrannotations {

/// In the order in which they were added. Any thread.
std::vector<du::SmartPtr<TAnnotation>> GetCalloutTemplates();
/// Null when there is none. O(1).
du::SmartPtr<TAnnotation> FindCalloutTemplate(const std::string& id);
/// Replaces one of the same id.
void AddCalloutTemplate(const du::SmartPtr<TAnnotation>& definition);
void ClearCalloutTemplates();

}  // namespace zrannotations
