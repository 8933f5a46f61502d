#include "du/Localizer.h"

#include <gtest/gtest.h>
#include <unicode/locid.h>

#include <string>

namespace du {
namespace {

/// Leaves the language and the machine's locale as they were.
class LocalizerTest : public testing::Test {
protected:
    void TearDown() override { Localizer::SetLanguage("en"); }

    const Localizer m_messages{"zrbase:zrmodulesStrings"};
};

TEST_F(LocalizerTest, AnswersInTheLanguageThatIsSet) {
    const struct {
        const char* language;
        const char* id;
        const char* text;
    } rows[] = {
        {"en", "850", "Callout"},
        {"de", "850", "Positionsnummer"},
        {"de", "3206", "Dateieigenschaften"},
        {"en", "142", "Create Callouts"},
        {"tlh", "850", "Callout"},
        {"", "850", "Callout"},
        {"fr", "852", "???"},
        {"de", "99999", ""},
        {"de", "", ""},
    };
    for (const auto& row : rows) {
        Localizer::SetLanguage(row.language);
        EXPECT_EQ(m_messages.LocalizeMessage(row.id, 0), row.text) << row.language << " " << row.id;
    }
    EXPECT_EQ(Localizer("zrbase:noSuchModule").LocalizeMessage("850"), "");
}

// A library that falls back to the machine's own locale would mix two languages on one sheet.
TEST_F(LocalizerTest, ShowsEnglishForAnUnknownLanguageOnAGermanMachine) {
    const icu::Locale before;
    UErrorCode status = U_ZERO_ERROR;
    icu::Locale::setDefault(icu::Locale::getGermany(), status);
    Localizer::SetLanguage("xx");
    EXPECT_EQ(m_messages.LocalizeMessage("850"), "Callout");
    icu::Locale::setDefault(before, status);
}

}  // namespace
}  // namespace du
