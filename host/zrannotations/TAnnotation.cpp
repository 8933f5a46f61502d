#include "zrannotations/TAnnotation.h"

#include <algorithm>
#include <utility>

#include "zrannotations/CalloutLabelFileProperties.h"
#include "zrannotations/ConstStrings.h"
#include "zrk/object/Checked.h"
#include "zrk/operation/CallStep.h"

namespace zrannotations {
namespace {

constexpr unsigned kReference = 1;

bool IsItemReference(const LabelContent& content) {
    const std::string& name = content.PropertyName();
    return content.Kind() == kReference && content.TextOrGroup() == "System" &&
           (name == "zrITM" || name == "zrQTY" || name == "zrTAG");
}

bool IsPartReference(const LabelContent& content) {
    return content.Kind() == kReference && content.TextOrGroup() != "System" &&
           !IsCalloutLabelGroupFileProperty(content.TextOrGroup());
}

template <class Test>
bool AnyContent(const TAnnotation& definition, Test test) {
    TAnnotation::Contents contents;
    definition.GetTextContent(contents);
    return std::any_of(contents.begin(), contents.end(),
                       [test](const auto& content) { return test(*content); });
}

}  // namespace

TAnnotation::TAnnotation(std::string id, Contents contents,
                         const du::SmartPtr<zrk::illustration::CollectionItem>& item)
    : m_id(std::move(id)), m_item(item), m_contents(std::move(contents)) {}

TAnnotation::~TAnnotation() = default;

du::Symbol TAnnotation::GetClass() const { return ConstStrings::zrCalloutTemplate; }

bool TAnnotation::GetTextContent(Contents& out) const {
    const std::lock_guard hold(m_mutex);
    out.insert(out.end(), m_contents.begin(), m_contents.end());
    return !m_contents.empty();
}

bool TAnnotation::RequiresItemList() const { return AnyContent(*this, IsItemReference); }

bool TAnnotation::RequiresPropertyVisitor() const { return AnyContent(*this, IsPartReference); }

void TAnnotation::SetTextContent(Contents contents, const du::SmartPtr<zrk::Operation>& operation) {
    Contents former;
    {
        const std::lock_guard hold(m_mutex);
        former = std::exchange(m_contents, contents);
    }
    m_observers.NotifyAll(
        [](zrk::illustration::CalloutTemplateObserver& observer) { observer.OnTemplateModified(); });
    if (!operation) return;
    const du::SmartPtr<TAnnotation> self(this);
    operation->AddStep(zrk::Checked(new zrk::CallStep([self, former] { self->SetTextContent(former); },
                                                      [self, contents] { self->SetTextContent(contents); })));
}

void TAnnotation::RegisterObserver(const du::SmartPtr<zrk::illustration::CalloutTemplateObserver>& observer) {
    m_observers.Register(observer);
}

void TAnnotation::UnregisterObserver(
    const du::SmartPtr<zrk::illustration::CalloutTemplateObserver>& observer) {
    m_observers.Unregister(observer);
}

}  // namespace zrannotations
