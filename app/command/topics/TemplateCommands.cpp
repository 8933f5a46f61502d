#include "app/command/topics/TemplateCommands.h"

#include <algorithm>
#include <filesystem>

#include "app/command/Choices.h"
#include "app/command/Listing.h"
#include "app/command/SceneNames.h"
#include "app/command/Session.h"
#include "app/document/TemplateFile.h"
#include "app/document/UserError.h"
#include "app/file/AtomicFile.h"

namespace zrsheet {
namespace {

void Define(Session& session, Arguments& arguments) {
    const std::string name = arguments.Take("NAME");
    const std::string text = arguments.Take("TEXT");
    arguments.ExpectEnd();
    if (name.empty()) throw UserError(arguments.WithUsage("the name is empty"));
    if (session.Doc().Templates().Get(name)) {
        throw UserError("there is a template '" + name + "' already; change it with 'template edit'");
    }
    session.Doc().DefineTemplate({name, text, {}});
}

void Edit(Session& session, Arguments& arguments) {
    const std::string name = arguments.Take("TEMPLATE");
    const std::string text = arguments.Take("TEXT");
    arguments.ExpectEnd();
    if (!session.Doc().Templates().Get(name)) {
        throw UserError("there is no template '" + name + "'; 'template define' makes one");
    }
    session.Doc().DefineTemplate({name, text, {}});
}

void Use(Session& session, Arguments& arguments) {
    Document& document = session.Doc();
    const std::string name = arguments.Take("TEMPLATE");
    const Names callouts = arguments.IsEmpty() ? Names() : arguments.TakeSome("CALLOUT");
    if (callouts.empty()) {
        document.UseTemplate(name);
        return;
    }
    static_cast<void>(document.DefinedTemplate(name));
    for (auto callout : FindCallouts(document, callouts)) {
        auto state = callout->CaptureState();
        state.definitionId = name;
        callout->RestoreState(state);
        document.Engine()->CheckForTypeUpdate(callout);
        document.Engine()->SetCalloutText(callout);
    }
}

void Remove(Session& session, Arguments& arguments) {
    const std::string name = arguments.Take("TEMPLATE");
    arguments.ExpectEnd();
    session.Doc().RemoveTemplate(name);
}

void Load(Session& session, Arguments& arguments) {
    const std::filesystem::path file =
        arguments.IsEmpty() ? ReadyTemplates() : std::filesystem::path(arguments.Take("FILE"));
    arguments.ExpectEnd();
    for (const NamedTemplate& each : ReadTemplates(file)) session.Doc().DefineTemplate(each);
}

void Save(Session& session, Arguments& arguments) {
    const std::string file = arguments.Take("FILE");
    arguments.ExpectEnd();
    WriteFileAtomically(file, TemplatesText(session.Doc().Templates().All()));
}

void Translate(Session& session, Arguments& arguments) {
    const std::string name = arguments.Take("TEMPLATE");
    const std::string language = arguments.TakeOneOf(ChoicesOf("LANGUAGE"));
    const std::string text = arguments.Take("TEXT");
    arguments.ExpectEnd();
    const auto entry = session.Doc().DefinedTemplate(name);
    auto translations = entry.translations;
    translations[language] = text;
    session.Doc().DefineTemplate({name, entry.text, translations});
}

void List(Session& session, Arguments& arguments) {
    arguments.ExpectEnd();
    session.Out() << ListTemplates(session.Doc());
}

}  // namespace

CommandTopic TemplateCommands() {
    return {
        "Templates",
        {{"template define", "NAME TEXT", "make a label template",
          "TEXT says what balloons say: {item}, {quantity} and {tag} of the item, {name} and "
          "{property:NAME} of the part, {parent:NAME} of the assembly above it, {root:NAME} of the "
          "product, {file:NAME} of the model's file (Title), {line} for a new line, and any text around "
          "them.",
          "template define count '{item} ({quantity}x)'", Effect::Changes, "Define Template", Define},
         {"template edit", "TEMPLATE TEXT", "change what a template says",
          "The labels of its callouts follow; its translations go. The template of the beginning is called "
          "'label'.",
          "template edit label 'No. {item}'", Effect::Changes, "Edit Template", Edit},
         {"template use", "TEMPLATE [CALLOUT...]", "choose the template of new callouts, or of these",
          "Ready ones need no definition: number, number-quantity, tag, name, part-number and split.",
          "template use count 3 4", Effect::Changes, "Use Template", Use},
         {"template remove", "TEMPLATE", "remove a template", "Its callouts keep their labels.",
          "template remove count", Effect::Changes, "Remove Template", Remove},
         {"template translate", "TEMPLATE LANGUAGE TEXT", "say in a language what a template says",
          "{0} is the first placeholder of the template's text, {1} the second; their order is free. "
          "Callouts follow the language of the sheet.",
          "template translate count de '{1} von {0}'", Effect::Changes, "Translate Template", Translate},
         {"template load", "[FILE]", "define all templates of a file",
          "The author's own (see TEMPLATES.md), or the ready ones. They take the place of those of the same "
          "name.",
          "template load house.json", Effect::Changes, "Load Templates", Load},
         {"template save", "FILE", "write all templates to a file", "For other illustrations.",
          "template save house.json", Effect::Reads, "", Save},
         {"template list", "", "list the templates", "", "template list", Effect::Reads, "", List}}};
}

}  // namespace zrsheet
