// Builds the text of one callout's label from the contents of its template.

#pragma once

#include <string>

#include "du/Localizer.h"
#include "du/SmartPtr.h"
#include "du/Symbol.h"
#include "zrannotations/Callout.h"
#include "zrannotations/LabelContent.h"
#include "zritemlist/ItemList.h"
#include "zrk/illustration/ItemsList.h"
#include "zrk/illustration/SbomInstance.h"
#include "zrk/scene/Scene.h"

namespace zrcallouts {

/// The catalogue that the component's texts come from.
inline constexpr const char* kMessageModule = "zrbase:zrmodulesStrings";

/// Built for one label. Requires: `callout` and `itemList` are not null. Any thread.
class LabelText {
public:
    LabelText(du::SmartPtr<zrannotations::Callout> callout, du::SmartPtr<zritemlist::ItemList> itemList,
              du::SmartPtr<zrk::Scene> scene);

    /// The text that `content` stands for: itself when literal, else the item data, file property or part
    /// property it refers to. A part property that has no text gives the language's fallback text.
    std::string Of(const zrannotations::LabelContent& content) const;

private:
    std::string OfReference(const zrannotations::LabelContent& content) const;
    std::string OfFileProperty(const zrannotations::LabelContent& content) const;
    std::string OfPartProperty(const zrannotations::LabelContent& content) const;
    bool OfItem(const zrannotations::LabelContent& content, std::string& text) const;
    bool IsFilePropertiesGroup(const std::string& group) const;
    du::SmartPtr<zrk::illustration::SbomInstance> FindSbomInstance(const std::string& scope) const;

    du::SmartPtr<zrannotations::Callout> m_callout;
    du::SmartPtr<zritemlist::ItemList> m_itemList;
    du::SmartPtr<zrk::Scene> m_scene;
    du::Localizer m_localizer;
};

}  // namespace zrcallouts
