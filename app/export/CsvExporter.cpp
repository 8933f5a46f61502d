#include "app/export/CsvExporter.h"

#include <set>
#include <string_view>
#include <vector>

namespace zrsheet {
namespace {

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

std::set<std::string> PropertyNames(const Sheet& sheet) {
    std::set<std::string> names;
    for (const SheetItem& item : sheet.items) {
        for (const auto& [name, value] : item.properties) names.insert(name);
    }
    return names;
}

}  // namespace

std::string CsvText(const Sheet& sheet) {
    const std::set<std::string> properties = PropertyNames(sheet);
    std::vector<std::string> header{"Item", "Quantity", "Name", "Tag"};
    header.insert(header.end(), properties.begin(), properties.end());
    std::string text;
    AppendRecord(text, header);
    for (const SheetItem& item : sheet.items) {
        std::vector<std::string> fields{item.label, std::to_string(item.quantity), item.name, item.tag};
        for (const std::string& name : properties) {
            const auto property = item.properties.find(name);
            fields.push_back(property == item.properties.end() ? std::string() : property->second);
        }
        AppendRecord(text, fields);
    }
    return text;
}

}  // namespace zrsheet
