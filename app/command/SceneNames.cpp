#include "app/command/SceneNames.h"

#include <algorithm>
#include <set>

#include "app/document/UserError.h"

namespace zrsheet {
namespace {

constexpr const char* kInset = "inset-";
constexpr const char* kSymbol = "symbol-";

UserError NoPart(const std::string& pattern) {
    return UserError(
        "no part matches '" + pattern +
        "'; patterns are names or paths such as 'Bolt*' or '/Pump/*', and 'list parts' shows them");
}

}  // namespace

std::vector<Document::ShapePtr> Symbols(const Document& document) {
    std::vector<Document::ShapePtr> symbols;
    for (const auto& shape : document.Scene()->GetShapeInstances()) {
        du::SmartPtr<zrk::Instance> instance;
        shape->GetInstance(instance);
        if (instance->Is3dSymbol()) symbols.push_back(shape);
    }
    return symbols;
}

std::string InsetName(std::size_t index) { return kInset + std::to_string(index + 1); }

std::string SymbolName(const zrk::ShapeInstance& symbol) {
    du::SmartPtr<zrk::Instance> instance;
    symbol.GetInstance(instance);
    du::SmartPtr<zrk::ComponentInstance> component;
    instance->GetComponentInstance(component);
    du::Symbol name;
    component->GetID(name);
    return name.Text();
}

std::string NewSymbolName(const Document& document) {
    std::set<std::string> taken;
    for (const auto& symbol : Symbols(document)) taken.insert(SymbolName(*symbol));
    std::size_t number = 1;
    while (taken.contains(kSymbol + std::to_string(number))) ++number;
    return kSymbol + std::to_string(number);
}

std::string ItemLabel(const Document& document, unsigned id) {
    std::string label;
    bool isCustom = false;
    document.Items()->GetLabel(id, label, isCustom);
    return label;
}

InsetPtr FindInset(const Document& document, const std::string& name) {
    const auto insets = document.Insets();
    for (std::size_t i = 0; i < insets.size(); ++i) {
        if (name == InsetName(i)) return insets[i];
    }
    throw UserError("'" + name + "' is no inset; 'list insets' shows them");
}

Document::ShapePtr FindSymbol(const Document& document, const std::string& name) {
    for (const auto& symbol : Symbols(document)) {
        if (name == SymbolName(*symbol)) return symbol;
    }
    throw UserError("'" + name + "' is no symbol; 'list symbols' shows them");
}

unsigned FindItem(const Document& document, const std::string& name) {
    for (const unsigned id : document.Items()->GetItemIds()) {
        if (ItemLabel(document, id) == name || name == "#" + std::to_string(id)) return id;
    }
    throw UserError("'" + name + "' is no item; 'list items' shows their labels and ids");
}

std::vector<Document::CalloutPtr> FindCallouts(const Document& document, const Names& names) {
    std::vector<Document::CalloutPtr> found;
    for (const std::string& name : names) {
        const auto called = document.FindCallouts(name);
        if (called.empty()) {
            throw UserError("no callout is called '" + name +
                            "'; 'list callouts' shows their ids and labels");
        }
        for (const auto& callout : called) {
            if (std::find(found.begin(), found.end(), callout) == found.end()) found.push_back(callout);
        }
    }
    return found;
}

Document::CalloutPtr FindCallout(const Document& document, const std::string& name) {
    const auto found = FindCallouts(document, {name});
    if (found.size() == 1) return found.front();
    throw UserError("'" + name + "' calls " + std::to_string(found.size()) +
                    " callouts; name one by its id, which 'list callouts' shows");
}

std::vector<Document::SbomPtr> FindInstances(const Document& document, const Names& patterns) {
    for (const std::string& pattern : patterns) {
        if (document.FindInstances({pattern}).empty()) throw NoPart(pattern);
    }
    return document.FindInstances(patterns);
}

std::vector<Document::SbomPtr> Topmost(const std::vector<Document::SbomPtr>& found) {
    std::vector<Document::SbomPtr> topmost;
    const std::set<Document::SbomPtr> all(found.begin(), found.end());
    for (const auto& instance : found) {
        Document::SbomPtr parent;
        instance->GetParent(parent);
        if (!all.contains(parent)) topmost.push_back(instance);
    }
    return topmost;
}

std::vector<Document::SbomPtr> FindAssemblies(const Document& document, const Names& patterns,
                                              const std::string& what) {
    auto assemblies = Topmost(FindInstances(document, patterns));
    std::erase_if(assemblies, [](const auto& instance) { return !instance->HasChildren(); });
    if (assemblies.empty()) throw UserError("these are parts; a " + what + " is an assembly");
    return assemblies;
}

std::vector<Document::ShapePtr> FindShapes(const Document& document, const Names& patterns) {
    for (const std::string& pattern : patterns) {
        if (document.FindShapes({pattern}).empty()) throw NoPart(pattern);
    }
    return document.FindShapes(patterns);
}

}  // namespace zrsheet
