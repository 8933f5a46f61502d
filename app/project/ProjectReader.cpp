#include "app/project/ProjectReader.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <nlohmann/json.hpp>
#include <set>

#include "app/document/UserError.h"
#include "app/project/ProjectCheck.h"
#include "app/project/ProjectFault.h"
#include "app/project/ProjectFields.h"

namespace zrsheet {
namespace {

using Json = nlohmann::json;  // its objects are searched fast, whatever their size

constexpr std::size_t kDeepest = 16;  // lists and objects within each other; projects need seven
constexpr const char* kAdvice = "; correct the file or open an older copy of it";

/// A value in the file, and where it stands.
class Place {
public:
    explicit Place(const Json& value) : m_value(value) {}
    Place(const Json& value, const Place& above, std::string_view name)
        : m_value(value), m_above(&above), m_name(name) {}
    Place(const Json& value, const Place& above, std::size_t index)
        : m_value(value), m_above(&above), m_index(index) {}

    const Json& Value() const { return m_value; }
    std::string Path() const {
        if (m_above == nullptr) return {};
        const std::string above = m_above->Path();
        if (m_name.empty()) return above + "[" + std::to_string(m_index) + "]";
        return above + (above.empty() ? "" : ".") + std::string(m_name);
    }
    [[noreturn]] void Fail(const std::string& what) const { throw ProjectFault(Path(), what); }
    void Expect(bool holds, const std::string& wanted) const {
        if (!holds) Fail("expected " + wanted);
    }

private:
    const Json& m_value;
    const Place* m_above = nullptr;
    std::string_view m_name;
    std::size_t m_index = 0;
};

template <class T>
void Read(const Place& place, T& out);

/// Fills an object's members from JSON as its table names them.
template <class T>
class FieldReader {
public:
    FieldReader(const Place& place, T& object) : m_place(place), m_object(object) {
        place.Expect(place.Value().is_object(), "an object");
    }

    template <class Member, class... Rule>
    void Required(const char* name, Member T::*member, const Rule&... rule) {
        if (!ReadIfThere(name, member, rule...))
            m_place.Fail(std::string("the member \"") + name + "\" is missing");
    }
    template <class Member, class... Rule>
    void Optional(const char* name, Member T::*member, const Rule&... rule) {
        static_cast<void>(ReadIfThere(name, member, rule...));
    }

    /// After all members of the table.
    void RefuseOthers() const {
        if (m_known.size() == m_place.Value().size()) return;
        for (const auto& [name, value] : m_place.Value().items()) {
            if (std::find(m_known.begin(), m_known.end(), name) == m_known.end())
                m_place.Fail("the member " + Json(name).dump() + " is not known");
        }
    }

private:
    template <class Member, class... Rule>
    bool ReadIfThere(const char* name, Member T::*member, const Rule&... rule) {
        const auto found = m_place.Value().find(name);
        if (found == m_place.Value().end()) return false;
        m_known.emplace_back(name);
        const Place place(*found, m_place, name);
        Read(place, m_object.*member);
        (place.Expect(rule.holds(m_object.*member), rule.wanted), ...);
        return true;
    }

    const Place& m_place;
    T& m_object;
    std::vector<std::string_view> m_known;
};

void ReadPlain(const Place& place, bool& out) {
    place.Expect(place.Value().is_boolean(), "true or false");
    out = place.Value().get<bool>();
}

template <class T>
void ReadWhole(const Place& place, T& out) {
    place.Expect(place.Value().is_number_unsigned(), "a whole number");
    const auto value = place.Value().get<std::uint64_t>();
    place.Expect(value <= static_cast<std::uint64_t>(std::numeric_limits<T>::max()), "a smaller number");
    out = static_cast<T>(value);
}
void ReadPlain(const Place& place, int& out) { ReadWhole(place, out); }
void ReadPlain(const Place& place, unsigned& out) { ReadWhole(place, out); }
void ReadPlain(const Place& place, std::uint64_t& out) { ReadWhole(place, out); }

void ReadPlain(const Place& place, double& out) {
    place.Expect(place.Value().is_number(), "a number");
    out = place.Value().get<double>();
}

void ReadPlain(const Place& place, std::string& out) {
    place.Expect(place.Value().is_string(), "a text");
    out = place.Value().get_ref<const std::string&>();
}

template <class T>
void ReadPlain(const Place& place, std::optional<T>& out) {
    Read(place, out.emplace());
}

template <std::size_t kCount>
void ReadPlain(const Place& place, std::array<double, kCount>& out) {
    const Json& list = place.Value();
    place.Expect(list.is_array() && list.size() == kCount, std::to_string(kCount) + " numbers");
    for (std::size_t i = 0; i < kCount; ++i) Read(Place(list[i], place, i), out[i]);
}

template <class T>
void ReadPlain(const Place& place, std::vector<T>& out) {
    const Json& list = place.Value();
    place.Expect(list.is_array(), "a list");
    out.resize(list.size());
    for (std::size_t i = 0; i < list.size(); ++i) Read(Place(list[i], place, i), out[i]);
}

void ReadPlain(const Place& place, std::map<std::string, std::string>& out) {
    place.Expect(place.Value().is_object(), "an object");
    for (const auto& [name, value] : place.Value().items()) Read(Place(value, place, name), out[name]);
}

template <class T>
void ReadWord(const Place& place, T& out) {
    constexpr auto kKnown = kWords<T>;
    std::string wanted = "one of";
    for (const std::string_view word : kKnown) wanted.append(" \"").append(word).append("\"");
    place.Expect(place.Value().is_string(), wanted);
    const auto found = std::find(kKnown.begin(), kKnown.end(), place.Value().get_ref<const std::string&>());
    place.Expect(found != kKnown.end(), wanted);
    out = static_cast<T>(found - kKnown.begin());
}

template <class T>
void Read(const Place& place, T& out) {
    if constexpr (std::is_enum_v<T>) {
        ReadWord(place, out);
    } else if constexpr (requires { ReadPlain(place, out); }) {
        ReadPlain(place, out);
    } else {
        FieldReader<T> fields(place, out);
        DescribeFields(fields, Kind<T>());
        fields.RefuseOthers();
    }
}

/// Refuses what JSON allows and no project has: members of the same name, and lists within lists without end.
/// It goes over the text before that is parsed: a parser that asks while it parses looks through the whole
/// list after each of its objects.
class StructureGuard : public nlohmann::json_sax<Json> {
public:
    bool null() override { return true; }
    bool boolean(bool) override { return true; }
    bool number_integer(number_integer_t) override { return true; }
    bool number_unsigned(number_unsigned_t) override { return true; }
    bool number_float(number_float_t, const string_t&) override { return true; }
    bool string(string_t&) override { return true; }
    bool binary(binary_t&) override { return true; }
    bool start_object(std::size_t) override { return Open(); }
    bool end_object() override { return Close(); }
    bool start_array(std::size_t) override { return Open(); }
    bool end_array() override { return Close(); }
    bool key(string_t& name) override {
        if (!m_names.back().insert(name).second)
            throw ProjectFault("", "the member " + Json(name).dump() + " stands twice in one object");
        return true;
    }
    /// The parser tells it better.
    bool parse_error(std::size_t, const std::string&, const nlohmann::detail::exception&) override {
        return false;
    }

private:
    bool Open() {
        m_names.emplace_back();
        if (m_names.size() > kDeepest) throw ProjectFault("", "lists and objects are nested too deep");
        return true;
    }
    bool Close() {
        m_names.pop_back();
        return true;
    }

    std::vector<std::set<std::string>> m_names;  // of the objects that are open; lists have none
};

std::string LineAndColumn(std::string_view text, std::size_t byte) {
    const std::string_view before =
        text.substr(0, std::min(byte, text.size() + 1) - std::min<std::size_t>(byte, 1));
    const auto line = std::count(before.begin(), before.end(), '\n') + 1;
    const std::size_t begin = before.rfind('\n');
    const std::size_t column = before.size() - (begin == std::string_view::npos ? 0 : begin + 1) + 1;
    return "line " + std::to_string(line) + ", byte " + std::to_string(column);
}

void SkipSpace(std::string_view& text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
}

Json Parse(std::string_view text) {
    try {
        StructureGuard guard;
        Json::sax_parse(text, &guard);
        return Json::parse(text);
    } catch (const Json::parse_error& error) {
        throw ProjectFault(LineAndColumn(text, error.byte), "this is no JSON");
    } catch (const Json::out_of_range&) {
        throw ProjectFault("", "a number is too large");
    }
}

}  // namespace

std::optional<unsigned> ProjectVersionOf(std::string_view text) {
    const std::string format = "\"" + std::string(kProjectFormat) + "\"";
    for (const std::string_view token : {"{", "\"format\"", ":", format.c_str(), ",", "\"version\"", ":"}) {
        SkipSpace(text);
        if (!text.starts_with(token)) return std::nullopt;
        text.remove_prefix(token.size());
    }
    SkipSpace(text);
    unsigned version = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), version);
    if (error != std::errc()) return std::nullopt;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    SkipSpace(text);
    return text.starts_with(',') || text.starts_with('}') ? std::optional(version) : std::nullopt;
}

void CheckProjectVersion(std::string_view text, const std::string& file) {
    const auto version = ProjectVersionOf(text);
    if (!version) throw UserError(file + ": this is no zrsheet project; name a .zrsheet file");
    if (*version > kProjectVersion) {
        throw UserError(file + ": made by a newer zrsheet (format " + std::to_string(*version) +
                        ", this one reads up to " + std::to_string(kProjectVersion) +
                        "); install a newer one");
    }
    if (*version == 0) throw UserError(file + ": version: expected a number from 1" + kAdvice);
}

ProjectData ParseProject(std::string_view text) {
    Json root = Parse(text);
    root.erase("format");
    root.erase("version");
    ProjectData project;
    Read(Place(root), project);
    CheckProject(project);
    return project;
}

ProjectData ReadProject(std::string_view text, const std::string& file) {
    CheckProjectVersion(text, file);
    try {
        return ParseProject(text);
    } catch (const ProjectFault& fault) {
        throw UserError(file + ": " + fault.what() + kAdvice);
    }
}

}  // namespace zrsheet
