// A callout template: what the labels of its callouts say.

#pragma once

#include <mutex>
#include <string>
#include <vector>

#include "dom/ObserverList.h"
#include "du/SmartPtr.h"
#include "zrannotations/Annotation.h"
#include "zrannotations/LabelContent.h"
#include "zrk/illustration/CalloutTemplateObserver.h"
#include "zrk/illustration/CollectionItem.h"
#include "zrk/operation/Operation.h"

namespace zrannotations {

/// Any thread.
class TAnnotation : public Annotation {
public:
    using Contents = std::vector<du::SmartPtr<LabelContent>>;

    /// `item` is the template's entry in its collection; null for one in no collection.
    TAnnotation(std::string id, Contents contents,
                const du::SmartPtr<zrk::illustration::CollectionItem>& item);
    ~TAnnotation() override;

    du::Symbol GetClass() const override;

    const std::string& GetId() const { return m_id; }
    const du::SmartPtr<zrk::illustration::CollectionItem>& GetCollectionItem() const { return m_item; }
    /// Appends the pieces in order; false when there are none.
    bool GetTextContent(Contents& out) const;
    /// Whether a piece shows the item's label, quantity or tag.
    bool RequiresItemList() const;
    /// Whether a piece shows a property of the part.
    bool RequiresPropertyVisitor() const;

    /// Changes the template; its observers hear of it, then the operation (may be null) gets a step. A
    /// template is in no scene: pass the operation of the open transaction.
    void SetTextContent(Contents contents, const du::SmartPtr<zrk::Operation>& operation = nullptr);
    void RegisterObserver(const du::SmartPtr<zrk::illustration::CalloutTemplateObserver>& observer);
    void UnregisterObserver(const du::SmartPtr<zrk::illustration::CalloutTemplateObserver>& observer);

private:
    const std::string m_id;
    const du::SmartPtr<zrk::illustration::CollectionItem> m_item;
    dom::ObserverList<zrk::illustration::CalloutTemplateObserver> m_observers;
    mutable std::mutex m_mutex;  // guards m_contents
    Contents m_contents;
};

}  // namespace zrannotations
