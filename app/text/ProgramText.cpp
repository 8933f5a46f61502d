#include "app/text/ProgramText.h"

#include <unicode/msgfmt.h>

#include "du/Localizer.h"

namespace zrsheet {
namespace {

std::string& Spoken() {
    static std::string language;
    return language;
}

icu::Formattable FormattableOf(const TextArgument& argument) {
    if (const auto* text = std::get_if<std::string>(&argument.value))
        return icu::UnicodeString::fromUTF8(*text);
    return std::get<std::int64_t>(argument.value);
}

}  // namespace

void SetSpokenLanguage(const std::string& language) { Spoken() = language; }

std::string SpokenLanguage() { return Spoken().empty() ? du::Localizer::GetLanguage() : Spoken(); }

std::string Text(const std::string& id) {
    const std::string text = du::Localizer("zrsheet:program").LocalizeMessageIn(SpokenLanguage(), id);
    return text.empty() ? id : text;
}

std::string Text(const std::string& id, const std::vector<TextArgument>& arguments) {
    std::vector<icu::UnicodeString> names;
    std::vector<icu::Formattable> values;
    for (const TextArgument& argument : arguments) {
        names.push_back(icu::UnicodeString::fromUTF8(argument.name));
        values.push_back(FormattableOf(argument));
    }
    UErrorCode status = U_ZERO_ERROR;
    const icu::Locale locale(SpokenLanguage().c_str());
    const icu::MessageFormat pattern(icu::UnicodeString::fromUTF8(Text(id)), locale, status);
    icu::UnicodeString filled;
    pattern.format(names.data(), values.data(), static_cast<int>(arguments.size()), filled, status);
    std::string text;
    return U_SUCCESS(status) ? filled.toUTF8String(text) : id;
}

std::string CommandText(std::string_view id, std::string_view english) {
    const std::string text =
        du::Localizer("zrsheet:commands").LocalizeMessageIn(SpokenLanguage(), std::string(id));
    return text.empty() ? std::string(english) : text;
}

}  // namespace zrsheet
