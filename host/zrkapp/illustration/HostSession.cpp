#include "zrkapp/illustration/HostSession.h"

#include "zrk/illustration/IsRunningIllustrate.h"
#include "zrk/world/Kernel.h"
#include "zrk/world/World.h"
#include "zrkapp/illustration/KorvanApp.h"

namespace zrkapp::illustration {

HostSession::HostSession(unsigned poolThreads) {
    zrk::illustration::SetRunningIllustrate(true);
    zrk::Kernel::Start();
    zrk::World::Start(poolThreads);
    KorvanApp::Start();
}

HostSession::~HostSession() {
    KorvanApp::Stop();
    zrk::World::Stop();
    zrk::Kernel::Stop();
    zrk::illustration::SetRunningIllustrate(false);
}

}  // namespace zrkapp::illustration
