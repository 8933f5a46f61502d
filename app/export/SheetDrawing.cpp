#include "app/export/SheetDrawing.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <map>
#include <utility>

#include "app/render/CleanText.h"
#include "app/render/TextMetrics.h"
#include "app/sheet/BalloonForm.h"

namespace zrsheet {
namespace {

constexpr double kHalo = 1.4;  // white on each side of a leader
// Of arrows: page pixels, and what comes to them with the line's width.
constexpr double kArrowLength = 6.0;
constexpr double kArrowGrowth = 2.5;
constexpr double kArrowSlope = 0.28;  // of half the base to the length
constexpr double kHeadRuleWidth = 1.2;
constexpr double kRowRuleWidth = 0.5;
// Of frames, in millimetres.
constexpr double kFrameWidth = 0.7;
constexpr double kZoneSize = 3.4;  // of the text
constexpr double kBoxWidth = 0.35;
constexpr double kFieldRuleWidth = 0.18;
constexpr double kCentringMark = 5.0;  // length on each side of the frame
constexpr double kFieldPadding = 1.5;
constexpr double kCaptionBaseline = 2.8;  // below the field's top
constexpr double kFieldBaseline = 2.2;    // above its bottom
constexpr const char* kCaptionColor = "#505050";
constexpr double kThinShare = 0.5;  // of the width of outlines
constexpr const char* kRowRuleColor = "#b8b8b8";

double Middle(double a, double b) { return 0.5 * (a + b); }

/// Where the arrow of a leader ends behind its tip.
PagePoint ArrowBase(const SheetLeader& leader, double length) {
    const double dx = leader.end.x - leader.anchor.x;
    const double dy = leader.end.y - leader.anchor.y;
    const double distance = std::hypot(dx, dy);
    const double share = distance > 0.0 ? std::min(length / distance, 1.0) : 0.0;
    return {leader.anchor.x + share * dx, leader.anchor.y + share * dy};
}

DrawnArrow DrawArrow(const PagePoint& tip, const PagePoint& base, double width, const std::string& color) {
    const PagePoint across{kArrowSlope * (base.y - tip.y), kArrowSlope * (tip.x - base.x)};
    return {
        {tip, {base.x + across.x, base.y + across.y}, {base.x - across.x, base.y - across.y}}, width, color};
}

DrawnLeader DrawLeader(const SheetLeader& leader, const SheetStyle& style, double lineWidth) {
    using zrannotations::Terminator;
    const double width = style.leaderWidth * lineWidth / style.balloonWidth;
    const bool isArrow = leader.terminator == Terminator::Arrow;
    const PagePoint base = ArrowBase(leader, kArrowLength + kArrowGrowth * lineWidth);
    const PagePoint end = isArrow ? base : leader.anchor;
    DrawnLeader drawn;
    drawn.halo = {leader.end, end, width + 2.0 * kHalo, kPaperColor, false};
    drawn.line = {leader.end, end, width, leader.color, !leader.visible};
    if (leader.terminator == Terminator::Dot) {
        const double radius = style.dotRadius + lineWidth - style.balloonWidth;
        drawn.dotHalo = {leader.anchor, radius + kHalo, kPaperColor};
        drawn.dot = {leader.anchor, radius, leader.color};
    }
    if (isArrow) {
        drawn.arrowHalo = DrawArrow(leader.anchor, base, 2.0 * kHalo, kPaperColor);
        drawn.arrow = DrawArrow(leader.anchor, base, 0.0, leader.color);
    }
    return drawn;
}

/// The lines that touch both circles from outside; none when one circle holds the other.
std::vector<DrawnLine> OuterTangents(const SheetCircle& a, const SheetCircle& b, double width,
                                     const std::string& color) {
    const double dx = b.centre.x - a.centre.x;
    const double dy = b.centre.y - a.centre.y;
    const double squared = dx * dx + dy * dy;
    const double rise = a.radius - b.radius;
    std::vector<DrawnLine> lines;
    if (squared <= rise * rise) return lines;
    for (const double side : {-1.0, 1.0}) {
        // The direction from both centres to the points where the line touches.
        const double across = side * std::sqrt(squared - rise * rise);
        const PagePoint normal{(dx * rise - dy * across) / squared, (dy * rise + dx * across) / squared};
        const auto touch = [&normal](const SheetCircle& circle) {
            return PagePoint{circle.centre.x + circle.radius * normal.x,
                             circle.centre.y + circle.radius * normal.y};
        };
        lines.push_back({touch(a), touch(b), width, color, false});
    }
    return lines;
}

/// `outline` is the width of outlines. Inks in the order in which their first lines come.
DrawnModel DrawModel(const std::vector<ArtLine>& lines, const PagePoint& origin, double outline) {
    constexpr std::array<const char*, 4> kClasses{"outline", "edge", "crossing", "hidden"};
    DrawnModel model{origin, {}};
    std::map<std::pair<LineKind, int>, std::size_t> places;
    for (const ArtLine& line : lines) {
        const auto [place, isNew] = places.try_emplace({line.kind, line.fineness}, model.inks.size());
        if (isNew) {
            const double share = line.kind == LineKind::Outline ? 1.0 : kThinShare;
            std::string cssClass = kClasses.at(static_cast<std::size_t>(line.kind));
            if (line.fineness > 0) cssClass += " fine-" + std::to_string(line.fineness);
            model.inks.push_back({std::move(cssClass),
                                  outline * share * kLineShares[line.fineness],
                                  line.kind == LineKind::Hidden,
                                  {}});
        }
        model.inks[place->second].lines.push_back(&line);
    }
    return model;
}

DrawnInset DrawInset(const SheetInset& inset, const SheetStyle& style, double outline) {
    DrawnInset drawn;
    drawn.model = DrawModel(inset.lines, {inset.box.x0, inset.box.y0}, outline);
    const std::pair<double, const char*> strokes[] = {{style.sourceWidth + 2.0 * kHalo, kPaperColor},
                                                      {style.sourceWidth, style.inkColor.c_str()}};
    for (const auto& [width, color] : strokes) {
        drawn.sourceRings.push_back({inset.source, width, color});
        for (const DrawnLine& line : OuterTangents(inset.source, inset.glass, width, color))
            drawn.links.push_back(line);
    }
    drawn.rim = {inset.glass.centre, inset.glass.radius + style.glassRim, kPaperColor};
    drawn.outline = {inset.glass, style.glassWidth, style.inkColor};
    return drawn;
}

/// The line below bare text, or between the halves of a split balloon.
std::vector<DrawnLine> DrawRules(const CalloutLook& look, const PageBox& box, std::size_t lines,
                                 const std::string& color) {
    using zrannotations::BalloonShape;
    const bool isSplit = look.shape == BalloonShape::Split && lines > 1;
    if (!isSplit && look.shape != BalloonShape::None) return {};
    const double y = isSplit ? Middle(box.y0, box.y1) : box.y1;
    return {{{box.x0, y}, {box.x1, y}, look.lineWidth, color, false}};
}

DrawnBalloon DrawBalloon(const CalloutLook& look, const PageBox& box, std::size_t lines,
                         const std::string& color) {
    DrawnBalloon drawn;
    drawn.box = box;
    drawn.lineWidth = look.lineWidth;
    drawn.color = color;
    drawn.rules = DrawRules(look, box, lines, color);
    drawn.corners = CornersOf(look.shape, box);
    if (!drawn.corners.empty()) {
        drawn.outline = BalloonOutline::kCorners;
    } else if (look.shape == zrannotations::BalloonShape::None) {
        drawn.outline = BalloonOutline::kNone;
    } else {
        drawn.radius = 0.5 * std::min(box.x1 - box.x0, box.y1 - box.y0);
    }
    return drawn;
}

/// A balloon and what it says.
void DrawLabel(const CalloutLook& look, const PageBox& box, const std::string& label,
               const std::string& color, DrawnCallout& drawn) {
    const auto lines = LabelLines(label, look.shape);
    drawn.balloons.push_back(DrawBalloon(look, box, lines.size(), color));
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const double middle = Middle(box.y0, box.y1) + LineOffset(look, i, lines.size());
        drawn.label.push_back({CleanText(lines[i]),
                               {Middle(box.x0, box.x1), middle + 0.5 * CapHeight(look.fontSize)},
                               TextAlign::kMiddle,
                               look.fontSize,
                               false,
                               color});
    }
}

DrawnCallout DrawCallout(const SheetCallout& callout, const SheetStyle& style) {
    DrawnCallout drawn;
    for (const SheetLeader& leader : callout.leaders)
        drawn.leaders.push_back(DrawLeader(leader, style, callout.look.lineWidth));
    const std::vector<std::string> one{callout.label};
    const auto& labels = callout.stack.empty() ? one : callout.stack;
    const std::vector<PageBox> boxes = BalloonsOf(callout.box, labels.size());
    for (std::size_t i = 0; i < labels.size(); ++i)
        DrawLabel(callout.look, boxes[i], labels[i], style.inkColor, drawn);
    return drawn;
}

/// Draws the table row by row, from the head on.
class TableDrawer {
public:
    TableDrawer(const SheetTable& table, const SheetStyle& style, DrawnForm& form)
        : m_table(table), m_style(style), m_form(form), m_capHeight(CapHeight(style.tableFontSize)) {}

    void Draw() {
        if (m_table.columns.empty()) return;
        std::vector<TableCell> head;
        for (const TableColumn& column : m_table.columns) head.push_back({column.title, 0.0});
        const double headRule = m_table.isBoxed ? kBoxWidth * m_style.millimetre : kHeadRuleWidth;
        DrawRule(EdgeOf(0), headRule, m_style.inkColor);
        DrawRow(head, 0, true);
        for (std::size_t i = 0; i < m_table.rows.size(); ++i) {
            DrawRow(m_table.rows[i], i + 1, false);
            if (i > 0) DrawRule(EdgeOf(i + 1), kRowRuleWidth, kRowRuleColor);
        }
        DrawRule(EdgeOf(1), headRule, m_style.inkColor);
        DrawRule(EdgeOf(m_table.rows.size() + 1), headRule, m_style.inkColor);
        if (m_table.isBoxed) DrawColumnRules(headRule);
    }

private:
    /// Where the row begins, seen from the head.
    double EdgeOf(std::size_t row) const {
        const double way = static_cast<double>(row) * m_table.rowHeight;
        return m_table.growsUp ? m_table.box.y1 - way : m_table.box.y0 + way;
    }

    void DrawRule(double y, double width, const std::string& color) {
        m_form.rules.push_back({{m_table.box.x0, y}, {m_table.box.x1, y}, width, color, false});
    }

    void DrawColumnRules(double outer) {
        const auto draw = [this](double x, double width) {
            m_form.rules.push_back(
                {{x, m_table.box.y0}, {x, m_table.box.y1}, width, m_style.inkColor, false});
        };
        double x = m_table.box.x0;
        for (const TableColumn& column : m_table.columns) {
            draw(x, x > m_table.box.x0 ? kFieldRuleWidth * m_style.millimetre : outer);
            x += column.width;
        }
        draw(m_table.box.x1, outer);
    }

    void DrawRow(const std::vector<TableCell>& cells, std::size_t row, bool isHead) {
        double left = m_table.box.x0;
        const double baseline = Middle(EdgeOf(row), EdgeOf(row + 1)) + 0.5 * m_capHeight;
        for (std::size_t i = 0; i < std::min(cells.size(), m_table.columns.size()); ++i) {
            const TableColumn& column = m_table.columns[i];
            const double x = column.alignRight ? left + column.width - m_style.cellPadding
                                               : left + m_style.cellPadding + cells[i].indent;
            m_form.texts.push_back({CleanText(cells[i].text),
                                    {x, baseline},
                                    column.alignRight ? TextAlign::kRight : TextAlign::kLeft,
                                    m_style.tableFontSize,
                                    isHead,
                                    m_style.inkColor});
            left += column.width;
        }
    }

    const SheetTable& m_table;
    const SheetStyle& m_style;
    DrawnForm& m_form;
    double m_capHeight;
};

void DrawBox(const PageBox& box, double width, const std::string& color, std::vector<DrawnLine>& rules) {
    // Half a width longer, so that corners are square.
    const double more = 0.5 * width;
    rules.push_back({{box.x0 - more, box.y0}, {box.x1 + more, box.y0}, width, color, false});
    rules.push_back({{box.x0 - more, box.y1}, {box.x1 + more, box.y1}, width, color, false});
    rules.push_back({{box.x0, box.y0}, {box.x0, box.y1}, width, color, false});
    rules.push_back({{box.x1, box.y0}, {box.x1, box.y1}, width, color, false});
}

/// At the middles of the frame's sides, for folding and for cameras.
void DrawCentringMarks(const PageBox& box, double width, double length, const std::string& color,
                       std::vector<DrawnLine>& rules) {
    const double x = Middle(box.x0, box.x1);
    const double y = Middle(box.y0, box.y1);
    rules.push_back({{x, box.y0 - length}, {x, box.y0}, width, color, false});
    rules.push_back({{x, box.y1}, {x, box.y1 + length}, width, color, false});
    rules.push_back({{box.x0 - length, y}, {box.x0, y}, width, color, false});
    rules.push_back({{box.x1, y}, {box.x1 + length, y}, width, color, false});
}

void DrawField(const SheetField& field, const SheetStyle& style, DrawnForm& form) {
    const double mm = style.millimetre;
    const double left = field.box.x0 + kFieldPadding * mm;
    DrawBox(field.box, kBoxWidth * mm, style.inkColor, form.rules);
    form.texts.push_back({CleanText(field.caption),
                          {left, field.box.y0 + kCaptionBaseline * mm},
                          TextAlign::kLeft,
                          style.captionSize * mm,
                          false,
                          kCaptionColor});
    form.texts.push_back({CleanText(field.text),
                          {left, field.box.y1 - kFieldBaseline * mm},
                          TextAlign::kLeft,
                          mm * (field.isStrong ? style.strongFieldSize : style.fieldSize),
                          field.isStrong,
                          style.inkColor});
}

/// Zones are parted from the one before; the first of each side has the frame's corner there.
void DrawZone(const SheetZone& zone, const SheetFrame& frame, const SheetStyle& style, DrawnForm& form) {
    const double width = kBoxWidth * style.millimetre;
    const double size = kZoneSize * style.millimetre;
    const PageBox& box = zone.box;
    const bool isAtSide = box.x0 >= frame.box.x1 || box.x1 <= frame.box.x0;
    if (isAtSide && box.y0 > frame.box.y0)
        form.rules.push_back({{box.x0, box.y0}, {box.x1, box.y0}, width, style.inkColor, false});
    if (!isAtSide && box.x0 > frame.box.x0)
        form.rules.push_back({{box.x0, box.y0}, {box.x0, box.y1}, width, style.inkColor, false});
    form.texts.push_back({CleanText(zone.text),
                          {Middle(box.x0, box.x1), Middle(box.y0, box.y1) + 0.5 * CapHeight(size)},
                          TextAlign::kMiddle,
                          size,
                          false,
                          style.inkColor});
}

void DrawFrame(const SheetFrame& frame, const SheetStyle& style, DrawnForm& form) {
    const double width = kFrameWidth * style.millimetre;
    for (const SheetField& field : frame.fields) DrawField(field, style, form);
    for (const SheetZone& zone : frame.zones) DrawZone(zone, frame, style, form);
    if (!frame.zones.empty()) DrawBox(frame.border, kBoxWidth * style.millimetre, style.inkColor, form.rules);
    DrawCentringMarks(frame.box, width, kCentringMark * style.millimetre, style.inkColor, form.rules);
    DrawBox(frame.box, width, style.inkColor, form.rules);
}

void DrawTables(const std::vector<SheetTable>& tables, const SheetStyle& style, DrawnForm& form) {
    for (const SheetTable& table : tables) TableDrawer(table, style, form).Draw();
}

}  // namespace

SheetDrawing DrawSheet(const Sheet& sheet) {
    const SheetStyle& style = sheet.style;
    const double outline = sheet.look.outline * style.millimetre;
    SheetDrawing drawing;
    drawing.model = DrawModel(sheet.lines, {sheet.figure.x0, sheet.figure.y0}, outline);
    drawing.title = {{}, sheet.titlePlace, TextAlign::kLeft, style.titleFontSize, true, style.inkColor};
    if (!sheet.frame) drawing.title.text = CleanText(sheet.title);
    for (const SheetInset& inset : sheet.insets) drawing.insets.push_back(DrawInset(inset, style, outline));
    for (const SheetCallout& callout : sheet.callouts)
        drawing.callouts.push_back(DrawCallout(callout, style));
    DrawTables(sheet.tables, style, drawing.table);
    if (sheet.frame) DrawFrame(*sheet.frame, style, drawing.frame);
    for (const SheetListPage& page : sheet.listPages) {
        DrawnForm& form = drawing.pages.emplace_back();
        DrawTables(page.tables, style, form);
        DrawFrame(page.frame, style, form);
    }
    return drawing;
}

}  // namespace zrsheet
