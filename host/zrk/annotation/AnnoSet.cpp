#include "zrk/annotation/AnnoSet.h"

#include <algorithm>
#include <utility>

#include "zrk/annotation/AnnoSetStep.h"
#include "zrk/object/Checked.h"
#include "zrk/scene/Scene.h"

namespace zrk {

AnnoSet::AnnoSet(std::shared_ptr<du::BackLink<Scene>> scene) : m_scene(std::move(scene)) {}

AnnoSet::~AnnoSet() = default;

std::optional<AnnoSet::Place> AnnoSet::Insert(const AnnotationPtr& annotation, std::optional<Place> place) {
    const std::lock_guard hold(m_mutex);
    if (m_places.count(annotation.get()) != 0) return std::nullopt;
    const Place taken = place ? *place : m_inserted++;
    m_places.emplace(annotation.get(), taken);
    m_inOrder.emplace(taken, annotation);
    annotation->Bind(m_scene);
    return taken;
}

std::optional<AnnoSet::Place> AnnoSet::Erase(const AnnotationPtr& annotation) {
    const std::lock_guard hold(m_mutex);
    const auto entry = m_places.find(annotation.get());
    if (entry == m_places.end()) return std::nullopt;
    const Place place = entry->second;
    m_inOrder.erase(place);
    m_places.erase(entry);
    if (m_referenced.count(annotation) == 0) annotation->Bind(nullptr);
    return place;
}

void AnnoSet::NotifyAdded(const AnnotationPtr& annotation) const {
    const auto scene = m_scene->Lock();
    if (!scene) return;
    scene->GetObservers().NotifyAll([&](SceneObserver& observer) { observer.OnAnnotationAdded(annotation); });
}

bool AnnoSet::AddAnnotationToSet(const AnnotationPtr& annotation, const du::SmartPtr<Operation>& operation) {
    if (!annotation) return false;
    const bool isKept = KeepBefore(annotation);
    const auto place = Insert(annotation, std::nullopt);
    if (place && operation && !isKept)
        operation->AddStep(Checked(new AnnoSetStep(this, annotation, *place, AnnoSetStep::Change::kAdded)));
    NotifyAdded(annotation);
    return place.has_value();
}

void AnnoSet::PutBack(const AnnotationPtr& annotation, Place place) {
    KeepBefore(annotation);
    if (GetMembership(annotation).place != place) Erase(annotation);
    Insert(annotation, place);
    NotifyAdded(annotation);
}

bool AnnoSet::KeepBefore(const AnnotationPtr& annotation) const {
    const auto scene = History::IsAnyActive() ? m_scene->Lock() : du::SmartPtr<Scene>();
    return scene && scene->GetHistory().Keep(annotation);
}

AnnoSet::Membership AnnoSet::GetMembership(const AnnotationPtr& annotation) const {
    const std::lock_guard hold(m_mutex);
    const auto entry = m_places.find(annotation.get());
    Membership membership;
    if (entry != m_places.end()) membership.place = entry->second;
    membership.isReferenced = m_referenced.count(annotation) != 0;
    return membership;
}

void AnnoSet::SetMembership(const AnnotationPtr& annotation, const Membership& membership) {
    const Membership now = GetMembership(annotation);
    if (membership.isReferenced) AddReferencedAnnotation(annotation);
    if (!membership.place) {
        RemoveAnnotationFromSet(annotation, nullptr);
    } else if (now.place != membership.place) {
        PutBack(annotation, *membership.place);
    }
    if (!membership.isReferenced) RemoveReferencedAnnotation(annotation);
}

bool AnnoSet::RemoveAnnotationFromSet(const AnnotationPtr& annotation,
                                      const du::SmartPtr<Operation>& operation) {
    const AnnotationPtr removed =
        annotation;  // the argument may lie in a container that the observers change
    const bool isKept = removed && Contains(removed) && KeepBefore(removed);
    const auto place = removed ? Erase(removed) : std::nullopt;
    if (!place) return false;
    if (operation && !isKept)
        operation->AddStep(Checked(new AnnoSetStep(this, removed, *place, AnnoSetStep::Change::kRemoved)));
    if (const auto scene = m_scene->Lock()) {
        scene->GetObservers().NotifyAll(
            [&](SceneObserver& observer) { observer.OnAnnotationRemoved(removed); });
    }
    return true;
}

bool AnnoSet::RemoveAnnotationWithDependencies(const AnnotationPtr& annotation,
                                               const du::SmartPtr<Operation>& operation) {
    if (!annotation) return false;
    for (const auto& dependent : annotation->GetDependents()) RemoveAnnotationFromSet(dependent, operation);
    return RemoveAnnotationFromSet(annotation, operation);
}

bool AnnoSet::Contains(const AnnotationPtr& annotation) const {
    const std::lock_guard hold(m_mutex);
    return m_places.count(annotation.get()) != 0;
}

std::set<AnnoSet::AnnotationPtr> AnnoSet::GetReferencedAnnotations() const {
    const std::lock_guard hold(m_mutex);
    return m_referenced;
}

void AnnoSet::AddReferencedAnnotation(const AnnotationPtr& annotation) {
    KeepBefore(annotation);
    const std::lock_guard hold(m_mutex);
    if (m_referenced.insert(annotation).second) annotation->Bind(m_scene);
}

void AnnoSet::RemoveReferencedAnnotation(const AnnotationPtr& annotation) {
    const AnnotationPtr removed = annotation;
    KeepBefore(removed);
    const std::lock_guard hold(m_mutex);
    if (m_referenced.erase(removed) != 0 && m_places.count(removed.get()) == 0) removed->Bind(nullptr);
}

bool AnnoSet::IsReferencedAnnotation(const AnnotationPtr& annotation) const {
    const std::lock_guard hold(m_mutex);
    return m_referenced.count(annotation) != 0;
}

void AnnoSet::GetAnnotationCounts(unsigned mask, std::uint64_t& own, std::uint64_t& referenced) const {
    const std::lock_guard hold(m_mutex);
    const auto counts = [mask](const AnnotationPtr& annotation) {
        return (annotation->GetCountMask() & mask) != 0;
    };
    own = static_cast<std::uint64_t>(std::count_if(m_inOrder.begin(), m_inOrder.end(),
                                                   [&](const auto& entry) { return counts(entry.second); }));
    referenced = static_cast<std::uint64_t>(std::count_if(m_referenced.begin(), m_referenced.end(), counts));
}

std::vector<AnnoSet::AnnotationPtr> AnnoSet::GetAnnotations() const {
    std::vector<AnnotationPtr> annotations;
    const std::lock_guard hold(m_mutex);
    annotations.reserve(m_inOrder.size());
    for (const auto& [place, annotation] : m_inOrder) annotations.push_back(annotation);
    return annotations;
}

void AnnoSet::Visit(AnnoSetVisitor& visitor) const {
    for (const auto& annotation : GetAnnotations()) {
        if (!visitor.Visit(annotation)) return;
    }
    if (!visitor.IncludesReferenced()) return;
    for (const auto& annotation : GetReferencedAnnotations()) {
        if (!Contains(annotation) && !visitor.Visit(annotation)) return;
    }
}

void AnnoSet::Clear() {
    std::map<std::uint64_t, AnnotationPtr> inOrder;
    std::set<AnnotationPtr> referenced;
    const std::lock_guard hold(m_mutex);
    inOrder.swap(m_inOrder);
    referenced.swap(m_referenced);
    m_places.clear();
    for (const auto& [place, annotation] : inOrder) annotation->Bind(nullptr);
    for (const auto& annotation : referenced) annotation->Bind(nullptr);
}

}  // namespace zrk
