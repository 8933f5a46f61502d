#include "app/command/topics/ItemCommands.h"

#include <array>

#include "app/command/Listing.h"
#include "app/command/SceneNames.h"
#include "app/command/Session.h"
#include "app/document/ItemEdits.h"
#include "app/document/UserError.h"
#include "app/text/ProgramText.h"

namespace zrsheet {
namespace {

ItemEdits EditsOf(const Document& document) { return {document.ItemList(), *document.Engine()}; }

/// Without assemblies, and without the members of welds, which count as one part.
std::vector<Document::SbomPtr> TakeParts(const Document& document, Arguments& arguments) {
    auto parts = FindInstances(document, arguments.TakeSome("PART"));
    std::erase_if(parts, [](const Document::SbomPtr& part) {
        return part->IsWeldMember() || (part->HasChildren() && !part->IsWeld());
    });
    return parts;
}

void Add(Session& session, Arguments& arguments) {
    Document& document = session.Doc();
    const std::string label = arguments.TakeOption("label").value_or("");
    EditsOf(document).ExpectFree(label);
    auto parts = TakeParts(document, arguments);
    std::erase_if(parts, [](const Document::SbomPtr& part) { return part->CarriesItem(); });
    if (parts.empty())
        throw UserError("all of these parts are items already; 'item join' moves them to another");
    const unsigned id = document.ItemList().AddItem(parts, label, true, true, nullptr);
    session.Out() << Text("item-parts", {{"label", ItemLabel(document, id)}, {"parts", parts.size()}})
                  << "\n";
}

void Remove(Session& session, Arguments& arguments) {
    Document& document = session.Doc();
    std::vector<unsigned> ids;
    for (const std::string& name : arguments.TakeSome("ITEM")) ids.push_back(FindItem(document, name));
    for (const unsigned id : ids) EditsOf(document).Delete(id);
}

void Rename(Session& session, Arguments& arguments) {
    Document& document = session.Doc();
    const unsigned id = FindItem(document, arguments.Take("ITEM"));
    const std::string label = arguments.Take("LABEL");
    arguments.ExpectEnd();
    EditsOf(document).Relabel(id, label);
}

void Tag(Session& session, Arguments& arguments) {
    Document& document = session.Doc();
    const unsigned id = FindItem(document, arguments.Take("ITEM"));
    const std::string tag = arguments.Take("TAG");
    arguments.ExpectEnd();
    document.ItemList().SetTag(id, tag, nullptr);
}

/// An item of no parts says nothing in the list.
void RemoveEmptyItems(const Document& document) {
    for (const unsigned id : document.Items()->GetItemIds()) {
        if (document.Items()->GetOrderedInstances(id).empty()) EditsOf(document).Delete(id);
    }
}

void Join(Session& session, Arguments& arguments) {
    Document& document = session.Doc();
    const unsigned id = FindItem(document, arguments.Take("ITEM"));
    EditsOf(document).Join(id, TakeParts(document, arguments));
    RemoveEmptyItems(document);
}

void Leave(Session& session, Arguments& arguments) {
    Document& document = session.Doc();
    const unsigned id = FindItem(document, arguments.Take("ITEM"));
    EditsOf(document).Leave(id, TakeParts(document, arguments));
    RemoveEmptyItems(document);
}

void Kit(Session& session, Arguments& arguments) {
    static constexpr std::array<std::string_view, 2> kStates{"off", "on"};
    const Document& document = session.Doc();
    const bool isOn = arguments.TakeOneOf(kStates) == "on";
    const auto assemblies = FindAssemblies(document, arguments.TakeSome("PART"), "kit");
    if (isOn) {
        EditsOf(document).MakeKits(assemblies);
    } else {
        EditsOf(document).Unpack(assemblies);
    }
}

void Clear(Session& session, Arguments& arguments) {
    arguments.ExpectEnd();
    EditsOf(session.Doc()).Clear();
}

void List(Session& session, Arguments& arguments) {
    arguments.ExpectEnd();
    session.Out() << ListItems(session.Doc());
}

}  // namespace

CommandTopic ItemCommands() {
    return {
        "Parts list",
        {{"item add", "PART... [label=LABEL]", "make one item of parts that are in none",
          "Without a label it gets the next number.", "item add 'Dowel Pin*' label=A", Effect::Changes,
          "Add Item", Add},
         {"item remove", "ITEM...", "take items off the list, their callouts with them",
          "ITEM is a label, or an id such as '#7'. Combined callouts lose the item only.", "item remove 7",
          Effect::Changes, "Remove Item", Remove},
         {"item rename", "ITEM LABEL", "give an item a label of its own", "\"\" gives it its number again.",
          "item rename 7 7a", Effect::Changes, "Rename Item", Rename},
         {"item tag", "ITEM TAG", "give an item a tag", "", "item tag 7 M10", Effect::Changes, "Tag Item",
          Tag},
         {"item join", "ITEM PART...", "move parts to an item",
          "Its callout gains leaders to them; an item that is left without parts goes.",
          "item join 7 'Washer M10'", Effect::Changes, "Join Item", Join},
         {"item leave", "ITEM PART...", "take parts out of an item", "", "item leave 7 'Washer M10:2'",
          Effect::Changes, "Leave Item", Leave},
         {"item kit", "on|off PART...", "let assemblies be kits",
          "A kit is ordered, numbered and called out as one, and so are all assemblies that are equal to it. "
          "What is in it is listed below it, with quantities but without numbers and callouts of its own, "
          "whatever 'item update' says. off lists its parts as others.",
          "item kit on '/Housing Assembly/Inspection Cover Assembly'", Effect::Changes, "Mark Kit", Kit},
         {"item clear", "", "take everything off the list", "", "item clear", Effect::Changes, "Clear Items",
          Clear},
         {"item list", "", "list the items", "", "item list", Effect::Reads, "", List}}};
}

}  // namespace zrsheet
