#include "app/export/XlsxExporter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <pugixml.hpp>

#include "tests/app/export/OtherProgram.h"
#include "tests/app/export/SampleSheet.h"
#include "tests/app/file/TemporaryFolder.h"

namespace zrsheet::test {
namespace {

using ::testing::ElementsAre;

/// A workbook, unpacked and read without the library that wrote it.
class Workbook {
public:
    explicit Workbook(const Sheet& sheet) {
        PutFile(m_folder / "a.xlsx", XlsxBytes(sheet));
        m_strings.load_string(Part("xl/sharedStrings.xml").c_str());
        m_page.load_string(Part("xl/worksheets/sheet1.xml").c_str());
        m_styles.load_string(Part("xl/styles.xml").c_str());
    }

    std::string Part(const std::string& name) const {
        return OutputOf("unzip -p " + (m_folder / "a.xlsx").string() + " " + name);
    }

    /// Texts in quotation marks, numbers as they are, formulas as such.
    std::vector<std::string> Row(int number) const {
        std::vector<std::string> cells;
        for (const auto cell : RowNode(number).children("c")) {
            const std::string value = cell.child_value("v");
            if (cell.child("f"))
                cells.push_back("formula");
            else if (std::string_view(cell.attribute("t").value()) == "s")
                cells.push_back('"' + Text(value) + '"');
            else if (!value.empty())
                cells.push_back(value);
        }
        return cells;
    }

    int IndentOf(int row, const std::string& cell) const {
        const auto found = RowNode(row).find_child_by_attribute("r", cell.c_str());
        auto style = m_styles.child("styleSheet").child("cellXfs").child("xf");
        for (int i = found.attribute("s").as_int(); i > 0; --i) style = style.next_sibling("xf");
        return style.child("alignment").attribute("indent").as_int();
    }

private:
    pugi::xml_node RowNode(int number) const {
        return m_page.child("worksheet")
            .child("sheetData")
            .find_child_by_attribute("r", std::to_string(number).c_str());
    }

    std::string Text(const std::string& place) const {
        auto node = m_strings.child("sst").child("si");
        for (int i = std::stoi(place); i > 0; --i) node = node.next_sibling("si");
        return node.child("t").text().get();
    }

    TemporaryFolder m_folder;
    pugi::xml_document m_strings;
    pugi::xml_document m_page;
    pugi::xml_document m_styles;
};

TEST(XlsxExporter, HoldsTheListWithNumbersAsNumbersAndTextsAsTexts) {
    Sheet sheet = SampleSheet();
    sheet.items[1].name = "=HYPERLINK(\"http://a\")";
    sheet.items[1].tag = "12";
    const Workbook book(sheet);
    EXPECT_THAT(book.Row(1), ElementsAre("\"Item\"", "\"Quantity\"", "\"Level\"", "\"Name\"", "\"Tag\"",
                                         "\"Mass\"", "\"Material\""));
    EXPECT_THAT(book.Row(2), ElementsAre("\"1\"", "1", "0", "\"Pump housing\"", "\"T-7\"", "\"Cast iron\""));
    EXPECT_THAT(book.Row(3),
                ElementsAre("\"2\"", "4", "1", "\"=HYPERLINK(\"http://a\")\"", "\"12\"", "\"0.2\""));
    EXPECT_EQ(book.IndentOf(2, "D2"), 0);
    EXPECT_EQ(book.IndentOf(3, "D3"), 1) << "an item of the second level";
}

TEST(XlsxExporter, TellsNoDateOfToday) {
    const Workbook book(SampleSheet());
    EXPECT_NE(book.Part("docProps/core.xml").find("2000-01-01T00:00:00Z"), std::string::npos);
}

}  // namespace
}  // namespace zrsheet::test
