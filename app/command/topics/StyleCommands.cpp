#include "app/command/topics/StyleCommands.h"

#include "app/command/Listing.h"
#include "app/command/SceneNames.h"
#include "app/command/Session.h"
#include "app/document/StyleChoices.h"
#include "app/document/UserError.h"

namespace zrsheet {
namespace {

using zrannotations::CalloutStyle;

/// What the options say, and nothing else set.
CalloutStyle TakeStyle(Arguments& arguments) {
    CalloutStyle style;
    if (const auto shape = arguments.TakeOption("shape")) style.shape = ParseShape(*shape);
    if (const auto end = arguments.TakeOption("terminator")) style.terminator = ParseTerminator(*end);
    if (const auto size = arguments.TakeNumberOption("size")) style.fontSize = CheckedFontSize(*size);
    if (const auto line = arguments.TakeNumberOption("line")) style.lineWidth = CheckedLineWidth(*line);
    if (const auto stack = arguments.TakeOption("stack")) style.stacked = ParseStack(*stack);
    return style;
}

CalloutStyle Changed(CalloutStyle style, const CalloutStyle& change) {
    if (change.shape) style.shape = change.shape;
    if (change.terminator) style.terminator = change.terminator;
    if (change.fontSize) style.fontSize = change.fontSize;
    if (change.lineWidth) style.lineWidth = change.lineWidth;
    if (change.stacked) style.stacked = change.stacked;
    return style;
}

void Style(Session& session, Arguments& arguments) {
    Document& document = session.Doc();
    const CalloutStyle change = TakeStyle(arguments);
    if (change == CalloutStyle()) {
        throw UserError(
            arguments.WithUsage("nothing to change; give shape, terminator, size, line or stack"));
    }
    if (arguments.IsEmpty()) {
        document.SetStyle(Changed(document.Style(), change));
        return;
    }
    for (const auto& callout : FindCallouts(document, arguments.TakeSome("CALLOUT")))
        callout->SetStyle(Changed(callout->GetStyle(), change));
}

void Reset(Session& session, Arguments& arguments) {
    Document& document = session.Doc();
    if (arguments.IsEmpty()) {
        document.SetStyle({});
        return;
    }
    for (const auto& callout : FindCallouts(document, arguments.TakeSome("CALLOUT"))) callout->SetStyle({});
}

void List(Session& session, Arguments& arguments) {
    arguments.ExpectEnd();
    session.Out() << ListStyles(session.Doc());
}

}  // namespace

CommandTopic StyleCommands() {
    return {
        "Style",
        {{"style", "[CALLOUT...] [shape=SHAPE] [terminator=TERMINATOR] [size=N] [line=N] [stack=on|off]",
          "choose how callouts look",
          "The named ones, or without names all that have no style of their own. SHAPE of the balloon is "
          "round, hexagon, box, none (underlined text) or split (a line below the first line of the "
          "text); TERMINATOR of leaders is dot, arrow, none or auto, which is an arrow where a leader "
          "ends on an edge or outline and else a dot; size is the text's and line the balloon's line "
          "width, in pixels; stack=on draws combined callouts as balloons on top of each other, which is as "
          "usual where labels have several lines. 'layout' makes room.",
          "style 3 4 shape=hexagon size=16", Effect::Changes, "Change Style", Style},
         {"style reset", "[CALLOUT...]", "let callouts look like the others again",
          "Without names: let all look as in the beginning that have no style of their own.", "style reset 3",
          Effect::Changes, "Reset Style", Reset},
         {"style list", "", "list what was chosen", "", "style list", Effect::Reads, "", List}}};
}

}  // namespace zrsheet
