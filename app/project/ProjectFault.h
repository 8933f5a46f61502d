// Says what is wrong with a project file, and where in it.

#pragma once

#include <stdexcept>
#include <string>

namespace zrsheet {

/// Names no file and gives no advice: who knows the file adds both.
class ProjectFault : public std::runtime_error {
public:
    /// `place`: such as "callouts[3].leaders[0].anchor"; "" for the file as a whole.
    ProjectFault(const std::string& place, const std::string& what)
        : std::runtime_error(place.empty() ? what : place + ": " + what) {}
};

}  // namespace zrsheet
