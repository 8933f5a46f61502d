// Template strings, the author's and the translator's: what is accepted means the same after a round trip.

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "app/document/LabelTemplate.h"
#include "app/document/TemplateFile.h"
#include "app/document/TemplateLibrary.h"
#include "app/document/UserError.h"
#include "app/import/Utf8Text.h"
#include "callouts/Callouts.h"
#include "tests/app/file/TemporaryFolder.h"
#include "tests/fuzz/FuzzTarget.h"
#include "zrkapp/illustration/HostSession.h"

namespace zrsheet {
namespace {

using Contents = zrannotations::TAnnotation::Contents;

/// Literal text that stands together, and references by group and name, as translators' strings keep them.
std::vector<std::string> PiecesOf(const Contents& contents) {
    std::vector<std::string> pieces;
    bool isText = false;
    for (const auto& content : contents) {
        const bool wasText = std::exchange(isText, content->Kind() == 0);
        if (isText && wasText) {
            pieces.back() += content->TextOrGroup();
        } else {
            pieces.push_back(isText ? content->TextOrGroup()
                                    : "<" + content->TextOrGroup() + "/" + content->PropertyName() + ">");
        }
    }
    return pieces;
}

bool HasBrace(const Contents& contents) {
    return std::any_of(contents.begin(), contents.end(), [](const auto& content) {
        return content->Kind() == 0 && content->TextOrGroup().find('{') != std::string::npos;
    });
}

void ExpectTranslatable(const zrcallouts::Callouts& engine, const Contents& contents) {
    const du::SmartPtr<zrannotations::TAnnotation> definition(
        new zrannotations::TAnnotation("fuzzed", contents, nullptr));
    const du::SmartPtr<zrannotations::Callout> callout(new zrannotations::Callout);
    callout->InitializeFree(definition, {0, 0, 0});
    du::Symbol text;
    engine.GetTemplateLocalizableString(callout, text);
    Contents back;
    engine.LocalizeTemplateText(text, contents, back);
    // In a translator's string no brace stands for itself.
    EXPECT_TRUE(HasBrace(contents) || PiecesOf(back) == PiecesOf(contents)) << text.Text();
}

/// Whatever translators write, labels consist of their text and of the template's own references.
void ExpectReadable(const zrcallouts::Callouts& engine, const std::string& translation,
                    const Contents& contents) {
    Contents read;
    engine.LocalizeTemplateText(du::Symbol(translation), contents, read);
    const auto known = PiecesOf(contents);
    for (const auto& content : read) {
        if (content->Kind() == 0) {
            EXPECT_NE(translation.find(content->TextOrGroup()), std::string::npos);
        } else {
            const auto piece = PiecesOf({content}).front();
            EXPECT_NE(std::find(known.begin(), known.end(), piece), known.end()) << piece;
        }
    }
}

void ExpectKept(const zrcallouts::Callouts& engine, const NamedTemplate& named) {
    static const test::TemporaryFolder folder;
    TemplateLibrary library;
    library.Define(named);
    library.SetLanguage(engine, "de");
    library.SetLanguage(engine, "en");
    test::PutFile(folder / "templates.json", TemplatesText(library.All()));
    EXPECT_EQ(ReadTemplates(folder / "templates.json"), std::vector<NamedTemplate>{named});
}

}  // namespace
}  // namespace zrsheet

// The template's text, a line end, its translation.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const zrkapp::illustration::HostSession host(1);
    static const du::SmartPtr<zrcallouts::Callouts> engine(new zrcallouts::Callouts);
    const std::string input(reinterpret_cast<const char*>(data), size);
    const std::string text = input.substr(0, input.find('\n'));
    const std::string translation = input.substr(std::min(text.size() + 1, input.size()));
    try {
        const auto contents = zrsheet::ParseLabelTemplate(text);
        zrsheet::ExpectTranslatable(*engine, contents);
        zrsheet::ExpectReadable(*engine, translation, contents);
        // Names and texts reach the program as UTF-8 or not at all.
        if (zrsheet::ValidUtf8(input) == input)
            zrsheet::ExpectKept(*engine, {"fuzzed", text, {{"de", translation}}});
    } catch (const zrsheet::UserError& error) {
        EXPECT_NE(std::string_view(error.what()), "");
    }
    return 0;
}
