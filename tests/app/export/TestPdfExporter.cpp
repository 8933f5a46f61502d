#include "app/export/PdfExporter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdlib.h>

#include "tests/app/export/OtherProgram.h"
#include "tests/app/export/SampleSheet.h"
#include "tests/app/file/TemporaryFolder.h"

namespace zrsheet::test {
namespace {

using ::testing::AllOf;
using ::testing::ContainsRegex;
using ::testing::HasSubstr;
using ::testing::Not;

/// The sample on an A5 page of its own pixels, with a page for its list.
Sheet PaperSheet() {
    Sheet sheet = SampleSheet();
    sheet.width = 420;
    sheet.height = 296;
    sheet.style.millimetre = 2.0;
    sheet.frame = SheetFrame{{20, 20, 400, 276}, {{{300, 240, 400, 276}, "Title", "Block title", true}}};
    SheetListPage page{{{20, 20, 400, 276}, {{{300, 240, 400, 276}, "Sheet", "2 / 2", false}}}, sheet.tables};
    page.tables[0].rows[1][1].text = "Only on page two";
    sheet.listPages = {page};
    return sheet;
}

class PdfFile {
public:
    explicit PdfFile(const Sheet& sheet) { PutFile(m_folder / "a.pdf", PdfBytes(sheet)); }

    std::string Ask(const std::string& program, const std::string& rest = "") const {
        return OutputOf(program + " " + (m_folder / "a.pdf").string() + " " + rest);
    }

private:
    TemporaryFolder m_folder;
};

TEST(PdfExporter, MakesPagesAsLargeAsTheirPaper) {
    EXPECT_THAT(PdfFile(PaperSheet()).Ask("pdfinfo"),
                AllOf(ContainsRegex("Title: +Pump\n"), ContainsRegex("Pages: +2\n"),
                      ContainsRegex("Page size: +595.276 x 419.528 pts")));
    EXPECT_THAT(PdfFile(SampleSheet()).Ask("pdfinfo"),
                AllOf(ContainsRegex("Pages: +1\n"), ContainsRegex("Page size: +300 x 150 pts")))
        << "96 pixels to an inch without paper";
}

TEST(PdfExporter, KeepsTextsAsTextInFontsOfItsOwn) {
    const PdfFile file(PaperSheet());
    EXPECT_THAT(file.Ask("pdftotext -f 1 -l 1", "-"),
                AllOf(HasSubstr("2 (4x)"), HasSubstr("Pump housing"), HasSubstr("Block title"),
                      Not(HasSubstr("Only on page two"))));
    EXPECT_THAT(file.Ask("pdftotext -f 2 -l 2", "-"),
                AllOf(HasSubstr("Only on page two"), HasSubstr("Sheet"), Not(HasSubstr("2 (4x)"))));
    const std::string fonts = file.Ask("pdffonts");
    EXPECT_THAT(fonts, AllOf(HasSubstr("DejaVuSans"), Not(HasSubstr(" no "))))
        << "each is embedded, as a subset, and can be searched";
}

// Nothing but what the author made a raster is one.
TEST(PdfExporter, DrawsLinesAsVectors) {
    Sheet sheet = PaperSheet();
    EXPECT_THAT(PdfFile(sheet).Ask("pdfimages -list"), ContainsRegex("image +50 +60"));
    sheet.picture = {};
    sheet.insets.clear();
    ArtLine line;
    line.points = {{0, 0}, {50, 60}};
    sheet.lines = {line};
    EXPECT_THAT(PdfFile(sheet).Ask("pdfimages -list"), Not(HasSubstr("image ")));
}

TEST(PdfExporter, HasBookmarksForSheetItemsAndPagesOfTheList) {
    const TemporaryFolder folder;
    PutFile(folder / "a.pdf", PdfBytes(PaperSheet()));
    const std::string outline =
        OutputOf("pdftohtml -xml -i -stdout " + (folder / "a.pdf").string() + " | sed -n '/<outline>/,$p'");
    EXPECT_THAT(outline, AllOf(HasSubstr("<item page=\"1\">Pump</item>\n<outline>"),
                               HasSubstr("<item page=\"1\">2  Screw</item>"),
                               HasSubstr("</outline>\n<item page=\"2\">1 – 2</item>")));
    const std::string bytes = ReadFile(folder / "a.pdf");
    const std::size_t screw = bytes.find("/Title (2  Screw)");
    ASSERT_NE(screw, std::string::npos);
    EXPECT_THAT(bytes.substr(screw, 150), HasSubstr("/XYZ 28.35 277.79")) << "where its balloon is";
}

TEST(PdfExporter, TellsTheDateItIsGivenAndElseAlwaysTheSame) {
    unsetenv("SOURCE_DATE_EPOCH");
    const std::string bytes = PdfBytes(PaperSheet());
    EXPECT_EQ(bytes, PdfBytes(PaperSheet()));
    const struct {
        const char* given;
        const char* told;
    } rows[] = {{"1700000000", "20231114221320"}, {"soon", "20000101000000"}, {"-5", "20000101000000"}};
    for (const auto& row : rows) {
        setenv("SOURCE_DATE_EPOCH", row.given, 1);
        const std::string dated = PdfBytes(PaperSheet());
        const std::size_t created = dated.find("/CreationDate");
        ASSERT_NE(created, std::string::npos);
        EXPECT_THAT(dated.substr(created, 40), HasSubstr(row.told)) << row.given;
        EXPECT_NE(dated.find(std::string("/ModDate (") + row.told), std::string::npos) << row.given;
    }
    unsetenv("SOURCE_DATE_EPOCH");
}

}  // namespace
}  // namespace zrsheet::test
