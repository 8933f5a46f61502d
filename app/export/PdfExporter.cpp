#include "app/export/PdfExporter.h"

#include <cairo/cairo-pdf.h>
#include <fmt/format.h>

#include <cstddef>
#include <map>

#include "app/export/CairoPainter.h"
#include "app/export/CairoSurface.h"
#include "app/export/ExportError.h"
#include "app/export/FileDate.h"
#include "app/export/SheetDrawing.h"
#include "app/render/CleanText.h"
#include "app/render/TextMetrics.h"

namespace zrsheet {
namespace {

constexpr double kPointsPerMillimetre = 72.0 / 25.4;
// Of bookmarks: page pixels at a size that viewers show them in.
constexpr double kBookmarkWidth = 480.0;
constexpr double kBookmarkSize = 12.0;

cairo_status_t Append(void* text, const unsigned char* bytes, unsigned count) {
    static_cast<std::string*>(text)->append(reinterpret_cast<const char*>(bytes), count);
    return CAIRO_STATUS_SUCCESS;
}

class PdfWriter {
public:
    explicit PdfWriter(const Sheet& sheet)
        : m_sheet(sheet),
          m_points(kPointsPerMillimetre / sheet.style.millimetre),
          m_surface(cairo_pdf_surface_create_for_stream(&Append, &m_bytes, sheet.width * m_points,
                                                        sheet.height * m_points)) {}

    std::string Write() {
        SetTexts();
        AddBookmarks();
        PaintPages();
        cairo_surface_finish(m_surface.get());
        if (const auto status = cairo_surface_status(m_surface.get()); status != CAIRO_STATUS_SUCCESS) {
            throw ExportError(std::string("Cannot write the pages: ") + cairo_status_to_string(status) +
                              ". Choose a smaller page or fewer parts.");
        }
        return std::move(m_bytes);
    }

private:
    void SetTexts() {
        const std::tm date = FileDate();
        const std::string created =
            fmt::format("{:04}-{:02}-{:02}T{:02}:{:02}:{:02}Z", date.tm_year + 1900, date.tm_mon + 1,
                        date.tm_mday, date.tm_hour, date.tm_min, date.tm_sec);
        const auto set = [this](cairo_pdf_metadata_t which, const std::string& text) {
            cairo_pdf_surface_set_metadata(m_surface.get(), which, text.c_str());
        };
        set(CAIRO_PDF_METADATA_TITLE, CleanText(m_sheet.title));
        set(CAIRO_PDF_METADATA_CREATOR, "zrsheet");
        set(CAIRO_PDF_METADATA_CREATE_DATE, created);
        set(CAIRO_PDF_METADATA_MOD_DATE, created);
    }

    int AddBookmark(int parent, const std::string& text, std::size_t page, const PagePoint& place) {
        const std::string target =
            fmt::format("page={} pos=[{:.2f} {:.2f}]", page, place.x * m_points, place.y * m_points);
        const std::string shown = Ellipsize(text, kBookmarkSize, kBookmarkWidth);
        return cairo_pdf_surface_add_outline(m_surface.get(), parent, shown.c_str(), target.c_str(),
                                             static_cast<cairo_pdf_outline_flags_t>(0));
    }

    /// The sheet, its items where their balloons are, and the pages of the list.
    void AddBookmarks() {
        std::map<unsigned, PagePoint> balloons;
        for (const SheetCallout& callout : m_sheet.callouts) {
            if (callout.hasItem)
                balloons.try_emplace(callout.itemId, PagePoint{callout.box.x0, callout.box.y0});
        }
        const int sheet = AddBookmark(CAIRO_PDF_OUTLINE_ROOT, m_sheet.title, 1, {});
        for (const SheetItem& item : m_sheet.items) {
            const auto balloon = balloons.find(item.itemId);
            AddBookmark(sheet, item.label + "  " + item.name, 1,
                        balloon != balloons.end() ? balloon->second : PagePoint{});
        }
        for (std::size_t i = 0; i < m_sheet.listPages.size(); ++i) {
            const SheetTable& first = m_sheet.listPages[i].tables.front();
            const SheetTable& last = m_sheet.listPages[i].tables.back();
            const std::string rows = first.rows.front().front().text + " – " + last.rows.back().front().text;
            AddBookmark(CAIRO_PDF_OUTLINE_ROOT, rows, i + 2, {});
        }
    }

    void PaintPages() {
        cairo_t* cairo = cairo_create(m_surface.get());
        cairo_scale(cairo, m_points, m_points);
        CairoPainter painter(cairo);
        const SheetDrawing drawing = DrawSheet(m_sheet);
        painter.PaintSheet(m_sheet, drawing);
        cairo_show_page(cairo);
        for (const DrawnForm& page : drawing.pages) {
            painter.PaintForm(page);
            cairo_show_page(cairo);
        }
        cairo_destroy(cairo);
    }

    const Sheet& m_sheet;
    double m_points;  // to a page pixel
    std::string m_bytes;
    SurfacePtr m_surface;
};

}  // namespace

std::string PdfBytes(const Sheet& sheet) { return PdfWriter(sheet).Write(); }

}  // namespace zrsheet
