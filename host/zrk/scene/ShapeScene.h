// A scene of parts.

#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <shared_mutex>
#include <unordered_map>
#include <vector>

#include "dg/Location.h"
#include "du/ConstSmartPtr.h"
#include "zrk/scene/Scene.h"
#include "zrk/scene/ShapeInstance.h"

namespace zrk {

class PickScene;

/// Any thread. Every change raises the revision, then tells the observers, and belongs to the open
/// transaction.
class ShapeScene : public Scene {
public:
    static const ClassType CLASS_TYPE;

    ShapeScene();
    ~ShapeScene() override;

    const ClassType& GetClassType() const override { return CLASS_TYPE; }

    /// The part that shows the instance, null when there is none. O(1).
    void GetShapeInstance(const du::ConstSmartPtr<Instance>& instance,
                          du::SmartPtr<ShapeInstance>& out) const;
    /// All parts in the order in which they were made.
    std::vector<du::SmartPtr<ShapeInstance>> GetShapeInstances() const;

    /// Puts the instance where its structure says; returns the part that exists already, if so.
    du::SmartPtr<ShapeInstance> CreateShapeInstance(const du::SmartPtr<Instance>& instance,
                                                    const du::Symbol& shapeSource = du::Symbol::EMPTY);
    void RemoveShapeInstance(const du::SmartPtr<ShapeInstance>& shapeInstance);
    void SetLocation(const du::SmartPtr<ShapeInstance>& shapeInstance, const dg::Location& location);
    void SetVisible(const du::SmartPtr<ShapeInstance>& shapeInstance, bool visible);
    void SetPhantom(const du::SmartPtr<ShapeInstance>& shapeInstance, bool phantom);

    /// Grows with every change of the parts.
    std::uint64_t GetRevision() const { return m_revision.load(std::memory_order_acquire); }
    /// The parts as they stand now, ready for rays; built when first asked for after a change.
    std::shared_ptr<const PickScene> GetPickScene() const;

private:
    /// Puts a removed part back in its place in the order.
    void PutBack(const du::SmartPtr<ShapeInstance>& part);
    /// The change, which is made, belongs to the open transaction, if there is one.
    template <class Undo, class Redo>
    void TakeIn(Undo undo, Redo redo);
    void Touch() { m_revision.fetch_add(1, std::memory_order_acq_rel); }

    const std::shared_ptr<du::BackLink<ShapeScene>> m_shapeLink;
    mutable std::shared_mutex m_partsMutex;  // guards the three below
    std::unordered_map<const Instance*, du::SmartPtr<ShapeInstance>> m_byInstance;
    std::map<std::uint64_t, du::SmartPtr<ShapeInstance>> m_inOrder;  // by sequence
    std::uint64_t m_created = 0;
    std::atomic<std::uint64_t> m_revision{1};
    mutable std::mutex m_pickMutex;  // guards the two below; held while they are built, which calls nobody
    mutable std::shared_ptr<const PickScene> m_pickScene;
    mutable std::uint64_t m_pickRevision = 0;
};

}  // namespace zrk
