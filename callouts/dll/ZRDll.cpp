#include "callouts/dll/ZRDll.h"

#include "zrk/illustration/CalloutEngineMgr.h"

void ZRDllInit() {}

void ZRDllTerminate() {}

const char* ZRDllVersion() { return ZR_VERSION; }

bool ZRDllCreateComponent(const std::string& verb, const std::string& family, const std::string& kind,
                          du::SmartPtr<du::RefCounted>& out) {
    if (verb != "create" || family != "callouts" || kind != "calloutengine") return false;
    out = du::SmartPtr<du::RefCounted>(new zrcallouts::Callouts());
    return true;
}

namespace zrcallouts {

du::SmartPtr<Callouts> GetCalloutsEngineForScene(const du::SmartPtr<zrk::ShapeScene>& scene) {
    // The manager holds engines of this component only, so the cast needs no test.
    return du::StaticCast<Callouts>(
        zrk::illustration::CalloutEngineMgr::Instance().GetCalloutsEngineForScene(scene));
}

}  // namespace zrcallouts
