#include "app/export/ReportExporter.h"

#include <cmath>
#include <nlohmann/json.hpp>

#include "app/document/StyleChoices.h"
#include "app/file/AtomicFile.h"
#include "app/sheet/SheetQuality.h"

namespace zrsheet {
namespace {

using Json = nlohmann::ordered_json;

// Adding zero makes a plain 0 of -0.
double Rounded(double value) { return std::round(value * 100.0) / 100.0 + 0.0; }

Json PointJson(const PagePoint& point) { return Json::array({Rounded(point.x), Rounded(point.y)}); }

Json BoxJson(const PageBox& box) {
    return Json::array({Rounded(box.x0), Rounded(box.y0), Rounded(box.x1), Rounded(box.y1)});
}

Json CalloutJson(const SheetCallout& callout) {
    Json json{{"id", callout.id}};
    if (callout.hasItem) json["itemId"] = callout.itemId;
    json["label"] = callout.label;
    json["box"] = BoxJson(callout.box);
    if (!callout.stack.empty()) json["stack"] = callout.stack;
    json["style"] = {{"shape", WordOf(callout.look.shape)},
                     {"fontSize", Rounded(callout.look.fontSize)},
                     {"lineWidth", Rounded(callout.look.lineWidth)}};
    json["leaders"] = Json::array();
    for (const SheetLeader& leader : callout.leaders) {
        json["leaders"].push_back({{"anchor", PointJson(leader.anchor)},
                                   {"end", PointJson(leader.end)},
                                   {"instance", leader.instance},
                                   {"visible", leader.visible},
                                   {"terminator", WordOf(leader.terminator)}});
    }
    return json;
}

Json InsetJson(const SheetInset& inset) {
    return {
        {"id", inset.id},
        {"centre", PointJson(inset.glass.centre)},
        {"radius", Rounded(inset.glass.radius)},
        {"source", {{"centre", PointJson(inset.source.centre)}, {"radius", Rounded(inset.source.radius)}}},
        {"factor", Rounded(inset.factor)}};
}

Json ItemJson(const SheetItem& item) {
    return {{"itemId", item.itemId},
            {"label", item.label},
            {"quantity", item.quantity},
            {"name", item.name},
            {"instances", item.instances}};
}

Json SecondsJson(const SheetSeconds& seconds) {
    return {{"load", Rounded(seconds.load)},
            {"create", Rounded(seconds.create)},
            {"pick", Rounded(seconds.pick)},
            {"render", Rounded(seconds.render)},
            {"write", Rounded(seconds.write)}};
}

Json ModelJson(const SheetModel& model) {
    return {{"box", BoxJson(model.box)},
            {"parts", model.parts},
            {"instances", model.instances},
            {"triangles", model.triangles}};
}

Json QualityJson(const Sheet& sheet) {
    const zrcallouts::LayoutQuality& quality = sheet.quality;
    Json json{{"faults", Json::array()},
              {"complete", quality.isComplete},
              {"leaderLength", Rounded(quality.length)},
              {"shortestLength", Rounded(quality.shortest)},
              {"ratio", std::round(quality.Ratio() * 1e4) / 1e4},
              {"meanDisplacement", Rounded(quality.displacement)}};
    for (const auto kind : kFaultKinds) json["counts"][std::string(WordFor(kind))] = quality.Count(kind);
    for (const auto& fault : quality.faults) {
        Json entry{{"kind", WordFor(fault.kind)}, {"callout", sheet.callouts[fault.label].id}};
        if (fault.other != fault.label) entry["other"] = sheet.callouts[fault.other].id;
        json["faults"].push_back(std::move(entry));
    }
    return json;
}

std::string TextOf(const Json& json) {
    return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace

std::string QualityText(const Sheet& sheet) {
    Json json{{"schema", 1}};
    json.update(QualityJson(sheet));
    return TextOf(json);
}

std::string ReportText(const Sheet& sheet) {
    Json report{{"schema", 1},
                {"page", {{"width", Rounded(sheet.width)}, {"height", Rounded(sheet.height)}}},
                {"model", ModelJson(sheet.model)},
                {"callouts", Json::array()},
                {"insets", Json::array()},
                {"items", Json::array()}};
    for (const SheetCallout& callout : sheet.callouts) report["callouts"].push_back(CalloutJson(callout));
    for (const SheetInset& inset : sheet.insets) report["insets"].push_back(InsetJson(inset));
    for (const SheetItem& item : sheet.items) report["items"].push_back(ItemJson(item));
    report["quality"] = QualityJson(sheet);
    report["seconds"] = SecondsJson(sheet.seconds);
    return TextOf(report);
}

void ExportReport(const Sheet& sheet, const std::filesystem::path& path) {
    WriteFileAtomically(path, ReportText(sheet));
}

}  // namespace zrsheet
