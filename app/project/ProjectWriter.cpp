#include "app/project/ProjectWriter.h"

#include <cmath>
#include <nlohmann/json.hpp>

#include "app/document/UserError.h"
#include "app/project/ProjectFields.h"

namespace zrsheet {
namespace {

using Json = nlohmann::ordered_json;

template <class T>
Json ToJson(const T& value);

/// Puts an object's members into JSON as its table names them.
template <class T>
class FieldWriter {
public:
    FieldWriter(const T& object, Json& out) : m_object(object), m_out(out) {}

    template <class Member, class... Rule>
    void Required(const char* name, Member T::*member, const Rule&...) {
        m_out[name] = ToJson(m_object.*member);
    }
    template <class Member, class... Rule>
    void Optional(const char* name, Member T::*member, const Rule&...) {
        if (!(m_object.*member == m_defaults.*member)) Required(name, member);
    }

private:
    const T& m_object;
    const T m_defaults;
    Json& m_out;
};

Json PlainJson(double value) {
    if (!std::isfinite(value))
        throw UserError("a number of the project is infinite; undo the last change and save again");
    return value;
}
Json PlainJson(bool value) { return value; }
Json PlainJson(int value) { return value; }
Json PlainJson(unsigned value) { return value; }
Json PlainJson(std::uint64_t value) { return value; }
Json PlainJson(const std::string& value) { return value; }

template <class T>
Json PlainJson(const std::optional<T>& value) {
    return ToJson(*value);  // written only where it has a value
}

template <class T>
Json ListJson(const T& values) {
    Json list = Json::array();
    for (const auto& value : values) list.push_back(ToJson(value));
    return list;
}
template <std::size_t kCount>
Json PlainJson(const std::array<double, kCount>& values) {
    return ListJson(values);
}
template <class T>
Json PlainJson(const std::vector<T>& values) {
    return ListJson(values);
}
Json PlainJson(const std::map<std::string, std::string>& texts) {
    Json object = Json::object();
    for (const auto& [key, text] : texts) object[key] = text;
    return object;
}

template <class T>
Json ToJson(const T& value) {
    if constexpr (std::is_enum_v<T>) {
        return std::string(kWords<T>[static_cast<std::size_t>(value)]);
    } else if constexpr (requires { PlainJson(value); }) {
        return PlainJson(value);
    } else {
        Json object = Json::object();
        FieldWriter<T> fields(value, object);
        DescribeFields(fields, Kind<T>());
        return object;
    }
}

std::string Dump(const Json& value) { return value.dump(-1, ' ', false, Json::error_handler_t::replace); }

/// A list of objects takes a line for each, anything else one line.
void AppendMember(std::string& text, const Json& value) {
    const bool isTable = value.is_array() && !value.empty() && value.front().is_object();
    if (!isTable) {
        text += Dump(value);
        return;
    }
    const char* separator = "[\n  ";
    for (const Json& row : value) {
        text += separator + Dump(row);
        separator = ",\n  ";
    }
    text += "\n ]";
}

}  // namespace

std::string WriteProject(const ProjectData& project) {
    Json root{{"format", kProjectFormat}, {"version", kProjectVersion}};
    root.update(ToJson(project));
    std::string text;
    const char* separator = "{\n ";
    for (const auto& [name, value] : root.items()) {
        text += separator + Dump(name) + ": ";
        AppendMember(text, value);
        separator = ",\n ";
    }
    return text + "\n}\n";
}

}  // namespace zrsheet
