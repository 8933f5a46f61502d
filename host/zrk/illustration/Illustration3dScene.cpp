#include "zrk/illustration/Illustration3dScene.h"

namespace zrk::illustration {

constinit const zrk::ClassType Illustration3dScene::CLASS_TYPE(40, "zrk::illustration::Illustration3dScene",
                                                               &zrk::ShapeScene::CLASS_TYPE);

Illustration3dScene::Illustration3dScene() = default;

Illustration3dScene::~Illustration3dScene() = default;

}  // namespace zrk::illustration
