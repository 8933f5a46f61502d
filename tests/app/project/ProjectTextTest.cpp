#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "app/document/UserError.h"
#include "app/project/ProjectReader.h"
#include "app/project/ProjectWriter.h"
#include "tests/app/project/SampleProject.h"
#include "tests/support/ErrorOf.h"

namespace zrsheet::test {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

std::string ErrorOf(const std::string& text) {
    return zrtest::ErrorOf<UserError>([&] { static_cast<void>(ReadProject(text, "a.zrsheet")); });
}

/// The sample's text with the first `from` replaced; throws when there is none.
std::string Changed(const std::string& from, const std::string& to) {
    std::string text = WriteProject(SampleProject());
    return text.replace(text.find(from), from.size(), to);
}

std::string Repeated(const std::string& text, int times) {
    std::string all;
    for (int i = 0; i < times; ++i) all += text;
    return all;
}

TEST(ProjectText, ComesBackWithEveryMemberAndTheSameBytes) {
    const ProjectData project = SampleProject();
    const std::string text = WriteProject(project);
    const ProjectData read = ReadProject(text, "a.zrsheet");
    EXPECT_EQ(read, project);
    EXPECT_EQ(WriteProject(read), text);  // tells 0 from -0, too
}

TEST(ProjectText, LeavesOutWhatIsAsAlways) {
    ProjectData project;
    project.callouts.resize(1);
    const std::string text = WriteProject(project);
    EXPECT_THAT(text, HasSubstr("\"callouts\": [\n  {\"position\":[0.0,0.0,0.0]}\n ]"));
    EXPECT_THAT(text, Not(HasSubstr("orphans")));
}

TEST(ProjectText, WritesNoFileThatCannotBeReadAgain) {
    ProjectData project = SampleProject();
    project.items[0].tag = "\xff!";
    EXPECT_EQ(ReadProject(WriteProject(project), "a").items[0].tag, "\uFFFD!");
    project.callouts[0].position[1] = std::numeric_limits<double>::quiet_NaN();
    EXPECT_THROW(static_cast<void>(WriteProject(project)), UserError);
}

struct Damage {
    const char* from;
    std::string to;
    const char* error;
};

void ExpectErrors(const std::vector<Damage>& damages) {
    for (const auto& [from, to, error] : damages) {
        EXPECT_THAT(ErrorOf(Changed(from, to)),
                    AllOf(StartsWith("a.zrsheet: "), HasSubstr(error), Not(HasSubstr("\n"))));
    }
}

TEST(ProjectText, RefusesWhatIsNoProjectOfThisVersion) {
    ExpectErrors({
        {"zrsheet project", "zrsheet report", "this is no zrsheet project"},
        {"\"version\":", "\"versions\":", "this is no zrsheet project"},
        {"\"version\": 1", "\"version\": 3", "made by a newer zrsheet (format 3, this one reads up to 1)"},
        {"\"version\": 1,", "\"version\": 3, NEW{", "made by a newer zrsheet"},
        {"\"version\": 1", "\"version\": 0", "version: expected"},
    });
    EXPECT_THAT(ErrorOf(""), HasSubstr("this is no zrsheet project"));
}

// Cut anywhere, a file must not pass for a shorter project. Only the last line's end may be missing.
TEST(ProjectText, RefusesEveryTruncation) {
    const std::string text = WriteProject(SampleProject());
    for (std::size_t missing = 2; missing <= text.size(); missing += 1 + missing / 50)
        ASSERT_NE(ErrorOf(text.substr(0, text.size() - missing)), "no error") << missing;
}

TEST(ProjectText, SaysWhereJsonIsDamaged) {
    ExpectErrors({
        {"\"page\":", "\"page\"", "line 13, byte 9: this is no JSON"},
        {"\"width\":800", "\"width\":NaN", "this is no JSON"},
        {"0.3333333333333333", "1e999", "a number is too large"},
        {"\"tag\":\"T-7\"", "\"tag\":\"\xff\"", "this is no JSON"},
        {"\"tag\":\"T-7\"", "\"tag\":\"\",\"tag\":\"T-7\"", "the member \"tag\" stands twice"},
        {"\"tag\":\"T-7\"", "\"tag\":" + Repeated("[", 100000), "nested too deep"},
        {"\"tag\":\"T-7\"", "\"tag\":" + Repeated("{\"a\":", 100000), "nested too deep"},
    });
}

TEST(ProjectText, SaysWhichValueIsWrong) {
    ExpectErrors({
        {"\"page\": {\"width\":800,\"height\":600}", "\"page\": 7", "page: expected an object"},
        {"\"width\":800", "\"width\":\"800\"", "page.width: expected a whole number"},
        {"\"width\":800", "\"width\":800.5", "page.width: expected a whole number"},
        {"\"width\":800", "\"width\":-800", "page.width: expected a whole number"},
        {"\"width\":800", "\"width\":0", "page.width: expected a whole number from 1 to 32767"},
        {"\"width\":800", "\"width\":5000000000", "page.width: expected a smaller number"},
        {"\"width\":800,", "", "page: the member \"width\" is missing"},
        {"\"width\":800", "\"widht\":800,\"width\":800", "page: the member \"widht\" is not known"},
        {"\"templates\":", "\"themes\": [], \"templates\":", "the member \"themes\" is not known"},
        {"\"per-instance\"", "\"each\"",
         "settings.leaders: expected one of \"one\" \"all\" \"per-instance\""},
        {"\"per-instance\"", "2", "settings.leaders: expected one of"},
        {"\"drawWhenHidden\":true", "\"drawWhenHidden\":1",
         "settings.drawWhenHidden: expected true or false"},
        {"[0.1,0.2,0.3,1.0]", "[0.1,0.2,0.3]", "background.top: expected 4 numbers"},
        {"[0.1,0.2,0.3,1.0]", "[0.1,0.2,0.3,2]", "background.top: expected 4 numbers from 0 to 1"},
        {"[0.1,0.2,0.3,1.0]", "[0.1,0.2,true,1]", "background.top[2]: expected a number"},
        {"\"instances\": [", "\"instances\": {}, \"x\": [", "instances: expected a list"},
        {"\"name\":\"Pump\"", "\"name\":null", "instances[0].name: expected a text"},
        {"\"Tag\":\"\"", "\"Tag\":[]", "parts[0].properties.Tag: expected a text"},
        {"aaaa", "AAAA", "model.sha256: expected 64 hexadecimal digits"},
        {"0.3333333333333333,1.0", "0.3333333333333333,2.0", "parts[0].placement: expected 16 numbers"},
        {"\"placement\":[1.0", "\"placement\":[1e300", "parts[0].placement: expected 16 numbers up to 1e30"},
        {"\"hexagon\"", "\"star\"", "style.shape: expected one of \"round\""},
        {"\"fontSize\":16.0", "\"fontSize\":201",
         "callouts[0].style.fontSize: expected a number from 4 to 200"},
        {"\"lineWidth\":0.5", "\"lineWidth\":0",
         "callouts[0].style.lineWidth: expected a number from 0.1 to 20"},
        {"\"radius\":80.5", "\"radius\":-1", "insets[0].radius: expected a number from 0"},
        {"\"factor\":3.0", "\"factor\":0", "insets[0].factor: expected a number from 0.001"},
        {"{name}", "", "templates[1].text: expected a text that is not empty"},
        {"\"name\":\"arrow-1\"", "\"name\":\"/a\"",
         "symbols[0].name: expected a name that begins with no slash"},
    });
}

TEST(ProjectText, SaysWhatDoesNotFitTogether) {
    ExpectErrors({
        {"[2.0,0.0,0.0,0.0,", "[0,0,0,0,", "camera.worldToPixel: the matrix has no inverse"},
        {"\"path\":\"/Pump/Screw:2\"", "\"path\":\"/Pump\"", "instances[2].path: \"/Pump\" stands twice"},
        {"\"orphans\": [\n  {\"path\":\"/Pump/Gone\"", "\"orphans\": [\n  {\"path\":\"/Pump\"",
         "orphans[0].path: \"/Pump\" stands twice"},
        {"\"name\":\"name\"", "\"name\":\"label\"", "templates[1].name: \"label\" stands twice"},
        {"{\"path\":\"/Pump/Gone\",\"hidden\"", "{\"path\":\"/Pump/Screw\",\"hidden\"",
         "parts[1].path: \"/Pump/Screw\" stands twice"},
        {"{\"path\":\"/Pump/Gone\",\"hidden\"", "{\"path\":\"/Other\",\"hidden\"",
         "parts[1].path: there is no part \"/Other\""},
        {"\"labelTemplate\":\"label\"", "\"labelTemplate\":\"other\"",
         "settings.labelTemplate: there is no template \"other\""},
        {"{\"id\":5,", "{\"id\":2,", "items[2].id: ids must ascend"},
        {"{\"id\":5,", "{\"id\":0,", "items[2].id: expected a whole number from 1"},
        {"{\"id\":1,\"number\":1", "{\"id\":1,\"number\":1,\"parent\":2", "items are each other's parents"},
        {"\"label\":\"Oil\"", "\"number\":1", "items[2].number: another item has it too"},
        {"[\"/Pump/Screw:2\"]", "[\"/Nut\"]", "items[2].instances[0]: there is no part \"/Nut\""},
        {"[\"/Pump/Screw:2\"]", "[\"/Pump\"]", "items[2].instances[0]: \"/Pump\" stands twice"},
        {"\"type\":\"assembly\",\"labelTemplate\":\"label\"", "\"labelTemplate\":\"x\"",
         "callouts[0].labelTemplate: there is no template \"x\""},
        {"\"item\":2", "\"item\":4", "callouts[0].item: there is no item 4"},
        {"\"target\":\"/Pump/Screw:2\"", "\"target\":\"/Nut\"",
         "callouts[0].leaders[0].target: there is no part or symbol \"/Nut\""},
        {"\"symbol\":\"arrow-1\"", "\"symbol\":\"arrow-2\"",
         "callouts[0].leaders[1].symbol: there is no symbol"},
        {"\"assembly\":\"/Pump\"", "\"assembly\":\"/Nut\"",
         "callouts[0].leaders[0].assembly: there is no assembly"},
        {"\"inset\":1", "\"inset\":2", "callouts[0].leaders[0].inset: there is no inset 2"},
        {"\"savedCallouts\": [\n  {", "\"savedCallouts\": [\n  {\"item\":9,",
         "savedCallouts[0].item: there is no item 9"},
        {"\"members\":[{", "\"members\":[{\"item\":9,\"kit\":true,\"type\":\"free\",\"position\":[0,0,0]},{",
         "callouts[2].members[0].item: there is no item 9"},
        {"\"members\":[{", "\"members\":[{\"members\":[{\"position\":[0,0,0]}],\"position\":[0,0,0]},{",
         "callouts[2].members[0].members: a member of a combined callout"},
    });
}

}  // namespace
}  // namespace zrsheet::test
