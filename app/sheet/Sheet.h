// The finished sheet as plain data: what the exporters write and nothing else. All places are page pixels,
// origin top left, y downwards; whoever fills it in has already laid everything out.

#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "app/document/PageGeometry.h"
#include "app/document/PictureChoice.h"
#include "app/lineart/LineArt.h"
#include "app/render/Raster.h"
#include "callouts/align/optimal/LayoutQuality.h"
#include "dg/DMat44.h"
#include "du/ConstSmartPtr.h"
#include "zrannotations/CalloutStyle.h"
#include "zrg/Shape.h"

namespace zrsheet {

/// From the balloon's rim (`end`) to the place on the part (`anchor`).
struct SheetLeader {
    PagePoint anchor;
    PagePoint end;
    std::string instance;  // path of the part's instance
    bool visible = true;   // false: drawn dashed
    std::string color = "#000000";
    zrannotations::Terminator terminator = zrannotations::Terminator::Dot;  // never Auto
    std::array<double, 3> place{};                                          // the anchor in the model
};

/// How a callout is drawn.
struct CalloutLook {
    zrannotations::BalloonShape shape = zrannotations::BalloonShape::Round;
    double fontSize = 13.0;
    double lineWidth = 1.25;
};

/// `box` bounds the balloon, or all of a stack.
struct SheetCallout {
    std::string id;  // legal XML name, stable from run to run
    bool hasItem = false;
    unsigned int itemId = 0;
    std::string label;  // may have lines
    PageBox box;
    std::vector<SheetLeader> leaders;    // those that are drawn
    std::vector<std::string> instances;  // paths of all instances that it stands for
    CalloutLook look{};
    std::vector<std::string> stack{};  // what its balloons say, from the top; none: one that says the label
};

struct SheetCircle {
    PagePoint centre;
    double radius = 0.0;
};

/// One of the model's parts, as picture and list name it.
struct SheetPart {
    std::string id;  // legal XML name; stays when parts are renamed, turned or hidden
    bool hasItem = false;
    unsigned int itemId = 0;
    std::string label;     // of the item
    std::string name;      // of the part, or of the symbol
    std::string instance;  // path of the part's instance; empty for a symbol
};

/// What is seen of a part: where readers may point at it.
struct SheetHotspot : SheetPart {
    std::vector<std::vector<ArtPoint>> rings;  // even-odd; in pixels from the corner of the figure or inset
};

/// A round glass over the picture: it shows what lies inside `source` of it, `factor` times as large.
struct SheetInset {
    std::string id;  // legal XML name, stable from run to run
    SheetCircle glass;
    SheetCircle source;
    double factor = 1.0;
    PageBox box;  // of all that follows; it holds the glass
    Raster picture;
    std::vector<ArtLine> lines;  // in pixels from the box's corner
    std::vector<SheetHotspot> hotspots;
};

/// A part that is shown, to be looked at from any side.
struct SheetSolid : SheetPart {
    du::ConstSmartPtr<zrg::Shape> shape;  // shared by equal parts
    dg::DMat44 toWorld;
    std::string color;  // "#rrggbb"; empty if the model's file gives none
};

/// How the picture looks at the model.
struct SheetCamera {
    std::array<double, 3> look{0.0, 0.0, -1.0};  // both in the model, of any length
    std::array<double, 3> up{0.0, 1.0, 0.0};
};

/// What the picture lies on: one colour at the top, another at the bottom.
struct SheetGround {
    std::string top = "#ffffff";
    std::string bottom = "#ffffff";
};

/// A row of the parts list.
struct SheetItem {
    unsigned int itemId = 0;
    std::string label;
    int quantity = 0;
    std::string name;
    std::string tag;
    unsigned int level = 0;  // depth in a hierarchical list, 0 at the top
    std::map<std::string, std::string> properties;
    std::vector<std::string> instances;
};

/// A column of the printed parts list.
struct TableColumn {
    std::string title;
    double width = 0.0;
    bool alignRight = false;
};

struct TableCell {
    std::string text;
    double indent = 0.0;
};

/// The printed parts list: `rows` hold a cell per column, cut to fit already.
struct SheetTable {
    PageBox box;
    double rowHeight = 0.0;
    std::vector<TableColumn> columns;
    std::vector<std::vector<TableCell>> rows;
    bool growsUp = false;  // the head at the bottom, the first row above it
    bool isBoxed = false;  // lines around it and between its columns
};

/// A box of the title block: a caption in small letters above its text.
struct SheetField {
    PageBox box;
    std::string caption;
    std::string text;  // cut to fit already
    bool isStrong = false;
};

/// A field of the margin, by which people name places on the sheet.
struct SheetZone {
    PageBox box;
    std::string text;
};

/// A frame with a title block in its lower right corner.
struct SheetFrame {
    PageBox box;
    std::vector<SheetField> fields;  // side by side, without gaps
    PageBox border{};                // around the frame and the zones outside it
    std::vector<SheetZone> zones{};
};

/// A further page, as large as the first one.
struct SheetListPage {
    SheetFrame frame;
    std::vector<SheetTable> tables;
};

struct SheetModel {
    std::string name;
    PageBox box;  // the model's picture
    std::size_t parts = 0;
    std::size_t instances = 0;
    std::size_t triangles = 0;
};

/// Wall-clock seconds of each stage; only the report shows them.
struct SheetSeconds {
    double load = 0.0;
    double create = 0.0;
    double pick = 0.0;
    double render = 0.0;
    double write = 0.0;
};

/// How everything is drawn that the author did not choose; the same for every output.
struct SheetStyle {
    double fontSize = 13.0;
    double tableFontSize = 12.0;
    double titleFontSize = 17.0;
    double leaderWidth = 1.0;
    double balloonWidth = 1.25;  // leaders and their ends go with what a callout has instead
    double glassWidth = 1.5;
    double glassRim = 3.0;     // white around a glass
    double sourceWidth = 0.9;  // of the circle around what a glass shows, and of the lines to the glass
    double dotRadius = 2.6;
    double cellPadding = 6.0;         // left and right of a table cell's text
    double millimetre = 96.0 / 25.4;  // of the paper, in page pixels
    // Of the title block, in millimetres.
    double captionSize = 2.0;
    double fieldSize = 3.0;
    double strongFieldSize = 4.2;
    std::string inkColor = "#000000";
};

struct Sheet {
    double width = 0.0;
    double height = 0.0;
    std::string title;
    PagePoint titlePlace;  // where the baseline of the title begins
    std::string language;
    PageBox figure;  // where the picture lies
    PictureChoice look;
    SheetGround ground;
    Raster picture;              // empty where everything is vectors
    std::vector<ArtLine> lines;  // in pixels from the figure's corner
    std::vector<SheetHotspot> hotspots;
    std::vector<SheetSolid> solids;
    SheetCamera camera;
    SheetModel model;
    std::vector<SheetInset> insets;  // those that are visible, later ones over earlier ones
    std::vector<SheetCallout> callouts;
    std::vector<SheetItem> items;
    std::vector<std::string> listColumns;  // that the author chose (see ListColumn.h); none: the usual ones
    std::vector<SheetTable> tables;        // the parts list, in as many columns as it takes
    std::optional<SheetFrame> frame;       // of sheets on paper; the title is in it
    std::vector<SheetListPage> listPages;  // where the parts list has pages of its own
    zrcallouts::LayoutQuality quality;     // of the callouts' places
    SheetStyle style;
    SheetSeconds seconds;
};

}  // namespace zrsheet
