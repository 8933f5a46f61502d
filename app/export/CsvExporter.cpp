#include "app/export/CsvExporter.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

#include "app/render/CleanText.h"
#include "app/sheet/ListTable.h"

namespace zrsheet {
namespace {

/// Spreadsheets take what begins so for a formula and run it, some of them also when the signs are wide ones
/// or stand behind blanks; after an apostrophe they take it for text.
constexpr std::array<std::string_view, 8> kFormulaStarts{"=",      "+",      "-",      "@",
                                                         "\uFF1D", "\uFF0B", "\uFF0D", "\uFF20"};

/// One line without characters that programs may drop, so that what is looked at is what they see.
std::string Tamed(const std::string& text) {
    std::string clean = CleanText(text);
    const std::string_view seen =
        std::string_view(clean).substr(std::min(clean.find_first_not_of(' '), clean.size()));
    const bool isFormula = std::any_of(kFormulaStarts.begin(), kFormulaStarts.end(),
                                       [seen](std::string_view start) { return seen.starts_with(start); });
    return isFormula ? "'" + clean : clean;
}

std::string Quoted(std::string_view field) {
    if (field.find_first_of(",\"\r\n") == std::string_view::npos) return std::string(field);
    std::string quoted = "\"";
    for (const char c : field) {
        if (c == '"') quoted += '"';
        quoted += c;
    }
    return quoted + '"';
}

void AppendRecord(std::string& text, const std::vector<std::string>& fields) {
    for (std::size_t i = 0; i < fields.size(); ++i) {
        if (i > 0) text += ',';
        text += Quoted(fields[i]);
    }
    text += "\r\n";
}

}  // namespace

std::string CsvText(const Sheet& sheet) {
    const std::vector<ListColumn> columns = ListColumnsOf(sheet);
    std::string text;
    std::vector<std::string> fields;
    fields.reserve(columns.size());
    for (const ListColumn& column : columns) fields.push_back(Tamed(HeadText(column)));
    AppendRecord(text, fields);
    for (const SheetItem& item : sheet.items) {
        fields.clear();
        for (const ListColumn& column : columns) {
            const std::string cell = CellText(item, column);
            fields.push_back(column.field == ListField::Quantity ? cell : Tamed(cell));
        }
        AppendRecord(text, fields);
    }
    return text;
}

}  // namespace zrsheet
