// Texts of the user interface by message id, in the language that is set.

#pragma once

#include <map>
#include <string>

namespace du {

/// Looks up the messages of one module ("zrbase:zrmodulesStrings"). Catalogues are loaded when first asked
/// for. Any thread.
class Localizer {
public:
    explicit Localizer(const std::string& module);

    /// The message in the current language, else in English. When there is none, actionOnFailure 0 gives "".
    /// Never throws.
    std::string LocalizeMessage(const std::string& id, int actionOnFailure = 0) const;
    /// The same in that language, whatever the current one is.
    std::string LocalizeMessageIn(const std::string& language, const std::string& id) const;

    /// "en", "de", "fr", "es", "ja"; an unknown language shows English.
    static void SetLanguage(const std::string& language);
    static std::string GetLanguage();
    /// Whether a catalogue of the language comes with the program.
    static bool HasLanguage(const std::string& language);
    /// Messages that stand in front of the catalogue's own, for extensions.
    static void RegisterModule(const std::string& module, const std::string& language,
                               const std::map<std::string, std::string>& messages);

private:
    std::string m_module;
};

}  // namespace du
