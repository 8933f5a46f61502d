#include "app/sheet/SheetMaker.h"

#include <algorithm>
#include <chrono>
#include <thread>
#include <utility>
#include <vector>

#include "app/document/ProductModel.h"
#include "app/document/UserError.h"
#include "app/sheet/CalloutPlates.h"
#include "app/sheet/Illustrator.h"
#include "app/sheet/PageLayout.h"
#include "app/sheet/PartsTable.h"
#include "app/sheet/ScenePictures.h"
#include "zrk/annotation/AnnoSet.h"
#include "zrk/scene/PickScene.h"
#include "zrk/world/World.h"
#include "zrkapp/illustration/HostSession.h"

namespace zrsheet {
namespace {

// The engine frames the model 30 pixels off and keeps as much free at the window's border; a balloon's half
// comes on top.
constexpr double kModelMargin = 76.0;

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

unsigned ThreadCount(const SheetOptions& options) {
    return options.threads != 0 ? options.threads : std::max(std::thread::hardware_concurrency(), 1U);
}

SheetItem ItemOf(const zrk::illustration::ItemsList& items, unsigned id) {
    SheetItem item;
    bool isCustom = false;
    item.itemId = id;
    items.GetLabel(id, item.label, isCustom);
    item.quantity = items.GetQuantity(id);
    item.tag = items.GetItemTag(id);
    zrk::illustration::ItemsList::Numbering numbering;
    items.GetNumberingSettings(numbering);
    if (numbering.hierarchical) item.level = static_cast<unsigned>(items.GetHierarchyIndex(id).size() - 1);
    const auto instances = items.GetOrderedInstances(id);
    item.name = ProductModel::NameOf(*instances.front());
    for (const auto& [key, value] : instances.front()->GetProperties()) {
        item.properties[std::get<1>(key).Text()] = value.Text();
    }
    for (const auto& instance : instances) item.instances.push_back(instance->GetIdentifier().Text());
    return item;
}

void Shift(PageBox& box, const PagePoint& move) {
    box = {box.x0 + move.x, box.y0 + move.y, box.x1 + move.x, box.y1 + move.y};
}

void Shift(PagePoint& point, const PagePoint& move) { point = {point.x + move.x, point.y + move.y}; }

void Shift(SheetInset& inset, const PagePoint& move) {
    Shift(inset.glass.centre, move);
    Shift(inset.source.centre, move);
    Shift(inset.box, move);
}

/// The picture and the glasses over it.
void TakePictures(const ProductModel& model, const PageBox& figure, unsigned threads, Sheet& sheet) {
    const auto scene = model.Scene()->GetPickScene();
    dg::Camera3D camera;
    model.View()->GetCamera(camera);
    sheet.picture = PictureOf(*scene, camera, threads);
    du::SmartPtr<zrk::AnnoSet> annotations;
    model.Scene()->GetAnnoSet(annotations);
    sheet.insets = InsetsOf(*annotations, *scene, figure, threads);
}

/// What the balloons stand around: the model and the glasses.
PageBox Crowd(const Sheet& sheet) {
    PageBox crowd = sheet.model.box;
    for (const SheetInset& inset : sheet.insets) {
        crowd = {std::min(crowd.x0, inset.box.x0), std::min(crowd.y0, inset.box.y0),
                 std::max(crowd.x1, inset.box.x1), std::max(crowd.y1, inset.box.y1)};
    }
    return crowd;
}

SheetModel Describe(const ProductModel& model, const PageBox& figure) {
    SheetModel description{model.Name(), model.ScreenBox(), model.PartCount(), model.LeafCount(),
                           model.TriangleCount()};
    Shift(description.box, {figure.x0, figure.y0});
    return description;
}

}  // namespace

Sheet MakeSheet(Assembly assembly, const SheetOptions& options, const StageSink& sink) {
    Stopwatch watch;
    const unsigned threads = ThreadCount(options);
    const zrkapp::illustration::HostSession session(threads);
    if (!zrk::World::GetWorld()->SetLanguage(options.language)) {
        throw UserError("language '" + options.language + "': no texts; there are en, de, fr, es and ja");
    }
    ProductModel model(std::move(assembly));
    Illustrator illustrator(model, options);
    Sheet sheet;
    sheet.title = model.Name();
    sheet.language = options.language;
    const auto& items = illustrator.Items();
    for (const unsigned id : items->GetItemIds()) sheet.items.push_back(ItemOf(*items, id));
    const PartsTable table(sheet.items, sheet.style);
    PageLayout layout = LayOutPage(options.width, options.height, table, sheet.style);
    const PageBox& figure = layout.figure;
    model.LookAt(options.view, static_cast<int>(figure.x1 - figure.x0),
                 static_cast<int>(figure.y1 - figure.y0), kModelMargin);
    sheet.seconds.load = watch.Lap();

    illustrator.CreateCallouts([&sink](int percent) { sink("Creating callouts", percent); });
    sheet.seconds.create = watch.Lap();
    sink("Finding what is seen", 0);
    illustrator.AnswerPicks();
    sheet.seconds.pick = watch.Lap();
    sink("Drawing the picture", 0);
    TakePictures(model, figure, threads, sheet);
    sheet.seconds.render = watch.Lap();

    sheet.model = Describe(model, figure);
    CalloutPlates plates(illustrator.Callouts(), figure, sheet.style);
    plates.Tidy(Crowd(sheet));
    std::vector<PageBox> boxes = plates.Boxes();
    for (const SheetInset& inset : sheet.insets) boxes.push_back(inset.box);
    const PagePoint move = MakeRoom(layout, boxes);
    plates.Move(move);
    sheet.callouts = plates.Take();
    for (SheetInset& inset : sheet.insets) Shift(inset, move);
    Shift(sheet.model.box, move);
    sheet.figure = layout.figure;
    sheet.tables = std::move(layout.tables);
    sheet.titlePlace = layout.title;
    sheet.width = layout.width;
    sheet.height = layout.height;
    return sheet;
}

}  // namespace zrsheet
