#include "app/document/TemplateFile.h"

#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <set>
#include <string_view>

#include "app/document/LabelTemplate.h"
#include "app/document/UserError.h"

namespace zrsheet {
namespace {

using Json = nlohmann::ordered_json;

constexpr std::string_view kFormat = "zrsheet templates";
constexpr unsigned kVersion = 1;

/// What is wrong with the file, without its name.
struct Fault {
    std::string what;
};

void Expect(bool holds, const std::string& what) {
    if (!holds) throw Fault{what};
}

void ExpectMembers(const Json& object, const std::string& where,
                   std::initializer_list<std::string_view> known) {
    Expect(object.is_object(), where + " is no object");
    for (const auto& [name, value] : object.items()) {
        std::string complaint(where);
        complaint.append(" has a member '").append(name).append("' that is not known");
        Expect(std::find(known.begin(), known.end(), name) != known.end(), complaint);
    }
}

std::string TextAt(const Json& object, const char* name, const std::string& where) {
    const auto member = object.find(name);
    Expect(member != object.end() && member->is_string() && !member->get<std::string>().empty(),
           where + " has no text \"" + name + "\"");
    return member->get<std::string>();
}

NamedTemplate ReadTemplate(const Json& object, const std::string& where) {
    ExpectMembers(object, where, {"name", "text", "translations"});
    NamedTemplate read{TextAt(object, "name", where), TextAt(object, "text", where), {}};
    const Json translations = object.value("translations", Json::object());
    Expect(translations.is_object(), where + ": its translations are no object");
    for (const auto& [language, text] : translations.items())
        read.translations[language] = TextAt(translations, language.c_str(), where);
    try {
        CheckLabelTemplate(read.text, read.translations);
    } catch (const UserError& error) {
        throw Fault{where + ": " + error.what()};
    }
    return read;
}

std::vector<NamedTemplate> Read(const Json& root) {
    ExpectMembers(root, "the file", {"format", "version", "templates"});
    Expect(root.value("format", Json()) == kFormat, "it is no file of templates");
    Expect(root.value("version", Json()) == kVersion, "its version is not 1");
    const Json list = root.value("templates", Json());
    Expect(list.is_array(), "it has no list \"templates\"");
    std::vector<NamedTemplate> templates;
    std::set<std::string> names;
    for (std::size_t i = 0; i < list.size(); ++i) {
        const std::string where = "template " + std::to_string(i + 1);
        templates.push_back(ReadTemplate(list[i], where));
        Expect(names.insert(templates.back().name).second, where + " has the name of another one");
    }
    return templates;
}

}  // namespace

std::vector<NamedTemplate> ReadTemplates(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    if (!stream) throw UserError(file.string() + ": it cannot be read; name a file of templates");
    const std::string text((std::istreambuf_iterator<char>(stream)), {});
    try {
        return Read(Json::parse(text));
    } catch (const Json::exception&) {
        throw UserError(file.string() + ": this is no JSON; 'template save' writes such files");
    } catch (const Fault& fault) {
        throw UserError(file.string() + ": " + fault.what + "; correct the file");
    }
}

std::string TemplatesText(const std::vector<NamedTemplate>& templates) {
    std::string text = "{\n \"format\": \"" + std::string(kFormat) +
                       "\",\n \"version\": " + std::to_string(kVersion) + ",\n \"templates\": [";
    const char* separator = "\n  ";
    for (const NamedTemplate& each : templates) {
        Json row{{"name", each.name}, {"text", each.text}};
        if (!each.translations.empty()) row["translations"] = each.translations;
        text += separator + row.dump(-1, ' ', false, Json::error_handler_t::replace);
        separator = ",\n  ";
    }
    return text + "\n ]\n}\n";
}

std::filesystem::path ReadyTemplates() {
    const auto program = std::filesystem::read_symlink("/proc/self/exe");
    return program.parent_path().parent_path() / "share" / "zrsheet" / "templates.json";
}

}  // namespace zrsheet
