#include "app/command/topics/TemplateCommands.h"

#include <algorithm>

#include "app/command/Listing.h"
#include "app/command/SceneNames.h"
#include "app/command/Session.h"
#include "app/document/UserError.h"

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
    session.Doc().DefineTemplate(name, text);
}

void Edit(Session& session, Arguments& arguments) {
    const std::string name = arguments.Take("TEMPLATE");
    const std::string text = arguments.Take("TEXT");
    arguments.ExpectEnd();
    if (!session.Doc().Templates().Get(name)) {
        throw UserError("there is no template '" + name + "'; 'template define' makes one");
    }
    session.Doc().DefineTemplate(name, text);
}

void Use(Session& session, Arguments& arguments) {
    Document& document = session.Doc();
    const std::string name = arguments.Take("TEMPLATE");
    const Names callouts = arguments.IsEmpty() ? Names() : arguments.TakeSome("CALLOUT");
    if (callouts.empty()) {
        document.UseTemplate(name);
        return;
    }
    if (!document.Templates().Get(name)) {
        throw UserError("there is no template '" + name + "'; 'template define' makes one");
    }
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

void List(Session& session, Arguments& arguments) {
    arguments.ExpectEnd();
    session.Out() << ListTemplates(session.Doc());
}

}  // namespace

CommandTopic TemplateCommands() {
    return {"Templates",
            {{"template define", "NAME TEXT", "make a label template",
              "TEXT says what balloons say: {item}, {quantity}, {tag}, {name}, {property:NAME}, and any text "
              "around "
              "them.",
              "template define count '{item} ({quantity}x)'", Effect::Changes, "Define Template", Define},
             {"template edit", "TEMPLATE TEXT", "change what a template says",
              "The labels of its callouts follow. The template of the beginning is called 'label'.",
              "template edit label 'No. {item}'", Effect::Changes, "Edit Template", Edit},
             {"template use", "TEMPLATE [CALLOUT...]", "choose the template of new callouts, or of these", "",
              "template use count 3 4", Effect::Changes, "Use Template", Use},
             {"template remove", "TEMPLATE", "remove a template", "Its callouts keep their labels.",
              "template remove count", Effect::Changes, "Remove Template", Remove},
             {"template list", "", "list the templates", "", "template list", Effect::Reads, "", List}}};
}

}  // namespace zrsheet
