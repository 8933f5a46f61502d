// The members of a project file: what they are called, which may be left out, and what their values must be.
//
// One table for each kind of object, read by what reads and by what writes: DescribeFields(fields, kind)
// calls fields.Required or fields.Optional(name, pointer to the member [, rule]) in the order of the file.
// Optional members are left out where they have their default values.

#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "app/document/ListColumn.h"
#include "app/document/StyleChoices.h"
#include "app/project/ProjectData.h"

namespace zrsheet {

inline constexpr std::string_view kProjectFormat = "zrsheet project";
inline constexpr unsigned kProjectVersion = 1;

/// What a value must be beyond its type, and how to say so after "expected".
template <class T>
struct FieldRule {
    bool (*holds)(const T&);
    const char* wanted;
};

inline constexpr unsigned kGreatestId = 1'000'000'000;

inline constexpr FieldRule<unsigned> kId{[](const unsigned& id) { return id >= 1 && id <= kGreatestId; },
                                         "a whole number from 1 to 1000000000"};
inline constexpr FieldRule<unsigned> kIdOrNone{[](const unsigned& id) { return id <= kGreatestId; },
                                               "a whole number from 0 to 1000000000"};
inline constexpr FieldRule<unsigned> kDigits{[](const unsigned& digits) { return digits <= 9; },
                                             "a whole number from 0 to 9"};
inline constexpr FieldRule<int> kPixels{[](const int& size) { return size >= 1 && size <= 32767; },
                                        "a whole number from 1 to 32767"};
/// A view that was never shown has none.
inline constexpr FieldRule<int> kPixelsOrNone{[](const int& size) { return size >= 0 && size <= 32767; },
                                              "a whole number from 0 to 32767"};
inline constexpr FieldRule<std::string> kNotEmpty{[](const std::string& text) { return !text.empty(); },
                                                  "a text that is not empty"};
inline constexpr FieldRule<std::string> kPath{[](const std::string& text) { return text.starts_with('/'); },
                                              "a path that begins with a slash"};
inline constexpr FieldRule<std::string> kSymbolName{
    [](const std::string& text) { return !text.empty() && !text.starts_with('/'); },
    "a name that begins with no slash"};
inline constexpr FieldRule<std::string> kSha256{
    [](const std::string& text) {
        return text.size() == 64 && text.find_first_not_of("0123456789abcdef") == std::string::npos;
    },
    "64 hexadecimal digits in lower case"};
inline constexpr FieldRule<double> kRadius{[](const double& value) { return value >= 0.0 && value <= 1e6; },
                                           "a number from 0 to 1000000"};
inline constexpr FieldRule<double> kFactor{[](const double& value) { return value >= 1e-3 && value <= 1e6; },
                                           "a number from 0.001 to 1000000"};
inline constexpr FieldRule<double> kOutline{
    [](const double& value) { return value >= kLeastOutline && value <= kMostOutline; },
    "a number from 0.05 to 5"};
inline constexpr FieldRule<double> kLabelDistance{
    [](const double& value) { return value >= 0.0 && value <= kMostDistance; }, "a number from 0 to 1000"};
inline constexpr FieldRule<double> kLabelGap{
    [](const double& value) { return value >= 0.0 && value <= kMostGap; }, "a number from 0 to 200"};
inline constexpr FieldRule<unsigned> kLabelRows{
    [](const unsigned& value) { return value >= 1 && value <= kMostRows; }, "1 or 2"};
inline constexpr FieldRule<std::optional<double>> kFontSize{
    [](const std::optional<double>& size) {
        return !size || (*size >= kLeastFontSize && *size <= kMostFontSize);
    },
    "a number from 4 to 200"};
inline constexpr FieldRule<std::optional<double>> kLineWidth{
    [](const std::optional<double>& width) {
        return !width || (*width >= kLeastLineWidth && *width <= kMostLineWidth);
    },
    "a number from 0.1 to 20"};
inline constexpr FieldRule<ProjectColor> kColor{[](const ProjectColor& color) {
                                                    for (const double value : color) {
                                                        if (value < 0.0 || value > 1.0) return false;
                                                    }
                                                    return true;
                                                },
                                                "4 numbers from 0 to 1"};

inline constexpr FieldRule<std::vector<std::string>> kListColumns{
    [](const std::vector<std::string>& words) {
        return std::all_of(words.begin(), words.end(), [](const auto& word) { return IsListColumn(word); });
    },
    "item, quantity, name, tag, level or property:NAME"};

/// The host keeps the linear part in single precision.
inline bool IsPlacement(const ProjectMatrix& matrix) {
    for (std::size_t i = 0; i < 16; ++i) {
        const bool isOutside = i % 4 == 3;
        if (isOutside && matrix[i] != (i == 15 ? 1.0 : 0.0)) return false;
        if (std::abs(matrix[i]) > 1e30) return false;
    }
    return true;
}
inline constexpr FieldRule<ProjectMatrix> kPlacement{
    &IsPlacement, "16 numbers up to 1e30, each fourth of them 0 and the last one 1"};
inline constexpr FieldRule<std::optional<ProjectMatrix>> kPlacementIfAny{
    [](const std::optional<ProjectMatrix>& matrix) { return !matrix || IsPlacement(*matrix); },
    kPlacement.wanted};

/// The words for an enumeration's values, in their order.
template <class T>
inline constexpr std::array<std::string_view, 0> kWords{};
template <>
inline constexpr std::array<std::string_view, 3> kWords<LeaderChoice>{"one", "all", "per-instance"};
template <>
inline constexpr std::array<std::string_view, 3> kWords<ProjectCalloutType>{"shape", "free", "assembly"};

template <>
inline constexpr auto kWords<zrannotations::BalloonShape> = kShapeWords;
template <>
inline constexpr auto kWords<zrannotations::Terminator> = kTerminatorWords;

template <>
inline constexpr auto kWords<PictureMode> = kPictureWords;

template <>
inline constexpr auto kWords<LayoutMode> = kLayoutWords;
template <>
inline constexpr auto kWords<zrcallouts::LayoutPattern> = kPatternWords;

template <>
inline constexpr auto kWords<PaperSize> = kPaperWords;
template <>
inline constexpr auto kWords<PaperTurn> = kTurnWords;
template <>
inline constexpr auto kWords<ListPlace> = kListWords;

template <class T>
using Kind = std::type_identity<T>;

template <class Fields>
void DescribeFields(Fields& fields, Kind<ProjectModel>) {
    fields.Required("path", &ProjectModel::path, kNotEmpty);
    fields.Required("size", &ProjectModel::size);
    fields.Required("sha256", &ProjectModel::sha256, kSha256);
}

template <class Fields>
void DescribeFields(Fields& fields, Kind<ProjectInstance>) {
    fields.Required("path", &ProjectInstance::path, kNotEmpty);
    fields.Required("name", &ProjectInstance::name);
    fields.Optional("geometry", &ProjectInstance::geometry);
}

template <class Fields>
void DescribeFields(Fields& fields, Kind<ProjectPage>) {
    fields.Required("width", &ProjectPage::width, kPixels);
    fields.Required("height", &ProjectPage::height, kPixels);
}

template <class Fields>
void DescribeFields(Fields& fields, Kind<ProjectCamera>) {
    fields.Required("worldToPixel", &ProjectCamera::worldToPixel);
    fields.Required("width", &ProjectCamera::width, kPixelsOrNone);
    fields.Required("height", &ProjectCamera::height, kPixelsOrNone);
}

template <class Fields>
void DescribeFields(Fields& fields, Kind<ProjectBackground>) {
    fields.Required("top", &ProjectBackground::top, kColor);
    fields.Required("bottom", &ProjectBackground::bottom, kColor);
    fields.Required("border", &ProjectBackground::border, kColor);
}

template <class Fields>
void DescribeFields(Fields& fields, Kind<ProjectSettings>) {
    fields.Required("language", &ProjectSettings::language, kNotEmpty);
    fields.Required("leaders", &ProjectSettings::leaders);
    fields.Required("drawWhenHidden", &ProjectSettings::drawWhenHidden);
    fields.Required("labelTemplate", &ProjectSettings::labelTemplate, kNotEmpty);
}

template <class Fields>
void DescribeFields(Fields& fields, Kind<ProjectStyle>) {
    fields.Optional("shape", &ProjectStyle::shape);
    fields.Optional("terminator", &ProjectStyle::terminator);
    fields.Optional("fontSize", &ProjectStyle::fontSize, kFontSize);
    fields.Optional("lineWidth", &ProjectStyle::lineWidth, kLineWidth);
    fields.Optional("stacked", &ProjectStyle::stacked);
}

template <class Fields>
void DescribeFields(Fields& fields, Kind<ProjectPicture>) {
    fields.Optional("mode", &ProjectPicture::mode);
    fields.Optional("hidden", &ProjectPicture::hidden);
    fields.Optional("outline", &ProjectPicture::outline, kOutline);
}

template <class Fields>
void DescribeFields(Fields& fields, Kind<ProjectLayoutRules>) {
    fields.Optional("pattern", &ProjectLayoutRules::pattern);
    fields.Optional("distance", &ProjectLayoutRules::distance, kLabelDistance);
    fields.Optional("gap", &ProjectLayoutRules::gap, kLabelGap);
    fields.Optional("rows", &ProjectLayoutRules::rows, kLabelRows);
}

template <class Fields>
void DescribeFields(Fields& fields, Kind<ProjectLayout>) {
    fields.Optional("mode", &ProjectLayout::mode);
    fields.Optional("rules", &ProjectLayout::rules);
}

template <class Fields>
void DescribeFields(Fields& fields, Kind<ProjectPaper>) {
    fields.Optional("size", &ProjectPaper::size);
    fields.Optional("orientation", &ProjectPaper::turn);
    fields.Optional("list", &ProjectPaper::list);
    fields.Optional("title", &ProjectPaper::title);
    fields.Optional("date", &ProjectPaper::date);
    fields.Optional("columns", &ProjectPaper::listColumns, kListColumns);
}

template <class Fields>
void DescribeFields(Fields& fields, Kind<ProjectLastNumber>) {
    fields.Optional("parent", &ProjectLastNumber::parent, kIdOrNone);
    fields.Required("number", &ProjectLastNumber::number, kId);
}

template <class Fields>
void DescribeFields(Fields& fields, Kind<ProjectNumbering>) {
    fields.Required("hierarchical", &ProjectNumbering::hierarchical);
    fields.Required("prefix", &ProjectNumbering::prefix);
    fields.Required("separator", &ProjectNumbering::separator);
    fields.Optional("start", &ProjectNumbering::start, kId);
    fields.Optional("increment", &ProjectNumbering::increment, kId);
    fields.Optional("digits", &ProjectNumbering::digits, kDigits);
    fields.Optional("alphabetic", &ProjectNumbering::alphabetic);
    fields.Optional("last", &ProjectNumbering::last);
}

template <class Fields>
void DescribeFields(Fields& fields, Kind<ProjectTemplate>) {
    fields.Required("name", &ProjectTemplate::name, kNotEmpty);
    fields.Required("text", &ProjectTemplate::text, kNotEmpty);
    fields.Optional("translations", &ProjectTemplate::translations);
}

template <class Fields>
void DescribeFields(Fields& fields, Kind<ProjectPart>) {
    fields.Required("path", &ProjectPart::path, kPath);
    fields.Optional("hidden", &ProjectPart::hidden);
    fields.Optional("removed", &ProjectPart::removed);
    fields.Optional("phantom", &ProjectPart::phantom);
    fields.Optional("weld", &ProjectPart::weld);
    fields.Optional("placement", &ProjectPart::placement, kPlacementIfAny);
    fields.Optional("properties", &ProjectPart::properties);
}

template <class Fields>
void DescribeFields(Fields& fields, Kind<ProjectSymbol>) {
    fields.Required("name", &ProjectSymbol::name, kSymbolName);
    fields.Required("shape", &ProjectSymbol::shape, kNotEmpty);
    fields.Required("placement", &ProjectSymbol::placement, kPlacement);
    fields.Optional("hidden", &ProjectSymbol::hidden);
}

template <class Fields>
void DescribeFields(Fields& fields, Kind<ProjectInset>) {
    fields.Required("id", &ProjectInset::id, kId);
    fields.Required("source", &ProjectInset::source);
    fields.Required("centre", &ProjectInset::centre);
    fields.Required("radius", &ProjectInset::radius, kRadius);
    fields.Required("factor", &ProjectInset::factor, kFactor);
    fields.Optional("visible", &ProjectInset::visible);
}

template <class Fields>
void DescribeFields(Fields& fields, Kind<ProjectItem>) {
    fields.Required("id", &ProjectItem::id, kId);
    fields.Optional("label", &ProjectItem::label);
    fields.Optional("number", &ProjectItem::number, kIdOrNone);
    fields.Optional("parent", &ProjectItem::parent, kIdOrNone);
    fields.Optional("itemized", &ProjectItem::itemized);
    fields.Optional("manual", &ProjectItem::manual);
    fields.Optional("locked", &ProjectItem::locked);
    fields.Optional("tag", &ProjectItem::tag);
    fields.Required("instances", &ProjectItem::instances);
}

template <class Fields>
void DescribeFields(Fields& fields, Kind<ProjectText>) {
    fields.Optional("source", &ProjectText::source);
    fields.Optional("translations", &ProjectText::translations);
    fields.Optional("enabled", &ProjectText::enabled);
    fields.Optional("deleted", &ProjectText::deleted);
}

template <class Fields>
void DescribeFields(Fields& fields, Kind<ProjectLeader>) {
    fields.Optional("target", &ProjectLeader::target);
    fields.Optional("symbol", &ProjectLeader::symbol);
    fields.Required("anchor", &ProjectLeader::anchor);
    fields.Optional("assembly", &ProjectLeader::assembly);
    fields.Optional("inset", &ProjectLeader::inset, kIdOrNone);
    fields.Optional("hidden", &ProjectLeader::hidden);
    fields.Optional("collapsed", &ProjectLeader::collapsed);
}

template <class Fields>
void DescribeFields(Fields& fields, Kind<ProjectCallout>) {
    fields.Optional("type", &ProjectCallout::type);
    fields.Optional("labelTemplate", &ProjectCallout::labelTemplate);
    fields.Optional("kit", &ProjectCallout::kit);
    fields.Optional("custom", &ProjectCallout::custom);
    fields.Optional("placed", &ProjectCallout::placed);
    fields.Optional("item", &ProjectCallout::item, kIdOrNone);
    fields.Optional("text", &ProjectCallout::text);
    fields.Optional("localizedText", &ProjectCallout::localizedText);
    fields.Optional("legacyText", &ProjectCallout::legacyText);
    fields.Optional("localizable", &ProjectCallout::localizable);
    fields.Required("position", &ProjectCallout::position);
    fields.Optional("pixel", &ProjectCallout::pixel);
    fields.Optional("anchorCalculated", &ProjectCallout::anchorCalculated);
    fields.Optional("view", &ProjectCallout::view, kIdOrNone);
    fields.Optional("style", &ProjectCallout::style);
    fields.Optional("leaders", &ProjectCallout::leaders);
    fields.Optional("members", &ProjectCallout::members);
}

template <class Fields>
void DescribeFields(Fields& fields, Kind<ProjectData>) {
    fields.Required("model", &ProjectData::model);
    fields.Required("instances", &ProjectData::instances);
    fields.Optional("orphans", &ProjectData::orphans);
    fields.Required("page", &ProjectData::page);
    fields.Required("camera", &ProjectData::camera);
    fields.Required("background", &ProjectData::background);
    fields.Required("settings", &ProjectData::settings);
    fields.Optional("style", &ProjectData::style);
    fields.Optional("picture", &ProjectData::picture);
    fields.Optional("layout", &ProjectData::layout);
    fields.Optional("paper", &ProjectData::paper);
    fields.Required("numbering", &ProjectData::numbering);
    fields.Required("templates", &ProjectData::templates);
    fields.Optional("parts", &ProjectData::parts);
    fields.Optional("symbols", &ProjectData::symbols);
    fields.Optional("insets", &ProjectData::insets);
    fields.Required("items", &ProjectData::items);
    fields.Required("callouts", &ProjectData::callouts);
    fields.Optional("savedCallouts", &ProjectData::savedCallouts);
}

}  // namespace zrsheet
