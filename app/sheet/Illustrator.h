// Gives a model its parts list and its callouts, through the callouts component.

#pragma once

#include <functional>
#include <vector>

#include "app/document/ProductModel.h"
#include "app/sheet/SheetOptions.h"
#include "callouts/Callouts.h"
#include "du/SmartPtr.h"
#include "zritemlist/ItemList.h"

namespace zrsheet {

/// From 0 to 100; called on any thread, one at a time.
using ProgressSink = std::function<void(int percent)>;

/// One for each model. The component is loaded by its name; its engine leaves the scene when the model
/// closes.
class Illustrator {
public:
    using CalloutPtr = du::SmartPtr<zrannotations::Callout>;

    /// Loads the component, lists the parts and binds an engine to the scene. Requires: `model` outlives
    /// this. Throws UserError when the component is missing or the template is wrong.
    Illustrator(ProductModel& model, const SheetOptions& options);
    Illustrator(const Illustrator&) = delete;
    Illustrator& operator=(const Illustrator&) = delete;
    /// The application offers no templates from then on.
    ~Illustrator();

    /// Creates the callouts in the task pool and waits. Throws UserError when nothing is selected.
    void CreateCallouts(const ProgressSink& progress);
    /// Answers the picks that find the leaders' ends and tell which are covered.
    void AnswerPicks();

    /// In the order of their items in the list.
    [[nodiscard]] std::vector<CalloutPtr> Callouts() const;
    [[nodiscard]] const du::SmartPtr<zrk::illustration::ItemsList>& Items() const {
        return m_itemList->GetZrkItemList();
    }

private:
    void ListParts();
    void LoadEngine();

    ProductModel& m_model;
    const SheetOptions& m_options;
    du::SmartPtr<zritemlist::ItemList> m_itemList;
    du::SmartPtr<zrcallouts::Callouts> m_engine;
};

}  // namespace zrsheet
