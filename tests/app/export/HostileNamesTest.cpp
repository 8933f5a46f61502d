// Names that files of others may hold, in every output.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <pugixml.hpp>

#include "app/export/ExportSheet.h"
#include "app/import/Utf8Text.h"
#include "tests/app/export/OtherProgram.h"
#include "tests/app/export/SampleSheet.h"
#include "tests/app/file/TemporaryFolder.h"

namespace zrsheet::test {
namespace {

/// The name wherever an assembly's file can put one.
Sheet SheetOf(const std::string& name) {
    Sheet sheet = SampleSheet();
    sheet.title = name;
    sheet.items[0].name = sheet.items[0].tag = sheet.items[0].label = name;
    sheet.items[0].properties = {{name, name}};
    sheet.callouts[0].label = name;
    sheet.callouts[0].instances = {name};
    sheet.hotspots = {{name, true, 1, name, name, name, {{{0, 0}, {9, 0}, {9, 9}}}}};
    sheet.tables[0].rows[0][1].text = name;
    sheet.frame = SheetFrame{{10, 10, 390, 190}, {{{300, 150, 390, 190}, "Title", name, true}}};
    return sheet;
}

void ExpectWellFormed(const std::string& xml, const std::string& what) {
    pugi::xml_document document;
    EXPECT_TRUE(document.load_string(xml.c_str())) << what;
    EXPECT_EQ(document.select_nodes("//script").size(), 0U) << what;
    for (const char c : xml) ASSERT_TRUE(c == '\n' || c == '\t' || c < 0 || c >= ' ') << what;
    EXPECT_THAT(xml, testing::Not(testing::ContainsRegex("&#(0[0-8]|1[124-9]|2[0-9]|3[01]);"))) << what;
    EXPECT_TRUE(ValidUtf8(xml) == xml) << what;
}

/// Says how many rows of equally many fields there are, and how many of these are formulas.
const std::string kReadCsv =
    "import csv, sys; sys.stdout.reconfigure(errors=\"replace\");"
    "rows = list(csv.reader(open(sys.argv[1], newline=\"\", encoding=\"utf-8\"), strict=True));"
    "same = [row for row in rows if len(row) == len(rows[0])];"
    "bad = [f for row in rows for f in row if f.strip()[:1] in set(\"=+-@\")];"
    "print(len(same), len(bad))";

/// From the first to the last of them.
std::string Between(const std::string& text, const std::string& first, const std::string& last) {
    const std::size_t from = text.find(first);
    const std::size_t to = text.find(last, from);
    if (from == std::string::npos || to == std::string::npos) return "no " + first;
    return text.substr(from + first.size(), to - from - first.size());
}

/// What names can end in the page's own words, ends where the page does it.
void ExpectNoMarkup(const std::string& html) {
    EXPECT_THAT(Between(html, "<title>", "<style"), testing::EndsWith("</title>\n"));
    EXPECT_EQ(Between(html, "<title>", "</title>").find_first_of("<>\x01\x1b\xff"), std::string::npos);
    const std::string data = Between(html, "id=\"data\">", "</script>");
    EXPECT_EQ(data.find('<'), std::string::npos);
    EXPECT_TRUE(nlohmann::json::accept(data));
}

// Each file is sound to a program that did not write it, and no name becomes markup, code or a broken row.
TEST(HostileNames, AreJustNamesInEveryOutput) {
    const struct {
        const char* what;
        std::string name;
    } rows[] = {{"control characters", std::string("a\0b\x01\x1b[31m\x7f\r\n", 12)},
                {"markup", "</title><script>alert(1)</script><!-- ]]> &amp; \"x\" 'y' {{data}}"},
                {"right to left", "\u202e\u05d0\u05d1 \u0627\u0644 \u2066x"},
                {"not UTF-8", "\xff\xfe\xc3\x28 \xed\xa0\x80 \xf0\x9f"},
                {"a formula", "=cmd|' /C calc'!A0"},
                {"a formula behind a control character", "\x01\t+cmd|' /C calc'!A0"},
                {"outline syntax", "page=9 pos=[1 2] '\\"},
                {"10,000 characters", std::string(10000, 'W')},
                {"10,000 wide ones",
                 [] {
                     std::string text;
                     for (int i = 0; i < 10000; ++i) text += "\u9600";
                     return text;
                 }()},
                {"33,000 characters", std::string(33000, 'x')},
                {"nothing", ""}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        const TemporaryFolder folder;
        const Sheet sheet = SheetOf(row.name);
        std::vector<SheetFile> files;
        for (const std::string_view extension : ExportExtensions())
            files.push_back({sheet, folder / ("a" + std::string(extension))});
        ASSERT_NO_THROW(ExportSheets(files));
        for (const char* file : {"a.svg", "a.xml"}) ExpectWellFormed(ReadFile(folder / file), file);
        EXPECT_TRUE(nlohmann::json::accept(ReadFile(folder / "a.json")));
        const auto path = [&folder](const char* file) { return (folder / file).string(); };
        EXPECT_EQ(OutputOf("python3 -c '" + kReadCsv + "' " + path("a.csv")), "3 0\n");
        ExpectNoMarkup(ReadFile(folder / "a.html"));
        ExpectWellFormed(OutputOf("unzip -p " + path("a.xlsx") + " xl/sharedStrings.xml"), "a.xlsx");
        EXPECT_NE(OutputOf("pdfinfo " + path("a.pdf")).find("Pages:           1"), std::string::npos);
        EXPECT_NE(OutputOf("pdftotext " + path("a.pdf") + " -").find("Screw"), std::string::npos);
    }
}

}  // namespace
}  // namespace zrsheet::test
