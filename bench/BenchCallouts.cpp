// How the engine and the creation of callouts scale with the number of parts. Scene and list are made outside
// what is timed.

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "bench/Ball.h"
#include "bench/Footprint.h"
#include "bench/Tracer.h"
#include "callouts/Callouts.h"
#include "callouts/generator/CalloutGenerator.h"
#include "tests/support/Cube.h"
#include "zrannotations/CalloutTemplates.h"
#include "zritemlist/ItemList.h"
#include "zrk/annotation/AnnoSet.h"
#include "zrk/illustration/Illustration3dScene.h"
#include "zrk/operation/Transaction.h"
#include "zrk/scene/ShapeView.h"
#include "zrk/tree/Tree.h"
#include "zrk/world/Kernel.h"
#include "zrk/world/World.h"
#include "zrkapp/illustration/HostSession.h"

namespace zrcallouts {
namespace {

using CalloutPtr = du::SmartPtr<zrannotations::Callout>;
using SbomPtr = du::SmartPtr<zrk::illustration::SbomInstance>;

constexpr int kWidth = 1200;
constexpr int kHeight = 900;
constexpr double kPitch = 3.0;  // from one part to the next; they are two units large

du::SmartPtr<zrk::Shape> MakeBox() { return new zrk::Shape(zrtest::MakeCube(-1, 1)); }

/// Where a part lies.
using Places = std::vector<dg::Location>;

/// Seen from above none covers another.
Places SquareField(int parts) {
    Places places;
    const int columns = static_cast<int>(std::ceil(std::sqrt(parts)));
    for (int i = 0; i < parts; ++i) {
        places.emplace_back(dg::FMat33::IDENTITY,
                            dg::DPoint3D(kPitch * (i % columns), kPitch * (i / columns), 0));
    }
    return places;
}

/// Of all sizes, most of them covered by others.
Places Heap(int parts) {
    std::mt19937 random(1);
    const double extent = kPitch * std::ceil(std::sqrt(parts));
    std::uniform_real_distribution<double> place(0, extent), depth(-40, 40);
    std::uniform_real_distribution<float> size(0.5F, 3);
    Places places;
    for (int i = 0; i < parts; ++i) {
        const float scale = size(random);
        const double x = place(random), y = place(random);
        places.emplace_back(dg::FMat33::Scale({scale, scale, scale}), dg::DPoint3D(x, y, depth(random)));
    }
    return places;
}

using Shapes = std::vector<du::SmartPtr<zrk::Shape>>;

/// A host with few shapes in many places, each a part with its own item, and an engine.
class PartField {
public:
    explicit PartField(int parts) : PartField({MakeBox()}, SquareField(parts)) {}
    PartField(const Shapes& shapes, const Places& places)
        : m_root(new zrk::illustration::SbomInstance(du::Symbol("root"), "root")) {
        m_scene->AddView(m_view);
        AddParts(shapes, places);
        m_engine->Initialize(m_scene);
        m_engine->GetItemsList()->GenerateFromStructure(m_root, nullptr);
        const zrannotations::TextProperties look;
        m_template =
            new zrannotations::TAnnotation("number",
                                           {new zrannotations::LabelContent("System", "zrITM", look),
                                            new zrannotations::LabelContent(" x ", look),
                                            new zrannotations::LabelContent("System", "zrQTY", look)},
                                           nullptr);
        zrannotations::AddCalloutTemplate(m_template);
        m_engine->SetTemplate(m_template);
        m_view->GetVisibilityMap();
    }
    PartField(const PartField&) = delete;
    PartField& operator=(const PartField&) = delete;
    ~PartField() {
        zrk::Kernel::GetKernel()->CancelPendingEvents();
        m_engine->Destroy();
        zrk::World::GetWorld()->GetTaskPool()->WaitIdle();
        m_scene->Close();
        zrannotations::ClearCalloutTemplates();
    }

    void CreateCallouts() {
        CalloutGenerator::Selection selection;
        for (const auto& part : m_root->GetChildren()) {
            selection.emplace_back(new zrk::illustration::SbomInstanceSelectionItem(part));
        }
        CalloutGenerator::CreateCallouts(m_engine, std::move(selection), nullptr);
        zrk::World::GetWorld()->GetTaskPool()->WaitIdle();
        zrk::Kernel::GetKernel()->DispatchEvents();
    }
    /// A callout on each part, with its number, known to nobody yet.
    std::vector<CalloutPtr> MakeCallouts() const {
        std::vector<CalloutPtr> callouts;
        for (const auto& part : m_scene->GetShapeInstances()) {
            callouts.emplace_back(new zrannotations::Callout);
            callouts.back()->Initialize(m_template, part, false, nullptr);
            du::SmartPtr<zrk::Instance> instance;
            part->GetInstance(instance);
            unsigned id = 0;
            m_engine->GetItemsList()->GetZrkItemList()->GetItemIdForInstance(
                SbomPtr(instance->GetSbomInstance()), id);
            callouts.back()->SetItemId(id);
        }
        return callouts;
    }
    Callouts& Engine() { return *m_engine; }
    const du::SmartPtr<zrk::ShapeView>& View() const { return m_view; }
    const du::SmartPtr<zrk::illustration::Illustration3dScene>& Scene() const { return m_scene; }
    zrk::AnnoSet& Annotations() {
        du::SmartPtr<zrk::AnnoSet> annoSet;
        m_scene->GetAnnoSet(annoSet);
        return *annoSet;
    }

private:
    void AddParts(const Shapes& shapes, const Places& places) {
        const double extent = kPitch * std::ceil(std::sqrt(places.size()));
        m_view->SetCamera(dg::Camera3D::Orthographic({extent / 2, extent / 2, 0}, {0, 0, -1}, {0, 1, 0},
                                                     0.9 * kHeight / extent, kWidth, kHeight, 100.0));
        const du::SmartPtr<zrk::Instance> root(
            new zrk::Instance(du::Symbol("root"), "root", nullptr, dg::Location::IDENTITY));
        for (const dg::Location& place : places) {
            const std::size_t number = m_root->GetChildren().size();
            const std::string name = "part" + std::to_string(number);
            const du::SmartPtr<zrk::Instance> instance(new zrk::Instance(
                du::Symbol(name), name, new zrk::ComponentNode(name, shapes[number % shapes.size()]), place));
            const SbomPtr sbom(new zrk::illustration::SbomInstance(du::Symbol(name), name));
            sbom->SetEbomInstance(instance);
            m_root->AddChild(sbom);
            root->AddChild(instance);
            m_scene->CreateShapeInstance(instance);
        }
        zrk::World::GetWorld()->GetTree()->SetRoot(root);
    }

    const zrkapp::illustration::HostSession m_session{2};
    const du::SmartPtr<zrk::illustration::Illustration3dScene> m_scene{
        new zrk::illustration::Illustration3dScene};
    const du::SmartPtr<zrk::ShapeView> m_view{new zrk::ShapeView(m_scene, 1)};
    const SbomPtr m_root;
    const du::SmartPtr<Callouts> m_engine{new Callouts};
    du::SmartPtr<zrannotations::TAnnotation> m_template;
};

void CreationRun(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        {
            PartField field(static_cast<int>(state.range(0)));
            state.ResumeTiming();
            field.CreateCallouts();
            state.PauseTiming();
        }
        state.ResumeTiming();
    }
    state.SetComplexityN(state.range(0));
}

void RegisterAndShow(benchmark::State& state) {
    PartField field(static_cast<int>(state.range(0)));
    const auto callouts = field.MakeCallouts();
    for (auto _ : state) {
        for (const auto& callout : callouts) field.Annotations().AddAnnotationToSet(callout, nullptr);
        state.PauseTiming();
        for (const auto& callout : callouts) field.Annotations().RemoveAnnotationFromSet(callout, nullptr);
        state.ResumeTiming();
    }
    state.SetComplexityN(state.range(0));
}

void Remove(benchmark::State& state) {
    PartField field(static_cast<int>(state.range(0)));
    const auto callouts = field.MakeCallouts();
    for (auto _ : state) {
        state.PauseTiming();
        for (const auto& callout : callouts) field.Annotations().AddAnnotationToSet(callout, nullptr);
        state.ResumeTiming();
        for (const auto& callout : callouts) field.Annotations().RemoveAnnotationFromSet(callout, nullptr);
    }
    state.SetComplexityN(state.range(0));
}

/// The whole parts list goes, and comes back by undo.
void ClearAndUndo(benchmark::State& state) {
    PartField field(static_cast<int>(state.range(0)));
    for (const auto& callout : field.MakeCallouts()) field.Annotations().AddAnnotationToSet(callout, nullptr);
    for (auto _ : state) {
        zrk::Transaction action(field.Scene(), "Clear");
        field.Engine().OnListCleared(action.GetOperation());
        field.Engine().GetItemsList()->Clear(action.GetOperation());
        action.Commit();
        field.Scene()->GetHistory().Undo();
    }
    state.SetComplexityN(state.range(0));
}

/// Item by item instead of all at once, as when the user deletes a selection.
void DeleteItemsAndUndo(benchmark::State& state) {
    PartField field(static_cast<int>(state.range(0)));
    for (const auto& callout : field.MakeCallouts()) field.Annotations().AddAnnotationToSet(callout, nullptr);
    const auto items = field.Engine().GetItemsList();
    for (auto _ : state) {
        zrk::Transaction action(field.Scene(), "Delete");
        auto operation = action.GetOperation();
        for (const unsigned id : items->GetZrkItemList()->GetItemIds()) {
            field.Engine().OnItemRemoved(id, operation);
            items->DeleteItem(id, operation);
        }
        action.Commit();
        field.Scene()->GetHistory().Undo();
    }
    state.SetComplexityN(state.range(0));
}

/// Undo and redo of a run that created all callouts.
void UndoCreationRun(benchmark::State& state) {
    PartField field(static_cast<int>(state.range(0)));
    {
        zrk::Transaction action(field.Scene(), "Create");
        field.CreateCallouts();
        action.Commit();
    }
    for (auto _ : state) {
        field.Scene()->GetHistory().Undo();
        field.Scene()->GetHistory().Redo();
    }
    state.SetComplexityN(state.range(0));
}

/// What a callout with one leader needs by itself, and what set and engine need on top to know it. The
/// numbers count in a process of its own.
void CalloutBytes(benchmark::State& state) {
    const auto parts = static_cast<double>(state.range(0));
    for (auto _ : state) {
        PartField field(static_cast<int>(state.range(0)));
        const zrbench::Footprint making;
        const auto callouts = field.MakeCallouts();
        for (const auto& callout : callouts) field.Engine().SetCalloutText(callout);
        state.counters["annotation"] = static_cast<double>(making.Kept()) / parts;
        const zrbench::Footprint knowing;
        for (const auto& callout : callouts) field.Annotations().AddAnnotationToSet(callout, nullptr);
        state.counters["engine"] = static_cast<double>(knowing.Kept()) / parts;
    }
}

void Label(benchmark::State& state) {
    PartField field(static_cast<int>(state.range(0)));
    const auto callouts = field.MakeCallouts();
    for (auto _ : state) {
        for (const auto& callout : callouts) field.Engine().SetCalloutText(callout);
    }
    state.SetComplexityN(state.range(0));
}

void Admit(benchmark::State& state) {
    PartField field(static_cast<int>(state.range(0)));
    const auto registered = field.MakeCallouts();
    const auto candidates = field.MakeCallouts();
    for (const auto& callout : registered) field.Annotations().AddAnnotationToSet(callout, nullptr);
    for (auto _ : state) {
        for (const auto& callout : candidates) benchmark::DoNotOptimize(field.Engine().IsAllowed(callout));
    }
    state.SetComplexityN(state.range(0));
}

/// As in the large assemblies that take time: hundreds of different parts, round and finely meshed.
PartField MakeHeap(int parts) {
    constexpr unsigned kShapes = 400;
    Shapes shapes;
    for (unsigned i = 0; i < kShapes; ++i) shapes.emplace_back(new zrk::Shape(zrbench::Ball(8 + i % 32)));
    return PartField(shapes, Heap(parts));
}

/// The rays that the check of the leaders sends.
std::vector<dg::Ray> AnchorRays(const std::vector<CalloutPtr>& callouts, const zrk::ShapeView& view) {
    dg::Camera3D camera;
    view.GetCamera(camera);
    std::vector<dg::Ray> rays;
    for (const auto& callout : callouts) {
        dg::DPoint3D anchor;
        dg::Location location;
        callout->GetAnchorAtPos(0, anchor);
        callout->GetInstanceLocationAtPos(location, 0);
        const dg::DPoint3D pixel = anchor * location * camera.GetWorldToPixel();
        rays.push_back(camera.PixelRay(static_cast<int>(pixel.x + 0.5), static_cast<int>(pixel.y + 0.5)));
    }
    return rays;
}

/// From the question to the last answer, all on one thread.
void CheckLeaders(benchmark::State& state) {
    PartField field = MakeHeap(static_cast<int>(state.range(0)));
    for (const auto& callout : field.MakeCallouts()) field.Annotations().AddAnnotationToSet(callout, nullptr);
    const auto kernel = zrk::Kernel::GetKernel();
    kernel->DispatchEvents();
    for (auto _ : state) {
        field.Engine().OnDrawWhenHidden(field.View());
        kernel->DispatchEvents();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

/// The same rays and nothing else.
void TraceLeaders(benchmark::State& state) {
    PartField field = MakeHeap(static_cast<int>(state.range(0)));
    zrbench::Tracer tracer;
    for (const auto& part : field.Scene()->GetShapeInstances()) {
        dg::Location location;
        part->GetLocation(location);
        tracer.Add(*part->GetShape()->GetShapeData(), location);
    }
    tracer.Commit();
    std::vector<RTCRayHit> rays;
    for (const dg::Ray& ray : AnchorRays(field.MakeCallouts(), *field.View()))
        rays.push_back(zrbench::Tracer::RayOf(ray));
    std::int64_t hits = 0;
    for (auto _ : state) {
        for (const RTCRayHit& ray : rays) hits += tracer.Meets(ray) ? 1 : 0;
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.counters["met"] =
        static_cast<double>(hits) / static_cast<double>(state.iterations() * state.range(0));
}

constexpr int kFew = 100;
constexpr int kMany = 10000;

BENCHMARK(CreationRun)
    ->RangeMultiplier(10)
    ->Range(kFew, kMany)
    ->Unit(benchmark::kMillisecond)
    ->MeasureProcessCPUTime();
BENCHMARK(RegisterAndShow)->RangeMultiplier(10)->Range(kFew, kMany)->Unit(benchmark::kMillisecond);
BENCHMARK(Remove)->RangeMultiplier(10)->Range(kFew, kMany)->Unit(benchmark::kMillisecond);
BENCHMARK(ClearAndUndo)->RangeMultiplier(10)->Range(kFew, kMany)->Unit(benchmark::kMillisecond);
BENCHMARK(DeleteItemsAndUndo)->RangeMultiplier(10)->Range(kFew, kMany)->Unit(benchmark::kMillisecond);
BENCHMARK(UndoCreationRun)->RangeMultiplier(10)->Range(kFew, kMany)->Unit(benchmark::kMillisecond);
BENCHMARK(CalloutBytes)->Arg(kMany)->Arg(10 * kMany)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(Label)->RangeMultiplier(10)->Range(kFew, kMany)->Unit(benchmark::kMillisecond);
BENCHMARK(CheckLeaders)->Arg(kMany)->Unit(benchmark::kMillisecond);
BENCHMARK(TraceLeaders)->Arg(kMany)->Unit(benchmark::kMillisecond);
BENCHMARK(Admit)->RangeMultiplier(10)->Range(kFew, kMany)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace zrcallouts
