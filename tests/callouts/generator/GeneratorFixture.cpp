#include "tests/callouts/generator/GeneratorFixture.h"

#include <algorithm>
#include <utility>

namespace zrcallouts {

GeneratorFixture::Selection GeneratorFixture::Select(const std::vector<Part>& parts) {
    Selection selection;
    for (const auto& part : parts) {
        selection.emplace_back(new zrk::illustration::SbomInstanceSelectionItem(part.sbom));
    }
    return selection;
}

void GeneratorFixture::Create(const std::vector<Part>& parts) {
    CalloutGenerator(m_engine).AddOnSelected(Select(parts), nullptr);
}

GeneratorFixture::CalloutVec GeneratorFixture::Shown() const {
    CalloutVec callouts;
    for (const auto& annotation : m_annoSet->GetAnnotations()) {
        if (const auto callout = du::DynamicCast<zrannotations::Callout>(annotation))
            callouts.push_back(callout);
    }
    return callouts;
}

std::string GeneratorFixture::Describe(const zrannotations::Callout& callout) {
    std::string text;
    for (unsigned i = 0; i < callout.GetLeaderLineCount(true); ++i) {
        text += (i > 0 ? "," : "") + callout.GetShapeInstanceIdAtPos(i);
    }
    return text + "=" + callout.GetText(false).Text();
}

std::string GeneratorFixture::Dump() const {
    std::vector<std::string> lines;
    for (const auto& callout : Shown()) lines.push_back(Describe(*callout));
    std::sort(lines.begin(), lines.end());
    std::string dump;
    for (const auto& line : lines) dump += line + ";";
    return dump;
}

GeneratorFixture::TemplatePtr GeneratorFixture::UseTemplate(std::vector<ContentPtr> contents) {
    const auto definition = MakeTemplate(std::move(contents));
    m_engine->SetTemplate(definition);
    return definition;
}

}  // namespace zrcallouts
