// What a project file holds: an illustration as plain data, without the host's objects and without the
// model's geometry.
//
// Parts and assemblies are named by their paths in the model's structure ("/Pump/Screw:2"; "/" is the product
// itself), symbols and templates by name, items and insets by number. 0 and "" name none.

#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "app/document/LayoutChoice.h"
#include "app/document/LeaderChoice.h"
#include "app/document/PaperChoice.h"
#include "app/document/PictureChoice.h"
#include "zrannotations/CalloutStyle.h"

namespace zrsheet {

using ProjectPoint = std::array<double, 3>;
using ProjectMatrix = std::array<double, 16>;  // p' = p * M, row by row, translation in 12 to 14
using ProjectColor = std::array<double, 4>;    // red, green, blue, alpha from 0 to 1

/// The file that the model came from.
struct ProjectModel {
    std::string path;  // relative to the project's folder, or absolute
    std::uint64_t size = 0;
    std::string sha256;  // of the file's bytes, in hexadecimal digits

    friend bool operator==(const ProjectModel&, const ProjectModel&) = default;
};

/// A part or assembly of the model, as much of it as is needed to know it again in a changed model.
struct ProjectInstance {
    std::string path;
    std::string name;
    std::string geometry;  // digest of the triangles, or of what the assembly consists of; "" when unknown

    friend bool operator==(const ProjectInstance&, const ProjectInstance&) = default;
};

struct ProjectPage {
    int width = 1600;  // pixels
    int height = 1000;

    friend bool operator==(const ProjectPage&, const ProjectPage&) = default;
};

struct ProjectCamera {
    ProjectMatrix worldToPixel{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
    int width = 1;  // of the viewport, pixels
    int height = 1;

    friend bool operator==(const ProjectCamera&, const ProjectCamera&) = default;
};

struct ProjectBackground {
    ProjectColor top{1, 1, 1, 1};
    ProjectColor bottom{1, 1, 1, 1};
    ProjectColor border{1, 1, 1, 1};

    friend bool operator==(const ProjectBackground&, const ProjectBackground&) = default;
};

struct ProjectSettings {
    std::string language = "en";
    LeaderChoice leaders = LeaderChoice::One;
    bool drawWhenHidden = false;
    std::string labelTemplate;  // of new callouts; names one of the templates

    friend bool operator==(const ProjectSettings&, const ProjectSettings&) = default;
};

/// A number that was given and is free again is not given a second time.
struct ProjectLastNumber {
    unsigned parent = 0;  // the item below which it was given, 0 for the top level
    unsigned number = 0;

    friend bool operator==(const ProjectLastNumber&, const ProjectLastNumber&) = default;
};

struct ProjectNumbering {
    bool hierarchical = false;
    std::string prefix;
    std::string separator = ".";
    unsigned start = 1;
    unsigned increment = 1;
    unsigned digits = 0;
    bool alphabetic = false;
    std::vector<ProjectLastNumber> last{};  // where it is greater than all in use

    friend bool operator==(const ProjectNumbering&, const ProjectNumbering&) = default;
};

struct ProjectTemplate {
    std::string name;
    std::string text;  // as LabelTemplate.h reads it
    std::map<std::string, std::string> translations{};

    friend bool operator==(const ProjectTemplate&, const ProjectTemplate&) = default;
};

/// What sets a part apart from the model.
struct ProjectPart {
    std::string path;
    bool hidden = false;
    bool removed = false;
    bool phantom = false;
    bool weld = false;                              // counted and called out as one part
    std::optional<ProjectMatrix> placement;         // to the world, where it was moved
    std::map<std::string, std::string> properties;  // changed or added ones

    friend bool operator==(const ProjectPart&, const ProjectPart&) = default;
};

/// A 3-D symbol that stands in the scene.
struct ProjectSymbol {
    std::string name;   // no path: it begins with no slash
    std::string shape;  // the name of a shape that the application has
    ProjectMatrix placement{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
    bool hidden = false;

    friend bool operator==(const ProjectSymbol&, const ProjectSymbol&) = default;
};

/// A round glass; all in pixels of the viewport.
struct ProjectInset {
    unsigned id = 0;
    ProjectPoint source{};
    ProjectPoint centre{};
    double radius = 0.0;
    double factor = 1.0;
    bool visible = true;

    friend bool operator==(const ProjectInset&, const ProjectInset&) = default;
};

struct ProjectItem {
    unsigned id = 0;
    std::string label;    // "" for an item that is numbered
    unsigned number = 0;  // among the items below the same parent; 0 for none
    unsigned parent = 0;  // the item of the assembly above; may be gone by now
    bool itemized = true;
    bool manual = false;
    bool locked = false;
    std::string tag;
    std::vector<std::string> instances;

    friend bool operator==(const ProjectItem&, const ProjectItem&) = default;
};

/// A text with translations by language.
struct ProjectText {
    std::string source;
    std::map<std::string, std::string> translations;
    bool enabled = false;
    bool deleted = false;

    friend bool operator==(const ProjectText&, const ProjectText&) = default;
};

struct ProjectLeader {
    std::string target;     // path of the part, or name of the symbol, that it leads to
    std::string symbol;     // the symbol whose annotation goes with it
    ProjectPoint anchor{};  // in the target's own coordinates
    std::string assembly;   // what the part stands for
    unsigned inset = 0;
    bool hidden = false;
    bool collapsed = false;

    friend bool operator==(const ProjectLeader&, const ProjectLeader&) = default;
};

/// Of a callout, or of all callouts that have none of their own.
using ProjectStyle = zrannotations::CalloutStyle;

/// How the model is drawn.
using ProjectPicture = PictureChoice;

/// What the sheet is printed on.
using ProjectLayout = LayoutChoice;
using ProjectLayoutRules = zrcallouts::LayoutRules;
using ProjectPaper = PaperChoice;

enum class ProjectCalloutType { Shape, Free, Assembly };

struct ProjectCallout {
    ProjectCalloutType type = ProjectCalloutType::Shape;
    std::string labelTemplate;
    bool kit = false;
    bool custom = false;
    bool placed = false;  // the author chose where the label is
    unsigned item = 0;
    std::string text;
    std::string localizedText;
    std::optional<std::string> legacyText;
    ProjectText localizable;
    ProjectPoint position{};  // of the label: relative to the first leader's part, free ones in the world
    std::optional<ProjectPoint> pixel;  // set: the label stays there while the camera moves
    bool anchorCalculated = false;
    unsigned view = 0;  // in which it was made; 0 for none
    ProjectStyle style;
    std::vector<ProjectLeader> leaders;
    std::vector<ProjectCallout> members;  // of a combined callout; they have none themselves

    friend bool operator==(const ProjectCallout&, const ProjectCallout&) = default;
};

struct ProjectData {
    ProjectModel model;
    std::vector<ProjectInstance> instances;  // of the model, parents before their children
    std::vector<ProjectInstance> orphans;    // of earlier states of the model, still referred to
    ProjectPage page;
    ProjectCamera camera;
    ProjectBackground background;
    ProjectSettings settings;
    ProjectStyle style;
    ProjectPicture picture;
    ProjectLayout layout;
    ProjectPaper paper;
    ProjectNumbering numbering;
    std::vector<ProjectTemplate> templates;
    std::vector<ProjectPart> parts;
    std::vector<ProjectSymbol> symbols;
    std::vector<ProjectInset> insets;
    std::vector<ProjectItem> items;             // in list order: ids ascend
    std::vector<ProjectCallout> callouts;       // in drawing order
    std::vector<ProjectCallout> savedCallouts;  // kept by a saved view only

    friend bool operator==(const ProjectData&, const ProjectData&) = default;
};

}  // namespace zrsheet
