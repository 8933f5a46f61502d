#include "app/sheet/SheetMaker.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <thread>
#include <utility>
#include <vector>

#include "app/sheet/CalloutPlates.h"
#include "app/sheet/Figure.h"
#include "app/sheet/Hotspots.h"
#include "app/sheet/PageLayout.h"
#include "app/sheet/PaperLayout.h"
#include "app/sheet/PartsTable.h"
#include "app/sheet/ScenePictures.h"
#include "app/sheet/SheetItems.h"
#include "app/sheet/SheetQuality.h"
#include "app/sheet/Solids.h"
#include "zrk/annotation/AnnoSet.h"
#include "zrk/scene/PickScene.h"
#include "zrkapp/illustration/HostSession.h"

namespace zrsheet {
namespace {

/// Measures the stages that follow each other.
class Stopwatch {
public:
    double Lap() {
        const auto now = std::chrono::steady_clock::now();
        return std::chrono::duration<double>(now - std::exchange(m_start, now)).count();
    }

private:
    std::chrono::steady_clock::time_point m_start = std::chrono::steady_clock::now();
};

void Shift(PageBox& box, const PagePoint& move) {
    box = {box.x0 + move.x, box.y0 + move.y, box.x1 + move.x, box.y1 + move.y};
}

void Shift(PagePoint& point, const PagePoint& move) { point = {point.x + move.x, point.y + move.y}; }

void Shift(SheetInset& inset, const PagePoint& move) {
    Shift(inset.glass.centre, move);
    Shift(inset.source.centre, move);
    Shift(inset.box, move);
}

// A shaded picture that is to be printed, and how many rays each of its many pixels gets.
constexpr double kPrintDotsPerInch = 300.0;
constexpr int kPrintSamples = 2;

bool IsOnPaper(const Document& document) { return document.Paper().size != PaperSize::None; }

/// The picture and the glasses over it.
void TakePictures(const Document& document, const dg::Camera3D& camera, const PageBox& figure,
                  unsigned threads, Sheet& sheet) {
    const auto scene = document.Scene()->GetPickScene();
    PictureStyle style;
    dg::Color border;
    document.View()->GetBackgroundColors(style.groundTop, style.groundBottom, border);
    style.colors = ColorsOf(*scene, document.Model());
    if (IsOnPaper(document)) {
        style.scale = kPrintDotsPerInch / (25.4 * sheet.style.millimetre);
        style.samplesPerPixel = kPrintSamples;
    }
    sheet.look = document.Picture();
    sheet.ground = {CssColor(style.groundTop), CssColor(style.groundBottom)};
    const ScenePainter painter(*scene, sheet.look, style, threads);
    sheet.picture = painter.Shade(camera);
    LineArt art = painter.Draw(camera);
    sheet.lines = std::move(art.lines);
    const auto hotspotsOf = [&](std::vector<VisibleArea> areas) {
        return HotspotsOf(document, *scene, std::move(areas));
    };
    sheet.hotspots = hotspotsOf(std::move(art.areas));
    sheet.solids = SolidsOf(document, *scene);
    sheet.camera = CameraOf(camera);
    du::SmartPtr<zrk::AnnoSet> annotations;
    document.Scene()->GetAnnoSet(annotations);
    sheet.insets = InsetsOf(*annotations, painter, figure, hotspotsOf);
}

double Middle(double a, double b) { return 0.5 * (a + b); }

PageBox Around(PageBox box, const std::vector<PageBox>& others) {
    for (const PageBox& other : others) {
        box = {std::min(box.x0, other.x0), std::min(box.y0, other.y0), std::max(box.x1, other.x1),
               std::max(box.y1, other.y1)};
    }
    return box;
}

SheetModel Describe(const ProductModel& model, const PageBox& figure) {
    SheetModel description{model.Name(), model.ScreenBox(), model.PartCount(), model.LeafCount(),
                           model.TriangleCount()};
    Shift(description.box, {figure.x0, figure.y0});
    return description;
}

PageLayout LayOutPixels(const Document& document, const std::vector<SheetItem>& items,
                        const SheetStyle& style) {
    return LayOutPage(document.PageWidth(), document.PageHeight(),
                      PartsTable(items, style, document.Paper().listColumns), style);
}

/// Where the picture would lie if no balloon stood out of it; on paper, any place.
PageBox DraftFigure(const Document& document, const dg::Camera3D& camera) {
    PagePoint corner;
    if (!IsOnPaper(document)) {
        const PageBox figure = LayOutPixels(document, ListedItems(*document.Items()), {}).figure;
        corner = {figure.x0, figure.y0};
    }
    return {corner.x, corner.y, corner.x + camera.GetViewportWidth(), corner.y + camera.GetViewportHeight()};
}

/// Makes the page as large as it must be. Returns how everything in the picture moves.
PagePoint PutOnPage(const Document& document, const PageBox& figure, const std::vector<PageBox>& balloons,
                    Sheet& sheet) {
    PageLayout layout = LayOutPixels(document, sheet.items, sheet.style);
    SetFigureSize(layout, static_cast<int>(figure.x1 - figure.x0), static_cast<int>(figure.y1 - figure.y0));
    const PagePoint move = MakeRoom(layout, balloons);
    sheet.figure = layout.figure;
    sheet.tables = std::move(layout.tables);
    sheet.titlePlace = layout.title;
    sheet.width = layout.width;
    sheet.height = layout.height;
    return move;
}

/// The paper remains as it is: where the balloons need more room, the picture with them becomes smaller, and
/// that is, the paper gets more pixels. Returns how everything in the picture moves.
PagePoint PutOnPaper(const Document& document, const PageBox& figure, const std::vector<PageBox>& balloons,
                     Sheet& sheet) {
    const PageBox needed = Around(figure, balloons);
    const PageBox model = document.Model().ScreenBox();
    const PaperContent content{std::max(model.x1 - model.x0, 1.0), std::max(model.y1 - model.y0, 1.0)};
    PaperLayout layout = LayOutPaper(document, sheet.items, sheet.style, content);
    const double growth = std::max({(needed.x1 - needed.x0) / (layout.figure.x1 - layout.figure.x0),
                                    (needed.y1 - needed.y0) / (layout.figure.y1 - layout.figure.y0), 1.0});
    if (growth > 1.0) {
        sheet.style = Refined(sheet.style, growth);
        layout = LayOutPaper(document, sheet.items, sheet.style, content);
    }
    const PagePoint move{
        std::round(Middle(layout.figure.x0, layout.figure.x1) - Middle(needed.x0, needed.x1)),
        std::round(Middle(layout.figure.y0, layout.figure.y1) - Middle(needed.y0, needed.y1))};
    sheet.figure = figure;
    Shift(sheet.figure, move);
    sheet.tables = std::move(layout.tables);
    sheet.frame = std::move(layout.frame);
    sheet.listPages = std::move(layout.listPages);
    sheet.width = layout.width;
    sheet.height = layout.height;
    return move;
}

/// By its name, the author's own before ready ones, else by what it says.
void ChooseTemplate(Document& document, const SheetOptions& options) {
    std::vector<NamedTemplate> known = ReadTemplates(ReadyTemplates());
    if (!options.templates.empty()) {
        const auto own = ReadTemplates(options.templates);
        known.insert(known.begin(), own.begin(), own.end());
    }
    NamedTemplate chosen{Document::kFirstTemplate, options.labelTemplate, {}};
    const auto named = std::find_if(known.begin(), known.end(),
                                    [&](const auto& each) { return each.name == options.labelTemplate; });
    if (named != known.end()) {
        chosen.text = named->text;
        chosen.translations = named->translations;
    }
    document.DefineTemplate(chosen);
}

/// The illustration arranged anew for paper; items keep their numbers.
Sheet Print(Document& document, const SheetOptions& options, unsigned threads) {
    PaperChoice paper = options.paper;
    paper.size = options.print;
    document.SetPaper(paper);
    FrameModel(document, options.view);
    document.Settle();
    LayOutLabels(document, document.Callouts());
    document.Settle();
    FillFigure(document);
    return DrawSheet(document, threads);
}

}  // namespace

unsigned ThreadCount(unsigned wanted) {
    return wanted != 0 ? wanted : std::max(std::thread::hardware_concurrency(), 1U);
}

Sheet DrawSheet(const Document& document, unsigned threads) {
    Stopwatch watch;
    Sheet sheet;
    sheet.title = TitleOf(document);
    sheet.language = document.Language();
    sheet.items = ListedItems(*document.Items());
    sheet.listColumns = document.Paper().listColumns;
    dg::Camera3D camera;
    document.View()->GetCamera(camera);
    const PageBox figure = DraftFigure(document, camera);
    TakePictures(document, camera, figure, threads, sheet);
    sheet.seconds.render = watch.Lap();
    sheet.model = Describe(document.Model(), figure);
    CalloutPlates plates(document.Callouts(), document.Style(), figure, sheet.style);
    plates.EndLeaders(*document.Scene()->GetPickScene(), threads);
    std::vector<PageBox> boxes = plates.Boxes();
    for (const SheetInset& inset : sheet.insets) boxes.push_back(inset.box);
    const PagePoint move = IsOnPaper(document) ? PutOnPaper(document, figure, boxes, sheet)
                                               : PutOnPage(document, figure, boxes, sheet);
    plates.Move(move);
    sheet.callouts = plates.Take();
    for (SheetInset& inset : sheet.insets) Shift(inset, move);
    Shift(sheet.model.box, move);
    sheet.quality = QualityOf(sheet, document.Layout().rules);
    return sheet;
}

Sheet MakeSheet(Assembly assembly, const SheetOptions& options, const StageSink& sink) {
    return MakeSheetPair(std::move(assembly), options, sink).sheet;
}

SheetPair MakeSheetPair(Assembly assembly, const SheetOptions& options, const StageSink& sink) {
    Stopwatch watch;
    const unsigned threads = ThreadCount(options.threads);
    const zrkapp::illustration::HostSession session(threads);
    Document document(std::move(assembly),
                      {options.width, options.height, options.leaders, options.numbering, "{item}"});
    ChooseTemplate(document, options);
    document.SetLanguage(options.language);
    document.SetStyle(options.style);
    document.SetLayout(options.layout);
    document.SetPicture(options.picture);
    document.SetPaper(options.paper);
    if (options.rules.IsAny()) UpdateItems(document, options.rules);
    document.Items()->Renumber(OrderedItems(document, options.order, options.corner));
    FrameModel(document, options.view);
    const double load = watch.Lap();
    document.CreateCallouts(options.selection, [&sink](int percent) {
        sink("Creating callouts", percent);
        return true;
    });
    const double create = watch.Lap();
    sink("Finding what is seen", 0);
    document.Settle();
    LayOutLabels(document, document.Callouts());
    FillFigure(document);
    if (options.order == ItemOrder::Place)
        document.Items()->Renumber(OrderedItems(document, options.order, options.corner));
    document.Settle();
    const double pick = watch.Lap();
    sink("Drawing the picture", 0);
    SheetPair pair{DrawSheet(document, threads), {}};
    pair.sheet.seconds.load = load;
    pair.sheet.seconds.create = create;
    pair.sheet.seconds.pick = pick;
    if (options.print != PaperSize::None) pair.print = Print(document, options, threads);
    return pair;
}

}  // namespace zrsheet
