#include "zrannotations/TAnnotation.h"

#include <gtest/gtest.h>

#include "zrannotations/CalloutTemplates.h"

namespace zrannotations {
namespace {

using ContentPtr = du::SmartPtr<LabelContent>;
using TemplatePtr = du::SmartPtr<TAnnotation>;

ContentPtr Text(const std::string& text) { return new LabelContent(text, TextProperties()); }

ContentPtr Reference(const std::string& group, const std::string& name) {
    return new LabelContent(group, name, TextProperties());
}

TemplatePtr Make(const std::string& id, TAnnotation::Contents contents = {}) {
    return new TAnnotation(id, std::move(contents), nullptr);
}

TEST(TAnnotation, TellsWhatItsPiecesNeed) {
    const struct {
        const char* name;
        TAnnotation::Contents contents;
        bool needsItems;
        bool needsProperties;
    } rows[] = {
        {"nothing", {}, false, false},
        {"literal", {Text("System")}, false, false},
        {"item number", {Text("No. "), Reference("System", "zrITM")}, true, false},
        {"quantity", {Reference("System", "zrQTY")}, true, false},
        {"tag", {Reference("System", "zrTAG")}, true, false},
        {"other system value", {Reference("System", "zrDATE")}, false, false},
        {"part property", {Text("("), Reference("Material", "Name")}, false, true},
        {"item name in another group", {Reference("Material", "zrITM")}, false, true},
        {"both", {Reference("System", "zrITM"), Reference("", "Name")}, true, true},
    };
    for (const auto& row : rows) {
        const TemplatePtr definition = Make("t", row.contents);
        EXPECT_EQ(definition->RequiresItemList(), row.needsItems) << row.name;
        EXPECT_EQ(definition->RequiresPropertyVisitor(), row.needsProperties) << row.name;
    }
}

TEST(TAnnotation, AppendsItsPiecesInOrder) {
    const ContentPtr before = Text("before");
    const ContentPtr first = Text("1");
    const ContentPtr second = Reference("System", "zrITM");
    TAnnotation::Contents contents{before};
    EXPECT_FALSE(Make("empty")->GetTextContent(contents));
    EXPECT_TRUE(Make("t", {first, second})->GetTextContent(contents));
    EXPECT_EQ(contents, (TAnnotation::Contents{before, first, second}));
}

TEST(CalloutTemplates, KeepTheirOrderAndReplaceEqualIds) {
    ClearCalloutTemplates();
    const TemplatePtr a = Make("a");
    const TemplatePtr b = Make("b");
    const TemplatePtr otherA = Make("a");
    for (const auto& definition : {a, b, otherA}) AddCalloutTemplate(definition);
    EXPECT_EQ(GetCalloutTemplates(), (std::vector<TemplatePtr>{otherA, b}));
    EXPECT_EQ(FindCalloutTemplate("a"), otherA);
    EXPECT_FALSE(FindCalloutTemplate("c"));
    ClearCalloutTemplates();
    EXPECT_TRUE(GetCalloutTemplates().empty());
    EXPECT_FALSE(FindCalloutTemplate("b"));
}

}  // namespace
}  // namespace zrannotations
