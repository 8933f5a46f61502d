// What a CAD file says of its products and their instances, beside geometry.

#pragma once

#include <NCollection_DataMap.hxx>
#include <TDF_Label.hxx>
#include <TDF_LabelMapHasher.hxx>
#include <string>
#include <utility>
#include <vector>

namespace zrsheet {

using Properties = std::vector<std::pair<std::string, std::string>>;

/// By the labels of products and instances in a document.
using LabelProperties = NCollection_DataMap<TDF_Label, Properties, TDF_LabelMapHasher>;

}  // namespace zrsheet
