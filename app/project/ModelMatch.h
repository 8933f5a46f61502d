// Finds the parts of a project again in a model that has changed since.

#pragma once

#include <map>
#include <string>
#include <vector>

#include "app/project/ProjectData.h"

namespace zrsheet {

/// How the model differs from the one that was saved. All paths, in the order of the structures.
struct ModelChanges {
    struct Move {
        std::string from;  // as it was saved
        std::string to;

        friend bool operator==(const Move&, const Move&) = default;
    };

    std::vector<std::string> missing;
    std::vector<Move> moved;         // renamed, or elsewhere in the structure
    std::vector<std::string> found;  // missing when the project was saved
    std::vector<std::string> added;

    [[nodiscard]] bool IsEmpty() const {
        return missing.empty() && moved.empty() && found.empty() && added.empty();
    }
};

struct ModelMatch {
    std::map<std::string, std::string> present;  // by the saved path; nothing for what is missing
    ModelChanges changes;
};

/// By path, then by name, then by geometry; where several are equal, in order, those of the same geometry
/// first. Orphans come after what was present. O(n log n).
[[nodiscard]] ModelMatch MatchModel(const ProjectData& project, const std::vector<ProjectInstance>& present);

/// The project with the paths that its parts have now; those of what is missing stay.
[[nodiscard]] ProjectData Rematched(ProjectData project, const ModelMatch& match);

}  // namespace zrsheet
