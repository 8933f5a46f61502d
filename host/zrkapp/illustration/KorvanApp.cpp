#include "zrkapp/illustration/KorvanApp.h"

#include <mutex>
#include <utility>

namespace zrkapp::illustration {
namespace {

std::mutex appMutex;
du::SmartPtr<KorvanApp> theApp;  // guarded by appMutex

du::SmartPtr<KorvanApp> ExchangeApp(du::SmartPtr<KorvanApp> app) {
    const std::lock_guard hold(appMutex);
    std::swap(theApp, app);
    return app;
}

}  // namespace

du::SmartPtr<KorvanApp> KorvanApp::GetKorvanApp() {
    const std::lock_guard hold(appMutex);
    return theApp;
}

void KorvanApp::Start() { ExchangeApp(new KorvanApp); }

void KorvanApp::Stop() { ExchangeApp(nullptr); }

KorvanApp::KorvanApp() = default;

KorvanApp::~KorvanApp() = default;

}  // namespace zrkapp::illustration
