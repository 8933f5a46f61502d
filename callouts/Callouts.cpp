#include "callouts/Callouts.h"

#include <utility>

#include "callouts/events/DestroyCalloutsTask.h"
#include "callouts/observers/AnnoSetTableObserver.h"
#include "callouts/observers/EngineHandle.h"
#include "callouts/observers/InsetObserver.h"
#include "callouts/observers/ItemsListObserver.h"
#include "callouts/observers/KorvanAppObserver.h"
#include "callouts/observers/TreeObserver.h"
#include "callouts/observers/WorldObserver.h"
#include "dp/ReadLocker.h"
#include "dp/WriteLocker.h"
#include "zrk/annotation/AnnoSetTable.h"
#include "zrk/illustration/Illustration3dScene.h"
#include "zrk/illustration/IsRunningIllustrate.h"
#include "zrk/illustration/ItemsList.h"
#include "zrk/world/Kernel.h"
#include "zrk/world/World.h"
#include "zrkapp/illustration/KorvanApp.h"

namespace zrcallouts {
namespace {

void LetKernelManage(const du::SmartPtr<dom::ManagedObject>& observer) {
    if (const auto kernel = zrk::Kernel::GetKernel()) kernel->ManageObject(observer);
}

}  // namespace

Callouts::Callouts()
    : m_handle(std::make_shared<EngineHandle>(this)),
      m_itemIndex(std::make_shared<zrannotations::ItemIndex>([handle = m_handle](unsigned id) {
          if (const auto engine = handle->Lock()) engine->IndicateItem(id);
      })) {}

Callouts::Callouts(du::SmartPtr<zrk::ShapeScene> scene) : Callouts() { Callouts::Initialize(scene); }

Callouts::~Callouts() {
    if (m_worldObserver) m_worldObserver->Detach();
    m_handle->Close();
    ReleaseHeldByObservers();
    for (const auto& callout : m_callouts) callout->UnregisterTemplateObserver();
    m_itemIndex->Close();
}

// Tree and insets hold their observers: what these hold in turn would never be freed.
void Callouts::ReleaseHeldByObservers() {
    if (m_treeObserver) m_treeObserver->OnDestroy();
    for (const auto& observer : m_formerTreeObservers) observer->OnDestroy();
    for (const auto& [inset, observer] : m_insetObservers) observer->ReleaseInset();
    for (const auto& observer : m_furtherInsetObservers) observer->ReleaseInset();
}

void Callouts::Initialize(const du::SmartPtr<zrk::ShapeScene>& scene) {
    zrk::illustration::Callouts::Initialize(scene);
    ObserveItemList(scene);
    ObserveWorld();
    ObserveApplication();
    InitializeShapeViewObserver();
    ObserveTree();
    ObserveAnnoSetTable();
}

void Callouts::ObserveItemList(const du::SmartPtr<zrk::ShapeScene>& scene) {
    if (!du::DynamicCast<zrk::illustration::Illustration3dScene>(scene)) return;
    auto itemList = zritemlist::ItemList::GetItemListForScene(scene);
    {
        const std::lock_guard hold(m_guard);
        m_itemList = itemList;
    }
    if (!itemList) return;
    m_itemsListObserver = new ItemsListObserver(m_handle);
    LetKernelManage(m_itemsListObserver);
    if (const auto items = itemList->GetZrkItemList()) items->RegisterObserver(m_itemsListObserver);
}

void Callouts::ObserveWorld() {
    m_worldObserver = new WorldObserver(m_handle);
    const auto world = zrk::World::GetWorld();
    if (!world) return;
    LetKernelManage(m_worldObserver);
    world->RegisterObserver(m_worldObserver, true);
}

void Callouts::ObserveApplication() {
    if (!zrk::illustration::IsRunningIllustrate()) return;
    m_korvanAppObserver = new KorvanAppObserver(m_handle);
    LetKernelManage(m_korvanAppObserver);
    if (const auto app = zrkapp::illustration::KorvanApp::GetKorvanApp()) {
        app->RegisterObserver(m_korvanAppObserver);
    }
}

void Callouts::ObserveTree() {
    if (m_treeObserver) m_formerTreeObservers.push_back(m_treeObserver);
    m_treeObserver = new TreeObserver(m_handle);
    m_treeObserver->Attach();
}

void Callouts::ObserveAnnoSetTable() {
    if (!zrk::illustration::IsRunningIllustrate()) return;
    m_annoSetTableObserver = new AnnoSetTableObserver(m_handle);
    LetKernelManage(m_annoSetTableObserver);
    const auto world = zrk::World::GetWorld();
    const auto table = world ? world->GetAnnoSetTable() : du::SmartPtr<zrk::AnnoSetTable>();
    if (table) table->RegisterObserver(m_annoSetTableObserver);
}

void Callouts::InitializeShapeViewObserver() {
    zrk::illustration::Callouts::InitializeShapeViewObserver();
    if (const auto scene = GetScene()) SetBackgroundColor(du::DynamicCast<zrk::ShapeView>(scene->GetView(0)));
}

void Callouts::UnregisterObservers() {
    DetachWorldObserver();
    const dp::WriteLocker write(GetRWLockPtr());
    UnregisterItemsListObserver();
    UnregisterWorldObserver();
    UnregisterInsetObservers();
    UnregisterApplicationObserver();
    UnregisterTreeObserver();
    UnregisterAnnoSetTableObserver();
    zrk::illustration::Callouts::UnregisterObservers();
}

// A language change is forwarded under the module's spin lock and then reads under the engine's lock. Taking
// the spin lock before the engine's lock here too keeps the two from waiting for each other.
void Callouts::DetachWorldObserver() {
    du::SmartPtr<WorldObserver> observer;
    {
        const dp::ReadLocker read(GetRWLockPtr());
        observer = m_worldObserver;
    }
    if (observer && !observer->IsDetached() && zrk::World::GetWorld()) observer->Detach();
}

void Callouts::UnregisterItemsListObserver() {
    if (!m_itemList || !m_itemsListObserver) return;
    m_itemsListObserver->m_owner.Detach();
    if (const auto items = m_itemList->GetZrkItemList()) items->UnregisterObserver(m_itemsListObserver);
}

void Callouts::UnregisterWorldObserver() {
    const auto world = zrk::World::GetWorld();
    if (!m_worldObserver || !world) return;
    world->DeregisterObserver(m_worldObserver);
    m_worldObserver = nullptr;
}

void Callouts::UnregisterInsetObservers() {
    InsetObserverMap observers;
    {
        const std::lock_guard hold(m_guard);
        observers = m_insetObservers;
    }
    for (const auto& [inset, observer] : observers) {
        if (!inset || !observer) continue;
        observer->ReleaseInset();
        inset->UnregisterObserver(observer);
    }
}

void Callouts::UnregisterApplicationObserver() {
    if (!m_korvanAppObserver) return;
    m_korvanAppObserver->m_owner.Detach();
    if (const auto app = zrkapp::illustration::KorvanApp::GetKorvanApp()) {
        app->UnregisterObserver(m_korvanAppObserver);
    }
    m_korvanAppObserver = nullptr;
}

void Callouts::UnregisterTreeObserver() {
    if (m_treeObserver && !m_treeObserver->m_owner.IsDetached()) {
        if (const auto tree = m_treeObserver->GetTree()) tree->UnregisterObserver(m_treeObserver);
        m_treeObserver->OnDestroy();
    }
    m_treeObserver = nullptr;
}

void Callouts::UnregisterAnnoSetTableObserver() {
    if (!m_annoSetTableObserver) return;
    m_annoSetTableObserver->m_owner.Detach();
    const auto world = zrk::World::GetWorld();
    const auto table = world ? world->GetAnnoSetTable() : du::SmartPtr<zrk::AnnoSetTable>();
    if (table) table->UnregisterObserver(m_annoSetTableObserver);
    m_annoSetTableObserver = nullptr;
}

void Callouts::Destroy() {
    DetachWorldObserver();
    const dp::WriteLocker write(GetRWLockPtr());
    UnregisterObservers();
    if (du::DynamicCast<zrk::illustration::Illustration3dScene>(GetScene())) {
        zritemlist::ItemList::RemoveItemListForScene(GetScene());
        du::SmartPtr<zritemlist::ItemList> released;
        const std::lock_guard hold(m_guard);
        std::swap(released, m_itemList);
    }
    QueueDestroyTask();
    CloseItemIndex();
    ClearRegistry();
    zrk::illustration::Callouts::Destroy();
}

void Callouts::CloseItemIndex() {
    auto itemIndex = std::make_shared<zrannotations::ItemIndex>();
    {
        const std::lock_guard hold(m_guard);
        itemIndex.swap(m_itemIndex);
    }
    itemIndex->Close();
}

void Callouts::QueueDestroyTask() {
    InsetMap insetCallouts;
    CalloutSet callouts;
    Snapshot snapshot;
    {
        const std::lock_guard hold(m_guard);
        insetCallouts.swap(m_insetCallouts);
        callouts.swap(m_callouts);
        snapshot.swap(m_snapshot);
    }
    const du::SmartPtr<du::Task> task(new DestroyCalloutsTask(std::move(insetCallouts), std::move(callouts)));
    const auto world = zrk::World::GetWorld();
    if (world && world->GetTaskPool() != nullptr) world->GetTaskPool()->InsertTask(task);
}

void Callouts::ClearRegistry() {
    // Swapped out under the guard and released after it: releasing a callout runs its host's code.
    CalloutSet callouts;
    Snapshot snapshot;
    decltype(m_instanceIdCallouts) instanceIdCallouts;
    InsetObserverMap insetObservers;
    InsetMap insetCallouts;
    const std::lock_guard hold(m_guard);
    callouts.swap(m_callouts);
    snapshot.swap(m_snapshot);
    instanceIdCallouts.swap(m_instanceIdCallouts);
    insetObservers.swap(m_insetObservers);
    insetCallouts.swap(m_insetCallouts);
}

bool Callouts::GetCombineForSamePart() const {
    const dp::ReadLocker read(GetRWLockPtr());
    return m_combineForSamePart;
}

void Callouts::SetCombineForSamePart(bool combine) {
    const dp::WriteLocker write(GetRWLockPtr());
    m_combineForSamePart = combine;
}

bool Callouts::GetDrawOneForSamePart() const {
    const dp::ReadLocker read(GetRWLockPtr());
    return m_drawOneForSamePart;
}

void Callouts::SetDrawOneForSamePart(bool drawOne) {
    const dp::WriteLocker write(GetRWLockPtr());
    m_drawOneForSamePart = drawOne;
}

unsigned int Callouts::GetPickRequestCount() const {
    const dp::ReadLocker read(GetRWLockPtr());
    return m_pickRequestCount;
}

du::SmartPtr<zritemlist::ItemList> Callouts::GetItemsList() const {
    const std::lock_guard hold(m_guard);
    return m_itemList;
}

void Callouts::PreferencesChanged() {}

}  // namespace zrcallouts
