#include "app/command/Listing.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "app/command/LabelPlace.h"
#include "app/command/TextTable.h"
#include "app/document/CalloutIds.h"
#include "app/document/StyleChoices.h"
#include "app/sheet/SheetQuality.h"
#include "app/text/ProgramText.h"

namespace zrsheet {
namespace {

std::string Rounded(double value, int digits) {
    const double step = std::pow(10.0, digits);
    const double rounded = std::round(value * step) / step + 0.0;  // adding zero makes a plain 0 of -0
    char text[40];
    std::snprintf(text, sizeof text, "%.*f", digits, rounded == 0.0 ? 0.0 : rounded);
    std::string shortest(text);
    if (digits > 0) shortest.erase(shortest.find_last_not_of('0') + 1);
    if (shortest.back() == '.') shortest.pop_back();
    return shortest;
}

/// To the pixel: labels are found by eye.
std::string PixelText(double x, double y) { return Rounded(x, 0) + "," + Rounded(y, 0); }

std::string PlaceText(const zrk::ShapeInstance& shape) {
    constexpr int kDigits = 5;
    dg::Location location;
    shape.GetLocation(location);
    const dg::DPoint3D& place = location.GetPos();
    return Rounded(place.x, kDigits) + "," + Rounded(place.y, kDigits) + "," + Rounded(place.z, kDigits);
}

/// The lines of a label beside each other.
std::string InOneLine(std::string label) {
    std::replace(label.begin(), label.end(), '\n', '/');
    return label;
}

TextTable Titled(const std::vector<const char*>& ids) {
    TextTable::Row titles;
    for (const char* id : ids) titles.push_back(Text(id));
    return TextTable(titles);
}

std::string YesOrNo(bool is) { return Text(is ? "yes" : "no"); }

std::string Counted(const TextTable& table, const char* nothing) {
    return table.IsEmpty() ? Text(nothing) + "\n" : table.Text();
}

std::string ItemOf(const Document& document, const Document::SbomPtr& instance) {
    unsigned id = 0;
    return document.Items()->GetItemIdForInstance(instance, id) ? ItemLabel(document, id) : "-";
}

/// How many, and how many of them do not look like the others.
std::string LeadersText(const zrannotations::Callout& callout) {
    const auto drawn = callout.GetDrawnLeaders();
    std::size_t dashed = 0;
    for (const unsigned position : drawn) dashed += callout.IsHiddenAsDashedAtPos(position) ? 1 : 0;
    const std::size_t all = callout.GetLeaderLineCount(true);
    std::string text = std::to_string(drawn.size());
    if (all != drawn.size()) text = Text("leaders-some", {{"drawn", drawn.size()}, {"all", all}});
    if (dashed > 0)
        text = Text("leaders-dashed", {{"leaders", text}, {"drawn", drawn.size()}, {"dashed", dashed}});
    return text;
}

std::string FirstTarget(const zrannotations::Callout& callout) {
    const auto drawn = callout.GetDrawnLeaders();
    return drawn.empty() ? "-" : callout.GetShapeInstanceIdAtPos(drawn.front());
}

std::string IndicationOf(const Document& document, const zrannotations::Callout& callout) {
    unsigned id = 0;
    return callout.GetItemId(id) ? YesOrNo(document.Items()->IsIndicated(id)) : "-";
}

}  // namespace

std::string ListParts(const Document& document, const Names& patterns) {
    TextTable table = Titled({"column-part", "column-item", "column-state", "column-place", "column-name"});
    for (const auto& instance :
         patterns.empty() ? document.FindInstances({}) : FindInstances(document, patterns)) {
        if (instance->HasChildren()) continue;
        Document::ShapePtr shape;
        document.Scene()->GetShapeInstance(instance->GetEbomInstance(), shape);
        const std::string state = Text(!shape ? "removed" : shape->IsVisible() ? "shown" : "hidden");
        table.Add({instance->GetIdentifier().Text(), ItemOf(document, instance), state,
                   shape ? PlaceText(*shape) : "-", ProductModel::NameOf(*instance)});
    }
    return Counted(table, "no-parts");
}

std::string ListItems(const Document& document) {
    TextTable table = Titled(
        {"column-item", "column-id", "column-quantity", "column-tag", "column-indicated", "column-name"});
    const auto& items = document.Items();
    for (const unsigned id : items->GetItemIds()) {
        const auto instances = items->GetOrderedInstances(id);
        const std::string tag = items->GetItemTag(id);
        table.Add({ItemLabel(document, id), "#" + std::to_string(id), std::to_string(items->GetQuantity(id)),
                   tag.empty() ? "-" : tag, YesOrNo(items->IsIndicated(id)),
                   instances.empty() ? "-" : ProductModel::NameOf(*instances.front())});
    }
    return Counted(table, "no-items");
}

std::string ListCallouts(const Document& document) {
    TextTable table = Titled({"column-callout", "column-label", "column-place", "column-leaders",
                              "column-indicated", "column-to"});
    const auto callouts = document.Callouts();
    const auto ids = CalloutIds(callouts);
    for (std::size_t i = 0; i < callouts.size(); ++i) {
        const PagePoint place = LabelPlace(document, callouts[i]);
        table.Add({ids[i], InOneLine(callouts[i]->GetMarkupText().Text()), PixelText(place.x, place.y),
                   LeadersText(*callouts[i]), IndicationOf(document, *callouts[i]),
                   FirstTarget(*callouts[i])});
    }
    return Counted(table, "no-callouts");
}

std::string ListStyles(const Document& document) {
    TextTable table = Titled({"column-callout", "column-shape", "column-terminator", "column-size",
                              "column-line", "column-stack"});
    const auto add = [&table](const std::string& name, const zrannotations::CalloutStyle& style) {
        table.Add({name, style.shape ? std::string(WordOf(*style.shape)) : "-",
                   style.terminator ? std::string(WordOf(*style.terminator)) : "-",
                   style.fontSize ? Rounded(*style.fontSize, 2) : "-",
                   style.lineWidth ? Rounded(*style.lineWidth, 2) : "-",
                   !style.stacked   ? "-"
                   : *style.stacked ? "on"
                                    : "off"});
    };
    add(Text("all-callouts"), document.Style());
    const auto callouts = document.Callouts();
    const auto ids = CalloutIds(callouts);
    for (std::size_t i = 0; i < callouts.size(); ++i) {
        const auto style = callouts[i]->GetStyle();
        if (style != zrannotations::CalloutStyle()) add(ids[i], style);
    }
    return table.Text();
}

std::string ListTemplates(const Document& document) {
    TextTable table = Titled({"column-template", "column-in-use", "column-text"});
    for (const std::string& name : document.Templates().Names()) {
        table.Add({name, YesOrNo(name == document.CurrentTemplate()), document.Templates().Get(name)->text});
    }
    return Counted(table, "no-templates");
}

std::string ListInsets(const Document& document) {
    TextTable table = Titled({"column-inset", "column-of", "column-at", "column-radius", "column-factor",
                              "column-state", "column-callouts"});
    const auto insets = document.Insets();
    for (std::size_t i = 0; i < insets.size(); ++i) {
        const auto glass = insets[i]->GetGlass();
        table.Add({InsetName(i), PixelText(glass.source.x, glass.source.y),
                   PixelText(glass.centre.x, glass.centre.y), Rounded(glass.radius, 2),
                   Rounded(static_cast<double>(glass.factor), 3),
                   Text(insets[i]->IsVisible() ? "shown" : "hidden"),
                   std::to_string(document.Engine()->SnapshotInset(insets[i]).size())});
    }
    return Counted(table, "no-insets");
}

std::string ListSymbols(const Document& document) {
    TextTable table = Titled({"column-symbol", "column-shape", "column-state", "column-place"});
    for (const auto& symbol : Symbols(document)) {
        du::SmartPtr<zrk::Instance> instance;
        symbol->GetInstance(instance);
        table.Add({SymbolName(*symbol), instance->GetComponentNode()->GetObjectName(),
                   Text(symbol->IsVisible() ? "shown" : "hidden"), PlaceText(*symbol)});
    }
    return Counted(table, "no-symbols");
}

std::string ListOrphans(const Project& project) {
    TextTable table = Titled({"column-part"});
    for (const std::string& path : project.Orphans()) table.Add({path});
    return Counted(table, "no-orphans");
}

std::string ListFindings(const std::vector<Finding>& findings) {
    TextTable table = Titled({"column-finding", "column-where", "column-remedy"});
    for (const Finding& finding : findings) {
        table.Add({ProblemOf(finding.kind), finding.where, RemedyFor(finding.kind)});
    }
    return Counted(table, "no-findings");
}

std::string ListQuality(const Sheet& sheet) {
    const zrcallouts::LayoutQuality& quality = sheet.quality;
    TextTable figures = Titled({"column-figure", "column-value"});
    const char* const more = quality.isComplete ? "" : " +";
    for (const auto kind : kFaultKinds) {
        figures.Add({Text(std::string("lint-").append(WordFor(kind))),
                     fmt::format("{}{}", quality.Count(kind), more)});
    }
    figures.Add({Text("lint-length"), fmt::format("{:.0f}", quality.length)});
    figures.Add({Text("lint-ratio"), fmt::format("{:.3f}", quality.Ratio())});
    figures.Add({Text("lint-displacement"), fmt::format("{:.0f}", quality.displacement)});
    if (quality.faults.empty()) return figures.Text();
    TextTable faults = Titled({"column-finding", "column-where"});
    for (const auto& fault : quality.faults) {
        const std::string first = sheet.callouts[fault.label].id;
        faults.Add({Text(std::string("lint-").append(WordFor(fault.kind))),
                    fault.other == fault.label ? first : first + ", " + sheet.callouts[fault.other].id});
    }
    return figures.Text() + "\n" + faults.Text();
}

}  // namespace zrsheet
