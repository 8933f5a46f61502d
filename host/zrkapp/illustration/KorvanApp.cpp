#include "zrkapp/illustration/KorvanApp.h"

#include "du/ProcessWide.h"
#include "zrk/object/Checked.h"

namespace zrkapp::illustration {
namespace {

du::ProcessWide<KorvanApp> theApp;

}  // namespace

du::SmartPtr<KorvanApp> KorvanApp::GetKorvanApp() { return theApp.Get(); }

void KorvanApp::Start() { theApp.Exchange(zrk::Checked(new KorvanApp)); }

void KorvanApp::Stop() { theApp.Exchange(nullptr); }

KorvanApp::KorvanApp() = default;

KorvanApp::~KorvanApp() = default;

}  // namespace zrkapp::illustration
