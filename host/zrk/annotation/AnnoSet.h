// The annotations of a scene.

#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <unordered_map>
#include <vector>

#include "du/BackLink.h"
#include "du/SmartPtr.h"
#include "zrk/annotation/AnnoSetVisitor.h"
#include "zrk/annotation/Annotation.h"
#include "zrk/object/Object.h"
#include "zrk/operation/Operation.h"

namespace zrk {

/// Any thread; look-ups are O(1), walks go in the order of insertion. The scene's observers are told on the
/// calling thread, with no lock held. Beside its own annotations a set refers to others that a saved view
/// keeps alive.
class AnnoSet : public Object {
public:
    using AnnotationPtr = du::SmartPtr<Annotation>;

    /// Where an annotation stands.
    struct Membership {
        std::optional<std::uint64_t> place;  // ascends in the order of the set; empty outside it
        bool isReferenced = false;

        friend bool operator==(const Membership&, const Membership&) = default;
    };

    explicit AnnoSet(std::shared_ptr<du::BackLink<Scene>> scene);
    ~AnnoSet() override;

    /// The change belongs to the open transaction; where there is none it becomes a step of the operation,
    /// which may be null. False when the annotation was there already; the
    /// observers are told even so, for they may have lost track of it.
    bool AddAnnotationToSet(const AnnotationPtr& annotation, const du::SmartPtr<Operation>& operation);
    /// False, and nobody is told, when it was not there.
    bool RemoveAnnotationFromSet(const AnnotationPtr& annotation, const du::SmartPtr<Operation>& operation);
    /// Removes what depends on the annotation first.
    bool RemoveAnnotationWithDependencies(const AnnotationPtr& annotation,
                                          const du::SmartPtr<Operation>& operation);
    bool Contains(const AnnotationPtr& annotation) const;

    std::set<AnnotationPtr> GetReferencedAnnotations() const;
    void AddReferencedAnnotation(const AnnotationPtr& annotation);
    void RemoveReferencedAnnotation(const AnnotationPtr& annotation);
    bool IsReferencedAnnotation(const AnnotationPtr& annotation) const;

    Membership GetMembership(const AnnotationPtr& annotation) const;
    /// For undo: brings the annotation to where it stood. The observers hear of what enters or leaves the
    /// set.
    void SetMembership(const AnnotationPtr& annotation, const Membership& membership);

    /// How many annotations have a bit of the mask. O(n).
    void GetAnnotationCounts(unsigned mask, std::uint64_t& own, std::uint64_t& referenced) const;
    /// Walks over a copy, so that the visitor may change the set.
    void Visit(AnnoSetVisitor& visitor) const;
    std::vector<AnnotationPtr> GetAnnotations() const;

    /// Lets everything go without telling anybody: the scene closes.
    void Clear();

private:
    friend class AnnoSetStep;

    /// Places ascend in the order of insertion and are never used for another annotation.
    using Place = std::uint64_t;

    /// Puts a removed annotation back where it stood, or moves it there. The observers are told in any case.
    void PutBack(const AnnotationPtr& annotation, Place place);
    /// `place`: where it goes, a fresh one when empty. Empty when the annotation was there already.
    std::optional<Place> Insert(const AnnotationPtr& annotation, std::optional<Place> place);
    /// Empty when it was not there.
    std::optional<Place> Erase(const AnnotationPtr& annotation);
    /// True when the change is kept for the open transaction.
    bool KeepBefore(const AnnotationPtr& annotation) const;
    void NotifyAdded(const AnnotationPtr& annotation) const;

    const std::shared_ptr<du::BackLink<Scene>> m_scene;
    mutable std::mutex m_mutex;  // guards all below
    std::map<Place, AnnotationPtr> m_inOrder;
    std::unordered_map<const Annotation*, Place> m_places;
    Place m_inserted = 0;
    std::set<AnnotationPtr> m_referenced;
};

}  // namespace zrk
