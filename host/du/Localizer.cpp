#include "du/Localizer.h"

#include <dlfcn.h>
#include <unicode/resbund.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <memory>
#include <mutex>
#include <utility>

namespace du {
namespace {

constexpr const char* kEnglish = "en";
constexpr std::array<const char*, 5> kLanguages{kEnglish, "de", "fr", "es", "ja"};

using Messages = std::map<std::string, std::string>;

/// The language and what was loaded of each catalogue. Never destroyed, like the symbols made of its texts.
struct Catalogues {
    std::mutex mutex;  // guards all below
    std::string language = kEnglish;
    std::map<std::pair<std::string, std::string>, Messages> registered;
    std::map<std::pair<std::string, std::string>, std::unique_ptr<icu::ResourceBundle>> loaded;
};

Catalogues& All() {
    static auto* const catalogues = new Catalogues();
    return *catalogues;
}

// Catalogues lie in share/ beside the folder of this library, in the build tree as in the installed one.
std::filesystem::path DataDirectory() {
    Dl_info info{};
    if (dladdr(reinterpret_cast<const void*>(&DataDirectory), &info) == 0) return {};
    return std::filesystem::path(info.dli_fname).parent_path() / ".." / "share" / "zrsheet" / "messages";
}

/// "zrbase:zrmodulesStrings" lies in zrbase/zrmodulesStrings.
std::string PackageOf(const std::string& module) {
    std::string folder = module;
    std::replace(folder.begin(), folder.end(), ':', '/');
    return (DataDirectory() / folder).string();
}

const icu::ResourceBundle* Load(Catalogues& all, const std::string& module, const std::string& language) {
    auto& bundle = all.loaded[{module, language}];
    if (!bundle) {
        UErrorCode status = U_ZERO_ERROR;
        bundle = std::make_unique<icu::ResourceBundle>(icu::UnicodeString::fromUTF8(PackageOf(module)),
                                                       icu::Locale(language.c_str()), status);
    }
    return bundle.get();
}

bool FindRegistered(const Catalogues& all, const std::string& module, const std::string& language,
                    const std::string& id, std::string& text) {
    const auto messages = all.registered.find({module, language});
    if (messages == all.registered.end()) return false;
    const auto message = messages->second.find(id);
    if (message == messages->second.end()) return false;
    text = message->second;
    return true;
}

}  // namespace

Localizer::Localizer(const std::string& module) : m_module(module) {}

std::string Localizer::LocalizeMessage(const std::string& id, int) const {
    return LocalizeMessageIn(GetLanguage(), id);
}

std::string Localizer::LocalizeMessageIn(const std::string& wanted, const std::string& id) const {
    Catalogues& all = All();
    const std::lock_guard hold(all.mutex);
    // Left to itself the library would show an unknown language in that of the machine.
    const std::string language = HasLanguage(wanted) ? wanted : kEnglish;
    std::string text;
    if (FindRegistered(all, m_module, language, id, text)) return text;
    UErrorCode status = U_ZERO_ERROR;
    const icu::UnicodeString message = Load(all, m_module, language)->getStringEx(id.c_str(), status);
    if (U_SUCCESS(status)) return message.toUTF8String(text);
    FindRegistered(all, m_module, kEnglish, id, text);
    return text;
}

void Localizer::SetLanguage(const std::string& language) {
    const std::lock_guard hold(All().mutex);
    All().language = language;
}

std::string Localizer::GetLanguage() {
    const std::lock_guard hold(All().mutex);
    return All().language;
}

bool Localizer::HasLanguage(const std::string& language) {
    return std::find(kLanguages.begin(), kLanguages.end(), language) != kLanguages.end();
}

void Localizer::RegisterModule(const std::string& module, const std::string& language,
                               const Messages& messages) {
    const std::lock_guard hold(All().mutex);
    All().registered[{module, language}] = messages;
}

}  // namespace du
