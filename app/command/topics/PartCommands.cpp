#include "app/command/topics/PartCommands.h"

#include <array>

#include "app/command/SceneNames.h"
#include "app/command/Session.h"
#include "app/document/ItemEdits.h"
#include "app/document/UserError.h"
#include "zrk/operation/History.h"
#include "zrk/world/World.h"

namespace zrsheet {
namespace {

void Select(Session& session, Arguments& arguments) {
    Names patterns;
    if (!arguments.TakeKeyword("all")) {
        patterns = arguments.TakeSome("PART");
        static_cast<void>(FindInstances(session.Doc(), patterns));
    }
    arguments.ExpectEnd();
    session.Select(std::move(patterns));
}

void SetVisible(Session& session, Arguments& arguments, bool isVisible) {
    Document& document = session.Doc();
    const auto shapes = arguments.TakeKeyword("all") ? document.FindShapes({})
                                                     : FindShapes(document, arguments.TakeSome("PART"));
    arguments.ExpectEnd();
    for (const auto& shape : shapes) document.Scene()->SetVisible(shape, isVisible);
}

void Hide(Session& session, Arguments& arguments) { SetVisible(session, arguments, false); }

void Show(Session& session, Arguments& arguments) { SetVisible(session, arguments, true); }

void Move(Session& session, Arguments& arguments) {
    Document& document = session.Doc();
    const Names patterns = arguments.TakeSome("PART", {"by"});
    arguments.ExpectKeyword("by");
    const dg::DVec3 by = arguments.TakeVector("X,Y,Z");
    arguments.ExpectEnd();
    const auto shapes = FindShapes(document, patterns);
    for (const auto& shape : shapes) {
        dg::Location location;
        shape->GetLocation(location);
        location.SetPos(location.GetPos() + by);
        document.Scene()->SetLocation(shape, location);
    }
}

void Remove(Session& session, Arguments& arguments) {
    Document& document = session.Doc();
    for (const auto& shape : FindShapes(document, arguments.TakeSome("PART"))) {
        document.Scene()->RemoveShapeInstance(shape);
    }
}

void Rename(Session& session, Arguments& arguments) {
    Document& document = session.Doc();
    const Names patterns = arguments.TakeSome("PART", {"to"});
    arguments.ExpectKeyword("to");
    const std::string name = arguments.Take("NAME");
    arguments.ExpectEnd();
    const auto found = FindInstances(document, patterns);
    if (name.empty()) throw UserError(arguments.WithUsage("the name is empty"));
    std::vector<zrk::BaseTree::PropertyEdit> edits;
    for (const auto& instance : Topmost(found)) {
        edits.push_back({instance, du::Symbol::EMPTY, du::Symbol("Name"), du::Symbol(name)});
    }
    zrk::World::GetWorld()->GetTree()->EditProperties(edits,
                                                      document.Scene()->GetHistory().GetOpenOperation());
}

void Weld(Session& session, Arguments& arguments) {
    static constexpr std::array<std::string_view, 2> kStates{"off", "on"};
    Document& document = session.Doc();
    const bool isOn = arguments.TakeOneOf(kStates) == "on";
    const auto assemblies = FindAssemblies(document, arguments.TakeSome("PART"), "weld");
    ItemEdits edits(document.ItemList(), *document.Engine());
    if (isOn) {
        edits.Weld(assemblies);
    } else {
        edits.Unweld(assemblies);
    }
}

}  // namespace

CommandTopic PartCommands() {
    return {
        "Parts",
        {{"select", "PART...|all", "choose the parts that 'create' takes when it is given none",
          "PART is a name or, with a slash, a path; * stands for any characters, ? for one, and an assembly "
          "means all in it.",
          "select '/Housing Assembly' 'Hex Bolt*'", Effect::Reads, "", Select},
         {"hide", "PART...|all", "hide parts", "Leaders to them go with them.", "hide 'Upper Housing'",
          Effect::Changes, "Hide Part", Hide},
         {"show", "PART...|all", "show hidden parts", "", "show all", Effect::Changes, "Show Part", Show},
         {"move", "PART... by X,Y,Z", "move parts",
          "In the model's own unit and axes, Y up, as glTF has them: metres. Callouts follow.",
          "move 'Hex Bolt*' by 0,0.05,0", Effect::Changes, "Move Part", Move},
         {"remove", "PART...", "take parts out of the scene", "Their places in the parts list stay.",
          "remove 'Drain Plug'", Effect::Changes, "Remove Part", Remove},
         {"rename", "PART... to NAME", "give parts another name in the parts list",
          "Labels that show names follow.", "rename 'Hex Bolt M6*' to 'Screw M6'", Effect::Changes,
          "Rename Part", Rename},
         {"weld", "on|off PART...", "let assemblies count as one part each",
          "A weld is ordered, counted and called out as one part: its parts leave the list with their "
          "leaders, and "
          "equal welds share an item. 'create' calls it out. off lists its parts again.",
          "weld on '/Housing Assembly/Inspection Cover Assembly'", Effect::Changes, "Mark Weld", Weld}}};
}

}  // namespace zrsheet
