// What a project knows of its model beyond the document: how the model was made, and what it has lost since.

#pragma once

#include <cstddef>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "app/document/ProductModel.h"
#include "app/project/ProjectData.h"

namespace zrsheet {

struct ModelRecord {
    using Properties = std::map<std::string, std::string>;

    /// Where an item lists a part that the model has lost.
    struct LostInstance {
        std::size_t index = 0;  // in the item's list
        std::string path;
    };

    ProjectModel file;                                          // its path is absolute
    std::vector<ProjectInstance> instances;                     // in the model's order
    std::map<std::string, Properties> properties;               // as the model gives them, by path
    std::vector<ProjectInstance> lost;                          // of earlier states of the model
    std::map<unsigned, std::vector<LostInstance>> lostOfItems;  // by item, indices ascending
    std::vector<ProjectPart> lostParts;
};

/// Of a model just made from `file`; nothing is lost. Throws UserError when the file cannot be read. Reads
/// the file and all triangles once.
[[nodiscard]] ModelRecord RecordModel(const ProductModel& model, const std::filesystem::path& file);

/// What can be changed of an instance's properties.
[[nodiscard]] ModelRecord::Properties PropertiesOf(const zrk::illustration::SbomInstance& instance);

}  // namespace zrsheet
