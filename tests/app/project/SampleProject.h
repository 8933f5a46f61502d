// A project in which every member has a value of its own.

#pragma once

#include "app/project/ProjectData.h"

namespace zrsheet::test {

ProjectData SampleProject();

}  // namespace zrsheet::test
