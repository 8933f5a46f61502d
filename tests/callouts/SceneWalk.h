// Everything that a user can do to a scene of twenty parts, chosen by numbers from outside: by a seed in
// walks that are long, by the bytes of an input in walks that shall become interesting.

#pragma once

#include <functional>
#include <string>
#include <vector>

#include "tests/callouts/EngineFixture.h"

namespace zrcallouts {

class SceneWalk : public EngineFixture {
protected:
    /// `random` gives the next number; it is asked for every choice.
    explicit SceneWalk(std::function<unsigned()> random, Host host = Host::kOwn);

    /// Less than `count`, which is not 0.
    unsigned Below(std::size_t count) { return static_cast<unsigned>(m_random() % count); }
    bool Chance(unsigned oneIn) { return Below(oneIn) == 0; }

    /// Goes to and fro while `goesOn`: acts, undoes, does again, and expects every state to be found again
    /// byte for byte, the first one at the end, and the engine's registry to be right all the time.
    void Walk(const std::function<bool()>& goesOn);

    using OperationPtr = du::SmartPtr<zrk::Operation>;

    /// Does something, or the action of that number, and settles; what it was.
    std::string DoOne(const OperationPtr& operation) { return Do(Below(m_actions.size()), operation); }
    std::string Do(std::size_t action, const OperationPtr& operation);
    std::size_t GetActionCount() const { return m_actions.size(); }
    /// Waits until nothing of the scene is on its way any more.
    virtual void Settle();
    virtual void SwitchLanguage(const OperationPtr& operation);
    /// All that undo has to bring back, once nothing is on its way any more.
    std::string Look();
    /// What is wrong with the engine's registry, "" when nothing is.
    std::string RegistryFault() const;
    /// The engine is a new one.
    void ForgetRegrouping() { m_hasRegrouped = false; }

private:
    struct NamedAction {
        const char* name;
        std::function<void(const OperationPtr&)> act;
    };
    /// A state of the scene, and how it came about.
    struct State {
        std::string dump;
        std::string name;
    };

    void Step();
    void GoOn();
    void GoBack();
    void GoForth();
    /// One to three actions in a transaction, now and then given up. Their names.
    std::string Act(bool& isCommitted);

    double Coordinate() { return static_cast<double>(Below(2000)) / 100.0 - 10.0; }
    dg::DPoint3D AnyPlace(double z) { return {Coordinate(), Coordinate(), z}; }
    template <class T>
    T Pick(const std::vector<T>& choices) {
        return choices.empty() ? T() : choices[Below(choices.size())];
    }
    template <class T>
    std::vector<du::SmartPtr<T>> All() const;
    std::vector<Part> PickParts();
    std::vector<SbomPtr> PickInstances();
    CalloutPtr PickCallout();
    du::SmartPtr<zrk::ShapeInstance> PickShape();
    unsigned PickItem() { return Pick(Items().GetItemIds()); }

    void AddPartActions();
    void AddItemActions();
    void AddCombiningActions();
    void AddTextActions();
    void AddCalloutActions();
    void AddViewActions();
    void AddAction(const char* name, std::function<void(const OperationPtr&)> act);
    void DoOneOf(const std::vector<std::function<void()>>& choices) { choices[Below(choices.size())](); }

    std::function<unsigned()> m_random;
    std::vector<NamedAction> m_actions;
    std::vector<Part> m_parts;
    std::vector<TemplatePtr> m_templates;
    std::vector<State> m_states;  // by the number of entries that lead to them
    std::size_t m_now = 0;        // the present one
    std::vector<Part> m_symbols;  // in the scene or removed from it
    bool m_hasRegrouped = false;  // callouts may stay filed under parts that left their item
};

}  // namespace zrcallouts
