#include "tests/app/project/SampleProject.h"

#include <string>

namespace zrsheet::test {
namespace {

constexpr ProjectMatrix kMoved{1, 0, 0, 0, 0, 0.1, 0, 0, 0, 0, 1, 0, -0.0, 1e-300, 1.0 / 3.0, 1};

ProjectCallout Balloon() {
    ProjectCallout callout;
    callout.type = ProjectCalloutType::Assembly;
    callout.labelTemplate = "label";
    callout.kit = true;
    callout.placed = true;
    callout.item = 2;
    callout.text = "2 \"x\"\n\u00e9";
    callout.localizedText = "zwei";
    callout.legacyText = "";
    callout.localizable = {"two", {{"de", "zwei"}, {"fr", "deux"}}, true, true};
    callout.position = {0.1, 1.7976931348623157e308, 5e-324};
    callout.pixel = {3.5, 4, 0.25};
    callout.anchorCalculated = true;
    callout.view = 1;
    callout.style = {zrannotations::BalloonShape::None, zrannotations::Terminator::Auto, 16.0, 0.5};
    callout.leaders = {{"/Pump/Screw:2", "", {1, 2, 3}, "/Pump", 1, true, true},
                       {"arrow-1", "arrow-1", {0, 0, 0}, "/", 0, false, false},
                       {"/Pump/Gone", "", {0, 0, 0}, "", 0, false, false}};
    return callout;
}

ProjectCallout Free() {
    ProjectCallout callout;
    callout.type = ProjectCalloutType::Free;
    callout.custom = true;
    callout.text = "Grease here";
    callout.position = {7, 8, 9};
    return callout;
}

}  // namespace

ProjectData SampleProject() {
    ProjectData project;
    project.model = {"models/pump.glb", 123456789012, std::string(64, 'a')};
    project.instances = {
        {"/Pump", "Pump", ""}, {"/Pump/Screw", "Screw", "12ab"}, {"/Pump/Screw:2", "Screw", "12ab"}};
    project.orphans = {{"/Pump/Gone", "Gone", "34cd"}};
    project.page = {800, 600};
    project.camera = {{2, 0, 0, 0, 0, 0, 0.5, 0, 0, 2, 0, 0, 400, 300, 0.5, 1}, 799, 599};
    project.background = {{0.1, 0.2, 0.3, 1}, {0.4, 0.5, 0.6, 1}, {0.7, 0.8, 0.9, 0.5}};
    project.picture = {PictureMode::Both, true, 0.35};
    project.paper = {PaperSize::A3,  PaperTurn::Portrait, ListPlace::Page,
                     "Pump, opened", "2031-02-03",        {"item", "property:Material"}};
    project.settings = {"ja", LeaderChoice::PerInstance, true, "label"};
    project.style.shape = zrannotations::BalloonShape::Hexagon;
    project.numbering = {true, "P", "-", 10, 5, 3, true, {{0, 20}, {1, 4}}};
    project.templates = {{"label", "{item} ({quantity}x)", {{"de", "{1} mal {0}"}}}, {"name", "{name}"}};
    project.parts = {{"/Pump/Screw", true, true, true, true, kMoved, {{"Name", "Bolt"}, {"Tag", ""}}},
                     {"/Pump/Gone", true, false, false, false, std::nullopt, {}}};
    project.symbols = {{"arrow-1", "arrow", kMoved, true}};
    project.insets = {{1, {1, 2, 0}, {3, 4, 0}, 80.5, 3, false}};
    project.items = {{1, "", 1, 0, true, false, true, "", {"/Pump"}},
                     {2, "", 1, 1, true, false, false, "T-7", {"/Pump/Screw", "/Pump/Gone"}},
                     {5, "Oil", 0, 1, false, true, false, "", {"/Pump/Screw:2"}}};
    ProjectCallout combined = Balloon();
    combined.members = {Balloon(), Free()};
    project.callouts = {Balloon(), Free(), combined};
    project.savedCallouts = {Free()};
    return project;
}

}  // namespace zrsheet::test
