#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "callouts/Callouts.h"
#include "tests/callouts/EngineFixture.h"
#include "zrk/illustration/IsRunningIllustrate.h"
#include "zrk/world/World.h"
#include "zrkapp/illustration/IllMultiRootContainer.h"
#include "zrkapp/illustration/KorvanFileInfo.h"

namespace zrcallouts {
namespace {

using Contents = std::vector<du::SmartPtr<zrannotations::LabelContent>>;

/// root > group > assembly > part, each with a mass of its own; the item of the part has the label 12,
/// quantity 3.
class LabelText : public EngineFixture {
protected:
    LabelText()
        : m_group(AddAssembly("group")),
          m_assembly(AddAssembly("assembly", false, &m_group)),
          m_part(AddPart("part", {0, 0, 0}, &m_assembly)),
          m_item(AddItem({m_part, AddPart("second", {5, 0, 0}), AddPart("third", {9, 0, 0})}, "12")) {
        Items().SetTag(m_item, "tag");
        SetProperty(m_root, "Part", "Mass", "root mass");
        SetProperty(m_group, "Part", "Mass", "group mass");
        SetProperty(m_assembly, "Part", "Mass", "assembly mass");
        SetProperty(m_part, "Part", "Mass", "part mass");
        SetProperty(m_part, "Part", "Note", "");
        SetProperty(m_part, "", "Vendor", "maker");
        const du::SmartPtr<zrkapp::illustration::KorvanFileInfo> info(
            new zrkapp::illustration::KorvanFileInfo);
        info->SetProperty("Title", "Pump");
        zrk::World::GetWorld()->SetMRC(new zrkapp::illustration::IllMultiRootContainer(info));
    }

    std::string Label(const CalloutPtr& callout, const Contents& contents) const {
        std::string label;
        m_engine->GenerateLabelString(callout, contents, label);
        return label;
    }

    const Part m_group;
    const Part m_assembly;
    const Part m_part;
    const unsigned m_item;
    const TemplatePtr m_plain = MakeTemplate({Literal("x")});
};

TEST_F(LabelText, EachKindOfReferenceShowsItsOwnSource) {
    const struct {
        const char* name;
        Contents contents;
        const char* withItem;
        const char* withoutItem;
    } rows[] = {
        {"nothing", {}, "", ""},
        {"null entries", {nullptr, Literal("a"), nullptr}, "a", "a"},
        {"number and quantity",
         {Literal("No. "), ItemLabel(), Literal(" x"), Reference("System", "zrQTY")},
         "No. 12 x3",
         "No. ??? x???"},
        {"tag", {Reference("System", "zrTAG")}, "tag", "???"},
        {"reserved name, other case", {Reference("System", "zritm")}, "???", "???"},
        {"reserved group, other case", {Reference("system", "zrITM")}, "???", "???"},
        {"property", {Reference("Part", "Mass")}, "part mass", "part mass"},
        {"its name", {Reference("Part", "Mass", "Name")}, "Mass", "Mass"},
        {"its value", {Reference("Part", "Mass", "Value")}, "part mass", "part mass"},
        {"no such property", {Reference("Part", "Volume")}, "???", "???"},
        {"name of no such property", {Reference("Part", "Volume", "Name")}, "???", "???"},
        {"property with empty text", {Reference("Part", "Note")}, "???", "???"},
        {"property without name", {Literal("|"), Reference("Part", ""), Literal("|")}, "||", "||"},
        {"document property", {Reference("Document", "Title")}, "Pump", "Pump"},
        {"its name", {Reference("Document", "Title", "Name")}, "Title", "Title"},
        {"no such document property", {Reference("Document", "Author")}, "", ""},
        {"document property without name", {Literal("|"), Reference("Document", "")}, "|", "|"},
        {"file properties, internal", {Reference("__ZRS_PROPERTIES", "Vendor")}, "maker", "maker"},
        {"file properties, fixed", {Reference("ZRS File Properties", "Vendor")}, "maker", "maker"},
        {"file properties, as shown", {Reference("File Properties", "Vendor")}, "maker", "maker"},
        {"another group", {Reference("file properties", "Vendor")}, "???", "???"},
    };
    const auto with = MakeCallout(m_plain, m_part, m_item);
    const auto without = MakeCallout(m_plain, m_part);
    for (const auto& row : rows) {
        EXPECT_EQ(Label(with, row.contents), row.withItem) << row.name;
        EXPECT_EQ(Label(without, row.contents), row.withoutItem) << row.name << ", no item";
    }
    std::string label = "before ";
    m_engine->GenerateLabelString(with, {ItemLabel()}, label);
    EXPECT_EQ(label, "before 12");
}

TEST_F(LabelText, TheScopeChoosesTheInstanceThatTheApplicationMeans) {
    const auto onPart = MakeCallout(m_plain, m_part);
    const auto onAssembly = MakeCallout(m_plain, m_part, std::nullopt, &m_assembly);
    const auto onRoot = MakeCallout(m_plain, m_part, std::nullopt, &m_root);
    const CalloutPtr onEngineering(new zrannotations::Callout);
    ASSERT_TRUE(onEngineering->Initialize(m_plain, m_part.shape, false, m_assembly.instance));
    const struct {
        const char* name;
        CalloutPtr callout;
        const char* scope;
        const char* illustrating;
        const char* otherwise;
    } rows[] = {
        {"part", onPart, "", "part mass", "part mass"},
        {"part, unknown scope", onPart, "parent", "part mass", "part mass"},
        {"part", onPart, "Parent", "assembly mass", "assembly mass"},
        {"part", onPart, "Root", "root mass", "group mass"},
        {"assembly", onAssembly, "", "assembly mass", "assembly mass"},
        {"assembly", onAssembly, "Parent", "group mass", "group mass"},
        {"assembly", onAssembly, "Root", "root mass", "group mass"},
        {"engineering assembly", onEngineering, "", "part mass", "part mass"},
        {"top", onRoot, "Parent", "???", "???"},
        {"free", MakeFreeCallout(m_plain), "", "???", "???"},
        {"free", MakeFreeCallout(m_plain), "Parent", "???", "???"},
        {"free", MakeFreeCallout(m_plain), "Root", "???", "???"},
    };
    for (const auto& row : rows) {
        const Contents contents{Reference("Part", "Mass", "", row.scope)};
        zrk::illustration::SetRunningIllustrate(true);
        EXPECT_EQ(Label(row.callout, contents), row.illustrating) << row.name << ' ' << row.scope;
        zrk::illustration::SetRunningIllustrate(false);
        EXPECT_EQ(Label(row.callout, contents), row.otherwise) << row.name << ' ' << row.scope << ", viewer";
    }
}

TEST_F(LabelText, TranslatorsSeeNumberedPlaceholders) {
    const struct {
        Contents contents;
        bool hasText;
        const char* text;
    } rows[] = {
        {{Literal("A"), Reference("P", "1"), nullptr, Literal("B"), ItemLabel()}, true, "A{0}B{1}"},
        {{Reference("P", "1"), Reference("P", "2")}, false, "{0}{1}"},
        {{Literal("")}, true, ""},
        {{}, true, "shown"},
    };
    for (const auto& row : rows) {
        const auto callout = MakeCallout(MakeTemplate(row.contents), m_part);
        callout->SetText(du::Symbol("shown"), false);
        du::Symbol text("before");
        EXPECT_EQ(m_engine->GetTemplateLocalizableString(callout, text), row.hasText) << row.text;
        EXPECT_EQ(text.Text(), row.text);
    }
    du::Symbol text("before");
    EXPECT_FALSE(m_engine->GetTemplateLocalizableString(new zrannotations::Callout, text));
    EXPECT_EQ(text.Text(), "before");
}

TEST_F(LabelText, ATranslatedTemplateIsReadBackPieceByPiece) {
    zrannotations::TextProperties bold;
    bold.isBold = true;
    zrannotations::TextProperties large;
    large.size = 40;
    const Contents contents{ContentPtr(new zrannotations::LabelContent("A", bold)),
                            ContentPtr(new zrannotations::LabelContent("P", "zero", large)), nullptr,
                            Literal("B"),
                            ContentPtr(new zrannotations::LabelContent("Q", "one", "Name", "Parent", large))};
    const std::pair<const char*, const char*> rows[] = {
        {"{1} B {0}", "<Q/one>[ B ]<P/zero>"},
        {"", ""},
        {"plain", "[plain]"},
        {"abc{", "[abc]"},
        {"{7}", ""},
        {"{0", "<P/zero>[0]"},
        {"{{", "<P/zero>"},
        {"{0{1", "<P/zero>[1]"},
        {"{}", "<P/zero>"},
        {"{-1}x", "[x]"},
        {"{+1}", "<Q/one>"},
        {"{1x}", "<Q/one>"},
        {"{x1}", "<P/zero>"},
        {"{2}", ""},
        {"{4294967296}{99999999999999999999}y", "[y]"},
        {"a}b{0}}", "[a}b]<P/zero>[}]"},
    };
    for (const auto& [text, expected] : rows) {
        Contents result{nullptr};
        m_engine->LocalizeTemplateText(du::Symbol(text), contents, result);
        ASSERT_FALSE(result.front()) << "what was there is gone";
        std::string read;
        for (std::size_t i = 1; i < result.size(); ++i) {
            const auto& content = *result[i];
            EXPECT_TRUE(content.TextProps() == (content.Kind() == 0 ? bold : large)) << text;
            EXPECT_EQ(content.ShownPart() + content.InstanceScope(), "") << text;
            read += content.Kind() == 0 ? "[" + content.TextOrGroup() + "]"
                                        : "<" + content.TextOrGroup() + "/" + content.PropertyName() + ">";
        }
        EXPECT_EQ(read, expected) << text;
    }
    Contents none;
    m_engine->LocalizeTemplateText(du::Symbol("a{0}"), {}, none);
    EXPECT_TRUE(none.empty());
}

}  // namespace
}  // namespace zrcallouts
