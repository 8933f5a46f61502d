#include "app/export/SvgExporter.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <pugixml.hpp>
#include <sstream>
#include <utility>

#include "app/document/StyleChoices.h"
#include "app/export/SheetDrawing.h"
#include "app/export/SheetIds.h"
#include "app/file/Base64.h"
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
    for (const DrawnBalloon& balloon : drawn.balloons) AddBalloon(label, balloon);
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

/// Paths are the bulk of the file: relative numbers, hundredths of a pixel, no needless blanks.
class PathText {
public:
    void Add(const std::vector<ArtPoint>& points, bool isClosed) {
        for (std::size_t i = 0; i < points.size(); ++i) {
            const long x = std::lround(points[i].x * 100.0);
            const long y = std::lround(points[i].y * 100.0);
            if (i == 0) m_text += 'm';
            AddNumber(x - m_x, i > 0);
            AddNumber(y - m_y, true);
            m_x = x;
            m_y = y;
        }
        if (!isClosed || points.empty()) return;
        m_text += 'z';
        m_x = std::lround(points.front().x * 100.0);
        m_y = std::lround(points.front().y * 100.0);
    }
    const std::string& Text() const { return m_text; }

private:
    void AddNumber(long hundredths, bool isNext) {
        if (isNext && hundredths >= 0) m_text += ' ';
        m_text += Number(static_cast<double>(hundredths) / 100.0);
    }

    std::string m_text;
    long m_x = 0;  // where the path is
    long m_y = 0;
};

Node AddPath(Node parent, const std::string& cssClass, const PathText& path) {
    Node node = parent.append_child("path");
    Set(node, "class", cssClass);
    Set(node, "d", path.Text());
    return node;
}

void AddModelLines(Node parent, const DrawnModel& model) {
    if (model.inks.empty()) return;
    Node group = AddGroup(parent, "model-lines");
    Set(group, "transform", "translate(" + Number(model.origin.x) + " " + Number(model.origin.y) + ")");
    Set(group, "fill", "none");
    Set(group, "stroke", kInkColor);
    Set(group, "stroke-linecap", "round");
    Set(group, "stroke-linejoin", "round");
    Set(group, "pointer-events", "none");
    for (const DrawnInk& ink : model.inks) {
        PathText path;
        for (const ArtLine* line : ink.lines) path.Add(line->points, line->isClosed);
        Node node = AddPath(group, ink.cssClass, path);
        Set(node, "stroke-width", ink.width);
        if (ink.isDashed)
            Set(node, "stroke-dasharray",
                Number(kHiddenDash * ink.width) + " " + Number(kHiddenGap * ink.width));
    }
}

void AddHotspot(Node group, const SheetHotspot& hotspot, const std::string& id) {
    PathText path;
    for (const auto& ring : hotspot.rings) path.Add(ring, true);
    Node node = AddPath(group, "hotspot", path);
    Set(node, "id", id);
    if (hotspot.hasItem) {
        Set(node, "data-item", std::to_string(hotspot.itemId));
        Set(node, "data-label", CleanText(hotspot.label));
    }
    Set(node, "data-part", CleanText(hotspot.name));
    if (!hotspot.instance.empty()) Set(node, "data-instances", CleanText(hotspot.instance));
    const std::string title = hotspot.label.empty() ? hotspot.name : hotspot.label + "  " + hotspot.name;
    node.append_child("title").text().set(CleanText(title).c_str());
}

/// White areas carry the lines; over a picture they are there to be pointed at only, and nothing hides it.
void AddHotspots(Node parent, const std::vector<SheetHotspot>& hotspots, const PageBox& box, PictureMode mode,
                 const std::vector<std::string>& ids) {
    if (hotspots.empty()) return;
    Node group = AddGroup(parent, "hotspots");
    Set(group, "transform", "translate(" + Number(box.x0) + " " + Number(box.y0) + ")");
    Set(group, "fill", kPaperColor);
    if (mode != PictureMode::Line) Set(group, "fill-opacity", "0");
    Set(group, "fill-rule", "evenodd");
    Set(group, "cursor", "pointer");
    for (std::size_t i = 0; i < hotspots.size(); ++i) AddHotspot(group, hotspots[i], ids[i]);
}

void AddGround(Node svg, const Sheet& sheet) {
    Node gradient = svg.append_child("linearGradient");
    Set(gradient, "id", SheetIds::kGround);
    Set(gradient, "x2", "0");
    Set(gradient, "y2", "1");
    for (const auto& [offset, color] :
         {std::pair("0", sheet.ground.top), std::pair("1", sheet.ground.bottom)}) {
        Node stop = gradient.append_child("stop");
        Set(stop, "offset", offset);
        Set(stop, "stop-color", color);
    }
    Node ground = svg.append_child("rect");
    Set(ground, "class", "ground");
    Set(ground, "x", sheet.figure.x0);
    Set(ground, "y", sheet.figure.y0);
    Set(ground, "width", sheet.figure.x1 - sheet.figure.x0);
    Set(ground, "height", sheet.figure.y1 - sheet.figure.y0);
    Set(ground, "fill", std::string("url(#") + SheetIds::kGround + ")");
}

void AddFigure(Node svg, const Sheet& sheet, const DrawnModel& model,
               const std::vector<std::string>& hotspotIds) {
    const bool isPlain = sheet.ground.top == kPaperColor && sheet.ground.bottom == kPaperColor;
    if (sheet.look.mode == PictureMode::Line && !isPlain) AddGround(svg, sheet);
    if (!sheet.picture.pixels.empty()) Set(AddImage(svg, sheet.picture, sheet.figure), "class", "picture");
    Node group = AddGroup(svg, ("model " + std::string(WordOf(sheet.look.mode))).c_str());
    AddHotspots(group, sheet.hotspots, sheet.figure, sheet.look.mode, hotspotIds);
    AddModelLines(group, model);
}

void AddRing(Node parent, const DrawnRing& ring) {
    Node node = AddCircle(parent, ring.circle);
    Set(node, "fill", "none");
    Set(node, "stroke", ring.color);
    Set(node, "stroke-width", ring.width);
}

void AddInset(Node svg, const SheetInset& inset, const DrawnInset& drawn, PictureMode mode,
              const SheetIds::Inset& ids) {
    Node group = AddGroup(svg, "inset");
    Set(group, "id", ids.group);
    for (const DrawnRing& ring : drawn.sourceRings) AddRing(group, ring);
    for (const DrawnLine& link : drawn.links) AddLine(group, link);
    AddDisc(group, drawn.rim);
    if (!inset.picture.pixels.empty() || !inset.lines.empty()) {
        Node clip = group.append_child("clipPath");
        Set(clip, "id", ids.clip);
        AddCircle(clip, drawn.outline.circle);
        Node view = AddGroup(group, ("view " + std::string(WordOf(mode))).c_str());
        Set(view, "clip-path", "url(#" + ids.clip + ")");
        if (!inset.picture.pixels.empty()) AddImage(view, inset.picture, inset.box);
        AddHotspots(view, inset.hotspots, inset.box, mode, ids.hotspots);
        AddModelLines(view, drawn.model);
    }
    AddRing(group, drawn.outline);
}

void AddForm(Node svg, const char* cssClass, const DrawnForm& form) {
    if (form.rules.empty()) return;
    Node group = AddGroup(svg, cssClass);
    for (const DrawnLine& rule : form.rules) AddLine(group, rule);
    for (const DrawnText& text : form.texts) AddText(group, text);
}

/// Paper is as large as it is.
std::string Length(const Sheet& sheet, double pixels) {
    return sheet.frame ? Number(pixels / sheet.style.millimetre) + "mm" : Number(pixels) + "px";
}

Node AddRoot(pugi::xml_document& document, const Sheet& sheet) {
    Node declaration = document.append_child(pugi::node_declaration);
    Set(declaration, "version", "1.0");
    Set(declaration, "encoding", "UTF-8");
    Node svg = document.append_child("svg");
    Set(svg, "xmlns", "http://www.w3.org/2000/svg");
    Set(svg, "xmlns:xlink", "http://www.w3.org/1999/xlink");
    Set(svg, "width", Length(sheet, sheet.width));
    Set(svg, "height", Length(sheet, sheet.height));
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
    svg.append_child("title").text().set(CleanText(sheet.title).c_str());
    Node paper = svg.append_child("rect");
    Set(paper, "width", sheet.width);
    Set(paper, "height", sheet.height);
    Set(paper, "fill", kPaperColor);
    const SheetIds ids = IdsOf(sheet);
    AddFigure(svg, sheet, drawing.model, ids.hotspots);
    AddText(svg, drawing.title);
    for (std::size_t i = 0; i < sheet.insets.size(); ++i)
        AddInset(svg, sheet.insets[i], drawing.insets[i], sheet.look.mode, ids.insets[i]);
    Node callouts = AddGroup(svg, "callouts");
    for (std::size_t i = 0; i < sheet.callouts.size(); ++i)
        AddCallout(callouts, sheet.callouts[i], drawing.callouts[i], ids.callouts[i]);
    AddForm(svg, "parts-list", drawing.table);
    AddForm(svg, "frame", drawing.frame);
    std::ostringstream text;
    document.save(text, "  ", pugi::format_default, pugi::encoding_utf8);
    return text.str();
}

}  // namespace zrsheet
