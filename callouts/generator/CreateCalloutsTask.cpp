#include "callouts/generator/CreateCalloutsTask.h"

#include <utility>

#include "callouts/generator/CalloutGenerator.h"
#include "zrk/object/Observable.h"

namespace zrcallouts {

CreateCalloutsTask::CreateCalloutsTask(du::SmartPtr<Callouts> engine, Selection selection,
                                       du::SmartPtr<zrk::AsyncEvent> event)
    : m_callouts(std::move(engine)), m_selection(std::move(selection)), m_event(std::move(event)) {}

CreateCalloutsTask::~CreateCalloutsTask() = default;

void CreateCalloutsTask::Run() {
    CalloutGenerator generator(m_callouts);
    {
        const auto itemList = m_callouts ? m_callouts->GetItemsList() : du::SmartPtr<zritemlist::ItemList>();
        const du::SmartPtr<zrk::Observable> items =
            itemList ? du::SmartPtr<zrk::Observable>(itemList->GetZrkItemList())
                     : du::SmartPtr<zrk::Observable>();
        // The list's observers hear of the whole run at once.
        const zrk::Observable::UpdateGroup group(items);
        generator.AddOnSelected(m_selection, m_event);
    }
    if (m_event) m_event->Complete();
}

}  // namespace zrcallouts
