// Label texts: generated from templates and item data, rebuilt when that data changes.

#include <algorithm>
#include <utility>

#include "callouts/Callouts.h"
#include "callouts/LabelText.h"
#include "callouts/PlaceholderReader.h"
#include "dp/ReadLocker.h"
#include "dp/WriteLocker.h"
#include "dp/ZRTracer.h"
#include "du/LocalizableString.h"
#include "du/Localizer.h"
#include "zrannotations/CombinedCallout.h"
#include "zrannotations/LabelContent.h"
#include "zrk/illustration/IsRunningIllustrate.h"
#include "zrkapp/illustration/KorvanApp.h"

namespace zrcallouts {
namespace {

using zrannotations::Callout;
using zrannotations::CombinedCallout;
using zrannotations::LabelContent;
using Contents = std::vector<du::SmartPtr<LabelContent>>;

constexpr unsigned int kPropertyReference = 1;
constexpr int kEmptyTextTraceLevel = 2;
constexpr const char* kPredefinedTextMessage = "850";

Contents ContentsOf(const Callout& callout) {
    Contents contents;
    if (const auto definition = callout.GetDefinition()) definition->GetTextContent(contents);
    return contents;
}

/// Whether the content's text can change after it was generated. The fields are read whatever the kind.
bool IsDynamic(const LabelContent& content, bool itemReferences) {
    const bool isSystem = content.TextOrGroup() == "System";
    return content.ShownPart() == "Value" || (!isSystem && !content.PropertyName().empty()) ||
           (itemReferences && isSystem);
}

bool HasDynamicContent(const Callout& callout, bool itemReferences) {
    const Contents contents = ContentsOf(callout);
    return std::any_of(contents.begin(), contents.end(), [itemReferences](const auto& content) {
        return content && IsDynamic(*content, itemReferences);
    });
}

bool NeedsRegeneration(const du::SmartPtr<Callout>& callout, bool itemReferences) {
    const auto combined = du::DynamicCast<CombinedCallout>(callout);
    if (!combined) return HasDynamicContent(*callout, itemReferences);
    const std::vector<du::SmartPtr<Callout>> members = combined->GetCalloutVec();
    return std::any_of(members.begin(), members.end(), [itemReferences](const auto& member) {
        return member && HasDynamicContent(*member, itemReferences);
    });
}

}  // namespace

void Callouts::GenerateLabelString(const CalloutPtr& callout, Contents contents, std::string& label) {
    const dp::ReadLocker read(GetRWLockPtr());
    const auto itemList = GetItemsList();
    if (!itemList) return;
    const LabelText text(callout, itemList, GetScene());
    for (const auto& content : contents) {
        if (content) label += text.Of(*content);
    }
}

bool Callouts::HasTemplateText(const CalloutPtr& callout) {
    const auto definition = callout ? callout->GetDefinition() : du::SmartPtr<zrannotations::TAnnotation>();
    if (!definition) return false;
    return definition->RequiresItemList() || !GenerateLabel(callout).empty();
}

du::SmartPtr<zrannotations::TAnnotation> Callouts::GetTemplate() const {
    const dp::ReadLocker read(GetRWLockPtr());
    return m_template;
}

void Callouts::SetTemplate(du::SmartPtr<zrannotations::TAnnotation> definition) {
    // The former template is released after the lock, with the argument.
    const dp::WriteLocker write(GetRWLockPtr());
    if (!(m_template == definition)) std::swap(m_template, definition);
}

bool Callouts::GetTemplateLocalizableString(const CalloutPtr& callout, du::Symbol& out) const {
    const auto definition = callout ? callout->GetDefinition() : du::SmartPtr<zrannotations::TAnnotation>();
    if (!definition) return false;
    out = du::Symbol::EMPTY;
    Contents contents;
    if (!definition->GetTextContent(contents)) {
        out = callout->GetText(false);
        return true;
    }
    std::string text;
    int placeholder = 0;
    bool hasLiteral = false;
    for (const auto& content : contents) {
        if (!content) continue;
        if (content->Kind() == kPropertyReference) {
            text += "{" + std::to_string(placeholder++) + "}";
        } else {
            text += content->TextOrGroup();
            hasLiteral = true;
        }
    }
    out = du::Symbol(text);
    return hasLiteral;
}

void Callouts::LocalizeTemplateText(const du::Symbol& text, const Contents& contents,
                                    Contents& result) const {
    if (contents.empty() || !contents.front()) return;
    const auto& textProperties = contents.front()->TextProps();
    Contents references;
    std::copy_if(contents.begin(), contents.end(), std::back_inserter(references),
                 [](const auto& content) { return content && content->Kind() == kPropertyReference; });
    PlaceholderReader reader(text.Text());
    TemplatePiece piece;
    while (reader.Next(piece)) {
        if (!piece.isPlaceholder) {
            result.emplace_back(new LabelContent(std::string(piece.text), textProperties));
        } else if (piece.index >= 0 && static_cast<std::size_t>(piece.index) < references.size()) {
            const LabelContent& reference = *references[static_cast<std::size_t>(piece.index)];
            result.emplace_back(
                new LabelContent(reference.TextOrGroup(), reference.PropertyName(), reference.TextProps()));
        }
    }
}

std::string Callouts::GenerateLabel(const CalloutPtr& callout) {
    std::string label;
    GenerateLabelString(callout, ContentsOf(*callout), label);
    return label;
}

std::string Callouts::GenerateCombinedLabel(CombinedCallout& combined) {
    std::string text;
    const std::vector<CalloutPtr> members = combined.GetCalloutVec();
    for (const auto& member : members) {
        std::string label = member ? GenerateLabel(member) : std::string();
        if (label.empty()) continue;
        if (member->CheckDynamicTextForLegacyCallout(label)) {
            label = combined.GetMarkupText().Text();
        } else {
            member->SetText(du::Symbol(label), false);
        }
        text += text.empty() ? label : ", " + label;
    }
    return text;
}

void Callouts::SetCalloutText(const CalloutPtr& callout) {
    if (!callout) return;
    std::string label;
    if (const auto combined = du::DynamicCast<CombinedCallout>(callout)) {
        label = GenerateCombinedLabel(*combined);
    } else {
        label = GenerateLabel(callout);
        if (callout->CheckDynamicTextForLegacyCallout(label)) return;
    }
    if (label.empty()) {
        dp::ZRTracer("zrcallouts", "Callout")(kEmptyTextTraceLevel,
                                              "Callouts::SetCalloutText() - Empty Text for callout!");
        return;
    }
    callout->SetText(du::Symbol(label), false);
}

bool Callouts::RegenerateCalloutLabel(const CalloutPtr& callout, bool itemReferences) {
    if (!callout) return false;
    const dp::ReadLocker read(GetRWLockPtr());
    if (!NeedsRegeneration(callout, itemReferences)) return false;
    SetCalloutText(callout);
    return true;
}

void Callouts::RegenerateCalloutLabels() {
    const dp::ReadLocker read(GetRWLockPtr());
    bool isAnyRebuilt = false;
    const Snapshot callouts = SnapshotCallouts();
    for (const auto& callout : *callouts) {
        if (RegenerateCalloutLabel(callout, false)) isAnyRebuilt = true;
    }
    if (isAnyRebuilt) MarkViewDirty();
}

void Callouts::MarkViewDirty() {
    const auto scene = GetScene();
    const auto view = scene ? scene->GetView(0) : du::SmartPtr<zrk::View>();
    if (view) view->SetDirty(true);
}

bool Callouts::RegenerateCalloutLabelOnAdd() const {
    if (!zrk::illustration::IsRunningIllustrate()) return true;
    const auto app = zrkapp::illustration::KorvanApp::GetKorvanApp();
    return !app || !app->IsBatchPublishing();
}

void Callouts::SetPredefinedText(const CalloutPtr& callout) {
    const std::string text = du::Localizer(kMessageModule).LocalizeMessage(kPredefinedTextMessage, 0);
    if (callout) callout->SetText(du::Symbol(text), false);
}

void Callouts::OnLanguageChanged(du::SmartPtr<zrannotations::Callout>& callout) {
    if (!callout) return;
    const du::LocalizableString& text = callout->GetLocalizableString();
    if (text.IsEnabled()) callout->SetText(du::Symbol(text), true);
}

void Callouts::OnLanguageChanged() {
    const dp::ReadLocker read(GetRWLockPtr());
    const Snapshot callouts = SnapshotCallouts();
    for (CalloutPtr callout : *callouts) OnLanguageChanged(callout);
}

}  // namespace zrcallouts
