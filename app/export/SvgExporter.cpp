#include "app/export/SvgExporter.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <pugixml.hpp>
#include <set>
#include <sstream>
#include <string_view>

#include "app/export/SheetDrawing.h"
#include "app/render/CleanText.h"
#include "app/render/TextMetrics.h"

namespace zrsheet {
namespace {

using Node = pugi::xml_node;

/// Two decimals at most, whatever the locale.
std::string Number(double value) {
    std::array<char, 64> digits{};
    const double rounded = std::round(value * 100.0) / 100.0 + 0.0;
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), rounded).ptr;
    return {digits.data(), end};
}

std::string Base64(std::string_view bytes) {
    constexpr std::string_view kDigits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    text.reserve((bytes.size() + 2) / 3 * 4);
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        std::uint32_t group = 0;
        for (std::size_t k = 0; k < 3; ++k) {
            group = (group << 8U) | (i + k < bytes.size() ? static_cast<unsigned char>(bytes[i + k]) : 0U);
        }
        for (std::size_t k = 0; k < 4; ++k) {
            text +=
                i + k <= bytes.size() ? kDigits[(group >> (18U - 6U * static_cast<unsigned>(k))) & 63U] : '=';
        }
    }
    return text;
}

void Set(Node node, const char* name, const std::string& value) {
    node.append_attribute(name) = value.c_str();
}

void Set(Node node, const char* name, double value) { Set(node, name, Number(value)); }

Node AddGroup(Node parent, const char* cssClass) {
    Node group = parent.append_child("g");
    Set(group, "class", cssClass);
    return group;
}

void AddLine(Node parent, const DrawnLine& line) {
    Node node = parent.append_child("line");
    Set(node, "x1", line.from.x);
    Set(node, "y1", line.from.y);
    Set(node, "x2", line.to.x);
    Set(node, "y2", line.to.y);
    Set(node, "stroke", line.color);
    Set(node, "stroke-width", line.width);
    if (line.isDashed) Set(node, "stroke-dasharray", Number(kDash) + " " + Number(kDashGap));
}

/// Only the circle's place, no paint.
Node AddCircle(Node parent, const SheetCircle& circle) {
    Node node = parent.append_child("circle");
    Set(node, "cx", circle.centre.x);
    Set(node, "cy", circle.centre.y);
    Set(node, "r", circle.radius);
    return node;
}

void AddDisc(Node parent, const DrawnDisc& disc) {
    Set(AddCircle(parent, {disc.centre, disc.radius}), "fill", disc.color);
}

void AddText(Node parent, const DrawnText& text) {
    if (text.text.empty()) return;
    Node node = parent.append_child("text");
    Set(node, "x", text.place.x);
    Set(node, "y", text.place.y);
    Set(node, "font-size", text.size);
    if (text.isBold) Set(node, "font-weight", "bold");
    if (text.align != TextAlign::kLeft)
        Set(node, "text-anchor", text.align == TextAlign::kRight ? "end" : "middle");
    Set(node, "fill", text.color);
    node.text().set(text.text.c_str());
}

Node AddPolygon(Node parent, const std::vector<PagePoint>& corners) {
    std::string points;
    for (const PagePoint& corner : corners)
        points += (points.empty() ? "" : " ") + Number(corner.x) + "," + Number(corner.y);
    Node node = parent.append_child("polygon");
    Set(node, "points", points);
    return node;
}

void AddArrow(Node parent, const DrawnArrow& arrow) {
    Node node = AddPolygon(parent, arrow.corners);
    Set(node, "fill", arrow.color);
    if (arrow.lineWidth <= 0.0) return;
    Set(node, "stroke", arrow.color);
    Set(node, "stroke-width", arrow.lineWidth);
    Set(node, "stroke-linejoin", "round");
}

Node AddRoundBox(Node parent, const PageBox& box, double radius) {
    const double width = box.x1 - box.x0;
    const double height = box.y1 - box.y0;
    if (std::abs(width - height) < 0.01)
        return AddCircle(parent, {{0.5 * (box.x0 + box.x1), 0.5 * (box.y0 + box.y1)}, radius});
    Node node = parent.append_child("rect");
    Set(node, "x", box.x0);
    Set(node, "y", box.y0);
    Set(node, "width", width);
    Set(node, "height", height);
    Set(node, "rx", radius);
    return node;
}

void AddBalloon(Node parent, const DrawnBalloon& balloon) {
    if (balloon.outline != BalloonOutline::kNone) {
        Node node = balloon.outline == BalloonOutline::kRound
                        ? AddRoundBox(parent, balloon.box, balloon.radius)
                        : AddPolygon(parent, balloon.corners);
        Set(node, "fill", kPaperColor);
        Set(node, "stroke", balloon.color);
        Set(node, "stroke-width", balloon.lineWidth);
    }
    for (const DrawnLine& rule : balloon.rules) AddLine(parent, rule);
}

/// Gives out ids of letters, digits, '-', '_' and '.', no two alike.
class IdTable {
public:
    std::string Take(const std::string& prefix, const std::string& wanted) {
        std::string id = wanted.starts_with(prefix) ? wanted : prefix + wanted;
        std::replace_if(
            id.begin(), id.end(), [](char c) { return !IsLegal(c); }, '_');
        std::string unique = id;
        for (int i = 2; !m_taken.insert(unique).second; ++i) unique = id + "-" + std::to_string(i);
        return unique;
    }

private:
    static bool IsLegal(char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' ||
               c == '_' || c == '.';
    }

    std::set<std::string> m_taken;
};

std::string InstanceList(const SheetCallout& callout) {
    std::string list;
    for (const std::string& instance : callout.instances) {
        if (!list.empty()) list += '|';
        list += CleanText(instance);
    }
    return list;
}

void AddCallout(Node parent, const SheetCallout& callout, const DrawnCallout& drawn, const std::string& id) {
    Node group = AddGroup(parent, "callout");
    Set(group, "id", id);
    if (callout.hasItem) Set(group, "data-item", std::to_string(callout.itemId));
    Set(group, "data-instances", InstanceList(callout));
    for (const DrawnLeader& leader : drawn.leaders) {
        Node leaderGroup = AddGroup(group, "leader");
        AddLine(leaderGroup, leader.halo);
        if (leader.dotHalo) AddDisc(leaderGroup, *leader.dotHalo);
        if (leader.arrowHalo) AddArrow(leaderGroup, *leader.arrowHalo);
        AddLine(leaderGroup, leader.line);
        if (leader.dot) AddDisc(leaderGroup, *leader.dot);
        if (leader.arrow) AddArrow(leaderGroup, *leader.arrow);
    }
    Node label = AddGroup(group, "label");
    AddBalloon(label, drawn.balloon);
    for (const DrawnText& line : drawn.label) AddText(label, line);
}

Node AddImage(Node parent, const Raster& picture, const PageBox& box) {
    Node image = parent.append_child("image");
    Set(image, "x", box.x0);
    Set(image, "y", box.y0);
    Set(image, "width", box.x1 - box.x0);
    Set(image, "height", box.y1 - box.y0);
    Set(image, "preserveAspectRatio", "none");
    // The older name of the attribute is the one that every program reads.
    Set(image, "xlink:href", "data:image/png;base64," + Base64(EncodePng(picture)));
    return image;
}

void AddPicture(Node svg, const Sheet& sheet) {
    if (!sheet.picture.pixels.empty()) Set(AddImage(svg, sheet.picture, sheet.figure), "class", "picture");
}

void AddRing(Node parent, const DrawnRing& ring) {
    Node node = AddCircle(parent, ring.circle);
    Set(node, "fill", "none");
    Set(node, "stroke", ring.color);
    Set(node, "stroke-width", ring.width);
}

void AddInset(Node svg, const SheetInset& inset, const DrawnInset& drawn, IdTable& ids) {
    Node group = AddGroup(svg, "inset");
    const std::string id = ids.Take("inset-", inset.id);
    Set(group, "id", id);
    for (const DrawnRing& ring : drawn.sourceRings) AddRing(group, ring);
    for (const DrawnLine& link : drawn.links) AddLine(group, link);
    AddDisc(group, drawn.rim);
    if (!inset.picture.pixels.empty()) {
        Node clip = group.append_child("clipPath");
        const std::string clipId = ids.Take("inset-", id + "-clip");
        Set(clip, "id", clipId);
        AddCircle(clip, drawn.outline.circle);
        Set(AddImage(group, inset.picture, inset.box), "clip-path", "url(#" + clipId + ")");
    }
    AddRing(group, drawn.outline);
}

void AddTable(Node svg, const SheetDrawing& drawing) {
    if (drawing.tableRules.empty()) return;
    Node table = AddGroup(svg, "parts-list");
    for (const DrawnLine& rule : drawing.tableRules) AddLine(table, rule);
    for (const DrawnText& text : drawing.tableTexts) AddText(table, text);
}

Node AddRoot(pugi::xml_document& document, const Sheet& sheet) {
    Node declaration = document.append_child(pugi::node_declaration);
    Set(declaration, "version", "1.0");
    Set(declaration, "encoding", "UTF-8");
    Node svg = document.append_child("svg");
    Set(svg, "xmlns", "http://www.w3.org/2000/svg");
    Set(svg, "xmlns:xlink", "http://www.w3.org/1999/xlink");
    Set(svg, "width", Number(sheet.width) + "px");
    Set(svg, "height", Number(sheet.height) + "px");
    Set(svg, "viewBox", "0 0 " + Number(sheet.width) + " " + Number(sheet.height));
    if (!sheet.language.empty()) Set(svg, "xml:lang", CleanText(sheet.language));
    Set(svg, "font-family", std::string("'") + kFontFamily + "', Verdana, Arial, sans-serif");
    return svg;
}

}  // namespace

std::string SvgText(const Sheet& sheet) {
    const SheetDrawing drawing = DrawSheet(sheet);
    pugi::xml_document document;
    Node svg = AddRoot(document, sheet);
    svg.append_child("title").text().set(drawing.title.text.c_str());
    Node paper = svg.append_child("rect");
    Set(paper, "width", sheet.width);
    Set(paper, "height", sheet.height);
    Set(paper, "fill", kPaperColor);
    AddPicture(svg, sheet);
    AddText(svg, drawing.title);
    IdTable ids;
    for (std::size_t i = 0; i < sheet.insets.size(); ++i)
        AddInset(svg, sheet.insets[i], drawing.insets[i], ids);
    Node callouts = AddGroup(svg, "callouts");
    for (std::size_t i = 0; i < sheet.callouts.size(); ++i) {
        AddCallout(callouts, sheet.callouts[i], drawing.callouts[i],
                   ids.Take("callout-", sheet.callouts[i].id));
    }
    AddTable(svg, drawing);
    std::ostringstream text;
    document.save(text, "  ", pugi::format_default, pugi::encoding_utf8);
    return text.str();
}

}  // namespace zrsheet
