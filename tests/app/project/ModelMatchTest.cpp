#include "app/project/ModelMatch.h"

#include <gtest/gtest.h>

namespace zrsheet {
namespace {

using Instances = std::vector<ProjectInstance>;
using Paths = std::map<std::string, std::string>;

struct Case {
    const char* what;
    Instances saved;
    Instances orphans;
    Instances present;
    Paths expected;
};

TEST(ModelMatch, GoesByPathThenNameThenGeometry) {
    const std::vector<Case> cases{
        {"a path wins over name and geometry",
         {{"/a", "x", "1"}, {"/b", "y", "2"}},
         {},
         {{"/b", "x", "1"}, {"/a", "y", "2"}},
         {{"/a", "/a"}, {"/b", "/b"}}},
        {"a name wins over geometry",
         {{"/a/x", "x", "1"}},
         {},
         {{"/c/y", "y", "1"}, {"/b/x", "x", "2"}},
         {{"/a/x", "/b/x"}}},
        {"equal names go by geometry first, then in order",
         {{"/a/x", "x", "1"}, {"/a/x:2", "x", "2"}, {"/a/x:3", "x", "3"}},
         {},
         {{"/b/x", "x", "2"}, {"/b/x:2", "x", "4"}, {"/b/x:3", "x", "5"}},
         {{"/a/x", "/b/x:2"}, {"/a/x:2", "/b/x"}, {"/a/x:3", "/b/x:3"}}},
        {"geometry finds what was renamed",
         {{"/a", "a", "1"}, {"/b", "b", "1"}},
         {},
         {{"/c", "c", "2"}, {"/d", "d", "1"}},
         {{"/a", "/d"}}},
        {"no geometry is no likeness", {{"/a", "a", ""}}, {}, {{"/c", "c", ""}}, {}},
        {"no name is no likeness", {{"/a", "", "1"}}, {}, {{"/c", "", "2"}}, {}},
        {"orphans come back after those that were there",
         {{"/a/x", "x", "1"}},
         {{"/o/x", "x", "1"}},
         {{"/b/x", "x", "1"}, {"/c/x", "x", "1"}},
         {{"/a/x", "/b/x"}, {"/o/x", "/c/x"}}},
    };
    for (const auto& [what, saved, orphans, present, expected] : cases) {
        ProjectData project;
        project.instances = saved;
        project.orphans = orphans;
        EXPECT_EQ(MatchModel(project, present).present, expected) << what;
    }
}

}  // namespace
}  // namespace zrsheet
