// Files of label templates: the ready ones that come with the program, and the author's own.

#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace zrsheet {

struct NamedTemplate {
    std::string name;
    std::string text;                                 // see LabelTemplate.h
    std::map<std::string, std::string> translations;  // by language; "{0}" is the text's first placeholder

    friend bool operator==(const NamedTemplate&, const NamedTemplate&) = default;
};

/// Throws UserError for a file that is not there or holds anything else; names are given once and texts are
/// right.
[[nodiscard]] std::vector<NamedTemplate> ReadTemplates(const std::filesystem::path& file);
/// What such a file holds.
[[nodiscard]] std::string TemplatesText(const std::vector<NamedTemplate>& templates);

/// The file that comes with the program: in share/ beside the folder of the executable.
[[nodiscard]] std::filesystem::path ReadyTemplates();

}  // namespace zrsheet
