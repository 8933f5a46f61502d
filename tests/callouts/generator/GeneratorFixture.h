// What the tests of the generator share: selections, events that write down what they hear, and a generator
// whose stages can be run one by one.

#pragma once

#include <string>
#include <vector>

#include "callouts/generator/CalloutGenerator.h"
#include "tests/callouts/EngineFixture.h"
#include "zrk/event/AsyncEvent.h"

namespace zrcallouts {

class StagedGenerator : public CalloutGenerator {
public:
    using CalloutGenerator::CalloutGenerator;
    using CalloutGenerator::CompletedCategoryIterators;
    using CalloutGenerator::FinalizeCallouts;
    using CalloutGenerator::GetVariantsCount;
    using CalloutGenerator::InitCategoryIterators;
    using CalloutGenerator::InitializeSelected;
    using CalloutGenerator::NextCategory;
    using CalloutGenerator::PerformLayout;
    using CalloutGenerator::ShowCallouts;
};

/// Keeps what it hears until it has completed, which is when the test may look.
class RecordingEvent : public zrk::AsyncEvent {
public:
    void OnProgress(unsigned char percent) override { m_progress.push_back(percent); }
    void OnComplete(int status) override { m_status = status; }

    std::vector<int> m_progress;
    std::optional<int> m_status;
};

class GeneratorFixture : public EngineFixture {
protected:
    using Selection = CalloutGenerator::Selection;
    using EventPtr = du::SmartPtr<RecordingEvent>;
    using OperationPtr = du::SmartPtr<zrk::Operation>;

    static Selection Select(const std::vector<Part>& parts);
    /// Creates the callouts for the parts on this thread.
    void Create(const std::vector<Part>& parts);
    /// The callouts of the scene, in the order in which they entered it.
    CalloutVec Shown() const;
    /// "leader,leader=text" for each callout of the scene, in the order of the text.
    std::string Dump() const;
    static std::string Describe(const zrannotations::Callout& callout);
    TemplatePtr UseTemplate(std::vector<ContentPtr> contents);
};

}  // namespace zrcallouts
