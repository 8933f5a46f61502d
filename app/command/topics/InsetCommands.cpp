#include "app/command/topics/InsetCommands.h"

#include "app/command/SceneNames.h"
#include "app/command/Session.h"
#include "app/document/UserError.h"
#include "app/text/ProgramText.h"
#include "zrk/annotation/AnnoSet.h"
#include "zrk/object/Checked.h"

namespace zrsheet {
namespace {

constexpr double kUsualRadius = 90.0;
constexpr double kUsualFactor = 2.0;
constexpr double kMostFactor = 1000.0;

dg::DPoint3D Pixel(const PagePoint& point) { return {point.x, point.y, 0.0}; }

double Checked(const Arguments& arguments, double value, double most, const char* what) {
    if (value > 0.0 && value <= most) return value;
    throw UserError(arguments.WithUsage("a " + std::string(what) + " is above 0 and up to " +
                                        std::to_string(static_cast<int>(most))));
}

double CheckedRadius(const Arguments& arguments, double radius) {
    return Checked(arguments, radius, 10000.0, "radius");
}

double CheckedFactor(const Arguments& arguments, double factor) {
    return Checked(arguments, factor, kMostFactor, "factor");
}

du::SmartPtr<zrk::AnnoSet> AnnoSetOf(const Document& document) {
    du::SmartPtr<zrk::AnnoSet> annoSet;
    document.Scene()->GetAnnoSet(annoSet);
    return annoSet;
}

void Add(Session& session, Arguments& arguments) {
    Document& document = session.Doc();
    zrannotations::Inset::Glass glass;
    glass.radius = CheckedRadius(arguments, arguments.TakeNumberOption("radius").value_or(kUsualRadius));
    glass.factor = static_cast<float>(
        CheckedFactor(arguments, arguments.TakeNumberOption("factor").value_or(kUsualFactor)));
    arguments.ExpectKeyword("of");
    glass.source = Pixel(arguments.TakePoint("X,Y"));
    arguments.ExpectKeyword("at");
    glass.centre = Pixel(arguments.TakePoint("X,Y"));
    arguments.ExpectEnd();
    AnnoSetOf(document)->AddAnnotationToSet(
        InsetPtr(zrk::Checked(new zrannotations::Inset(document.View(), glass))), nullptr);
    session.Out() << Text("added", {{"name", InsetName(document.Insets().size() - 1)}}) << "\n";
}

InsetPtr TakeInset(const Document& document, Arguments& arguments) {
    return FindInset(document, arguments.Take("INSET"));
}

void Move(Session& session, Arguments& arguments) {
    const InsetPtr inset = TakeInset(session.Doc(), arguments);
    const bool isTo = arguments.TakeKeyword("to");
    if (!isTo) arguments.ExpectKeyword("by");
    const dg::DPoint3D given = Pixel(arguments.TakePoint("X,Y"));
    arguments.ExpectEnd();
    const dg::DVec3 by = isTo ? given - inset->GetMagPixelPosition() : given - dg::DPoint3D();
    inset->Displace(by, false);
}

void Aim(Session& session, Arguments& arguments) {
    const InsetPtr inset = TakeInset(session.Doc(), arguments);
    arguments.ExpectKeyword("at");
    const dg::DPoint3D source = Pixel(arguments.TakePoint("X,Y"));
    arguments.ExpectEnd();
    inset->SetSource(source);
}

void Resize(Session& session, Arguments& arguments) {
    const InsetPtr inset = TakeInset(session.Doc(), arguments);
    const double radius = CheckedRadius(arguments, arguments.TakeNumber("RADIUS"));
    arguments.ExpectEnd();
    inset->SetRadius(radius);
}

void Factor(Session& session, Arguments& arguments) {
    const InsetPtr inset = TakeInset(session.Doc(), arguments);
    const double factor = CheckedFactor(arguments, arguments.TakeNumber("FACTOR"));
    arguments.ExpectEnd();
    inset->SetFactor(static_cast<float>(factor), false);
}

void Show(Session& session, Arguments& arguments) {
    const InsetPtr inset = TakeInset(session.Doc(), arguments);
    arguments.ExpectEnd();
    inset->SetVisible(true);
}

void Hide(Session& session, Arguments& arguments) {
    const InsetPtr inset = TakeInset(session.Doc(), arguments);
    arguments.ExpectEnd();
    inset->SetVisible(false);
}

/// Null: to the main picture. Leaders show with what they lead to.
void Lead(const Document::CalloutPtr& callout, const InsetPtr& inset) {
    auto state = callout->CaptureState();
    for (auto& leader : state.leaders) {
        leader.inset = inset;
        leader.isHidden = (inset && !inset->IsVisible()) || (leader.part && !leader.part->IsVisible());
    }
    callout->RestoreState(state);
}

void Attach(Session& session, Arguments& arguments) {
    Document& document = session.Doc();
    const InsetPtr inset = TakeInset(document, arguments);
    for (const auto& callout : FindCallouts(document, arguments.TakeSome("CALLOUT"))) Lead(callout, inset);
}

void Remove(Session& session, Arguments& arguments) {
    Document& document = session.Doc();
    const InsetPtr inset = TakeInset(document, arguments);
    arguments.ExpectEnd();
    for (const auto& callout : document.Engine()->SnapshotInset(inset)) Lead(callout, nullptr);
    AnnoSetOf(document)->RemoveAnnotationFromSet(inset, nullptr);
}

}  // namespace

CommandTopic InsetCommands() {
    return {"Insets",
            {{"inset add", "of X,Y at X,Y [radius=R] [factor=F]", "put a magnifying glass over the picture",
              "It shows what lies around the first pixel in a disc around the second one. Insets are called "
              "inset-1, inset-2 ...",
              "inset add of 600,420 at 180,160 radius=100 factor=3", Effect::Changes, "Add Inset", Add},
             {"inset move", "INSET to|by X,Y", "move a glass, which goes on showing the same", "",
              "inset move inset-1 by 0,40", Effect::Changes, "Move Inset", Move},
             {"inset aim", "INSET at X,Y", "let a glass show what lies around another pixel", "",
              "inset aim inset-1 at 640,430", Effect::Changes, "Aim Inset", Aim},
             {"inset resize", "INSET RADIUS", "give a glass another radius, in pixels", "",
              "inset resize inset-1 120", Effect::Changes, "Resize Inset", Resize},
             {"inset factor", "INSET FACTOR", "let a glass magnify more or less", "",
              "inset factor inset-1 2.5", Effect::Changes, "Magnify Inset", Factor},
             {"inset show", "INSET", "show a hidden glass", "", "inset show inset-1", Effect::Changes,
              "Show Inset", Show},
             {"inset hide", "INSET", "hide a glass and the callouts that lead into it", "",
              "inset hide inset-1", Effect::Changes, "Hide Inset", Hide},
             {"inset attach", "INSET CALLOUT...", "let callouts lead into a glass",
              "Their leaders end where the glass shows their parts.", "inset attach inset-1 7",
              Effect::Changes, "Attach to Inset", Attach},
             {"inset remove", "INSET", "take a glass away", "Its callouts lead to the main picture again.",
              "inset remove inset-1", Effect::Changes, "Remove Inset", Remove}}};
}

}  // namespace zrsheet
