#include "app/export/XlsxExporter.h"

#include <xlsxwriter.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <system_error>
#include <vector>

#include "app/export/ExportError.h"
#include "app/export/FileDate.h"
#include "app/render/CleanText.h"
#include "app/sheet/ListTable.h"

namespace zrsheet {
namespace {

namespace fs = std::filesystem;

// In UTF-16 units, of which a byte of UTF-8 never needs more than one.
constexpr std::size_t kLongestText = 32767;
constexpr std::size_t kLongestTitle = 255;
constexpr double kLeastColumn = 8.0;  // in digits
constexpr double kMostColumn = 60.0;
constexpr std::uint8_t kDeepestIndent = 15;

/// A folder that goes with all that is in it: the library writes to files only.
class ScratchFolder {
public:
    ScratchFolder() : m_path((fs::temp_directory_path() / "zrsheet-XXXXXX").string()) {
        if (mkdtemp(m_path.data()) == nullptr) {
            throw ExportError("Cannot write the workbook: no folder can be made in \"" +
                              fs::temp_directory_path().string() + "\". Make room there or set TMPDIR.");
        }
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;
    ~ScratchFolder() {
        std::error_code error;
        fs::remove_all(m_path, error);
    }

    std::string& Path() { return m_path; }

private:
    std::string m_path;
};

/// The text as a file can hold it, cut between characters.
std::string Fitting(const std::string& text, std::size_t most = kLongestText) {
    std::string clean = CleanText(text);
    if (clean.size() <= most) return clean;
    std::size_t end = most;
    while ((static_cast<unsigned char>(clean[end]) & 0xC0U) == 0x80U) --end;
    clean.resize(end);
    return clean;
}

std::size_t CharactersIn(const std::string& text) {
    return static_cast<std::size_t>(std::count_if(
        text.begin(), text.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U; }));
}

bool IsNumber(const ListColumn& column) {
    return column.field == ListField::Quantity || column.field == ListField::Level;
}

class WorkbookWriter {
public:
    WorkbookWriter(const Sheet& sheet, const std::string& file, std::string& folder)
        : m_sheet(sheet), m_columns(ListColumnsOf(sheet)) {
        lxw_workbook_options options{};
        options.tmpdir = folder.data();
        m_book = workbook_new_opt(file.c_str(), &options);
        m_page = workbook_add_worksheet(m_book, "Parts");
        m_head = workbook_add_format(m_book);
        format_set_bold(m_head);
        format_set_bottom(m_head, LXW_BORDER_THIN);
    }

    void Write() {
        SetProperties();
        for (std::size_t i = 0; i < m_columns.size(); ++i) WriteColumn(static_cast<lxw_col_t>(i));
        worksheet_freeze_panes(m_page, 1, 0);
        worksheet_repeat_rows(m_page, 0, 0);
        worksheet_autofilter(m_page, 0, 0, static_cast<lxw_row_t>(m_sheet.items.size()),
                             static_cast<lxw_col_t>(m_columns.size() - 1));
        if (const lxw_error error = workbook_close(m_book); error != LXW_NO_ERROR) {
            throw ExportError(std::string("Cannot write the workbook: ") + lxw_strerror(error) +
                              " Make room in the system's temporary folder or set TMPDIR.");
        }
    }

private:
    void SetProperties() {
        std::string title = Fitting(m_sheet.title, kLongestTitle);
        lxw_doc_properties properties{};
        properties.title = title.data();
        std::tm date = FileDate();
        properties.created = timegm(&date);
        workbook_set_properties(m_book, &properties);
    }

    void WriteColumn(lxw_col_t place) {
        const ListColumn& column = m_columns[place];
        const std::string head = Fitting(HeadText(column));
        worksheet_write_string(m_page, 0, place, head.c_str(), m_head);
        std::size_t longest = CharactersIn(head);
        lxw_row_t row = 0;
        for (const SheetItem& item : m_sheet.items) {
            ++row;
            const std::string text = Fitting(CellText(item, column));
            longest = std::max(longest, CharactersIn(text));
            if (IsNumber(column)) {
                const double number = column.field == ListField::Level ? item.level : item.quantity;
                worksheet_write_number(m_page, row, place, number, nullptr);
            } else if (!text.empty()) {
                const bool isName = column.field == ListField::Name;
                worksheet_write_string(m_page, row, place, text.c_str(),
                                       isName ? Indent(item.level) : nullptr);
            }
        }
        const double width = std::clamp(static_cast<double>(longest) + 2.0, kLeastColumn, kMostColumn);
        worksheet_set_column(m_page, place, place, width, nullptr);
    }

    lxw_format* Indent(unsigned level) {
        if (level == 0) return nullptr;
        lxw_format*& format = m_indents[level];
        if (format == nullptr) {
            format = workbook_add_format(m_book);
            format_set_indent(format, static_cast<std::uint8_t>(std::min<unsigned>(level, kDeepestIndent)));
        }
        return format;
    }

    const Sheet& m_sheet;
    std::vector<ListColumn> m_columns;
    // The book's; it frees them as it is closed.
    lxw_workbook* m_book = nullptr;
    lxw_worksheet* m_page = nullptr;
    lxw_format* m_head = nullptr;
    std::map<unsigned, lxw_format*> m_indents;
};

}  // namespace

std::string XlsxBytes(const Sheet& sheet) {
    ScratchFolder folder;
    const std::string file = folder.Path() + "/parts.xlsx";
    WorkbookWriter(sheet, file, folder.Path()).Write();
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

}  // namespace zrsheet
