#include "app/command/SceneNames.h"

#include <algorithm>

#include "app/document/UserError.h"

namespace zrsheet {
namespace {

constexpr const char* kInset = "inset-";
constexpr const char* kSymbol = "symbol-";

template <class Thing>
Thing FindCounted(const std::vector<Thing>& things, const std::string& name, const std::string& prefix) {
    for (std::size_t i = 0; i < things.size(); ++i) {
        if (name == prefix + std::to_string(i + 1)) return things[i];
    }
    const std::string kind = prefix.substr(0, prefix.size() - 1);
    throw UserError("'" + name + "' is no " + kind + "; 'list " + kind + "s' shows them");
}

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

std::string SymbolName(std::size_t index) { return kSymbol + std::to_string(index + 1); }

std::string ItemLabel(const Document& document, unsigned id) {
    std::string label;
    bool isCustom = false;
    document.Items()->GetLabel(id, label, isCustom);
    return label;
}

InsetPtr FindInset(const Document& document, const std::string& name) {
    return FindCounted(document.Insets(), name, kInset);
}

Document::ShapePtr FindSymbol(const Document& document, const std::string& name) {
    return FindCounted(Symbols(document), name, kSymbol);
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

std::vector<Document::ShapePtr> FindShapes(const Document& document, const Names& patterns) {
    for (const std::string& pattern : patterns) {
        if (document.FindShapes({pattern}).empty()) throw NoPart(pattern);
    }
    return document.FindShapes(patterns);
}

}  // namespace zrsheet
