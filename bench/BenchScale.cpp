// How the way from a model to its sheet grows with the number of parts, all of them different, so that each
// has an item and a callout of its own. tools/scale_table.py runs every case in a process of its own.

#include <benchmark/benchmark.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "app/document/ItemEdits.h"
#include "app/export/ExportSheet.h"
#include "app/import/process/ImportModel.h"
#include "app/project/Project.h"
#include "app/sample/GlbWriter.h"
#include "app/sample/SyntheticAssembly.h"
#include "app/sheet/Figure.h"
#include "app/sheet/SheetMaker.h"
#include "bench/Footprint.h"
#include "zrk/annotation/AnnoSet.h"
#include "zrk/operation/Transaction.h"
#include "zrk/scene/PickScene.h"
#include "zrk/world/Kernel.h"
#include "zrkapp/illustration/HostSession.h"

namespace {

using zrsheet::Assembly;
using zrsheet::Document;
using zrsheet::Project;

constexpr unsigned kThreads = 2;
constexpr int kLevels = 3;

Assembly MakeAssembly(const benchmark::State& state) {
    const auto parts = static_cast<int>(state.range(0));
    return zrsheet::MakeSyntheticAssembly({parts, parts, kLevels});
}

/// A folder with the model's file, gone at the end.
class Folder {
public:
    Folder() { std::filesystem::create_directories(m_path); }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    ~Folder() { std::filesystem::remove_all(m_path); }

    [[nodiscard]] std::filesystem::path operator/(const char* file) const { return m_path / file; }
    [[nodiscard]] std::filesystem::path Write(const Assembly& assembly) const {
        const auto model = m_path / "model.glb";
        std::ofstream(model, std::ios::binary) << WriteGlb(assembly);
        return model;
    }

private:
    const std::filesystem::path m_path =
        std::filesystem::temp_directory_path() / ("bench-scale-" + std::to_string(getpid()));
};

/// An illustration of the parts in a running host.
class Illustration {
public:
    explicit Illustration(Assembly assembly)
        : m_project(std::move(assembly), m_folder.Write({}), Document::Settings{}) {
        FrameModel(Doc(), {});
        Doc().Settle();
    }

    Document& Doc() { return m_project.Doc(); }
    const Project& Saved() const { return m_project; }
    const Folder& Files() const { return m_folder; }
    void Create() {
        zrk::Transaction action(Doc().Scene(), "Create");
        Doc().CreateCallouts({}, {});
        Doc().Settle();
        action.Commit();
    }
    void DeleteItems() {
        zrk::Transaction action(Doc().Scene(), "Delete");
        zrsheet::ItemEdits edits(Doc().ItemList(), *Doc().Engine());
        for (const unsigned id : Doc().Items()->GetItemIds()) edits.Delete(id);
        action.Commit();
    }

private:
    const Folder m_folder;
    const zrkapp::illustration::HostSession m_session{kThreads};
    Project m_project;
};

std::unique_ptr<Illustration> Prepared(const benchmark::State& state) {
    return std::make_unique<Illustration>(MakeAssembly(state));
}

std::unique_ptr<Illustration> WithCallouts(const benchmark::State& state) {
    auto illustration = Prepared(state);
    illustration->Create();
    return illustration;
}

/// Times the work once, and tells what memory it took for each part.
template <class Work>
void Measure(benchmark::State& state, const Work& work) {
    const zrbench::Footprint footprint;
    for (auto _ : state) work();
    const auto parts = static_cast<double>(state.range(0));
    state.counters["peak_bytes"] = static_cast<double>(footprint.Peak()) / parts;
    state.counters["kept_bytes"] = static_cast<double>(footprint.Kept()) / parts;
}

/// Reading the file in the reader's process, and getting it from there. Memory is this process's.
void Import(benchmark::State& state) {
    const Folder folder;
    const auto model = folder.Write(MakeAssembly(state));
    Assembly assembly;
    Measure(state, [&] { assembly = zrsheet::ImportModel(model); });
}

/// Structure, scene and parts list. The bytes kept are those of instances with items.
void OpenDocument(benchmark::State& state) {
    const zrkapp::illustration::HostSession session(kThreads);
    std::unique_ptr<Document> document;
    Assembly assembly = MakeAssembly(state);
    Measure(state, [&] { document = std::make_unique<Document>(std::move(assembly), Document::Settings{}); });
}

/// What rays are cast into.
void BuildRayTree(benchmark::State& state) {
    const zrkapp::illustration::HostSession session(kThreads);
    const Document document(MakeAssembly(state), {});
    std::shared_ptr<const zrk::PickScene> scene;
    Measure(state, [&] { scene = document.Scene()->GetPickScene(); });
}

/// After one part was moved.
void RenewRayTree(benchmark::State& state) {
    const zrkapp::illustration::HostSession session(kThreads);
    const Document document(MakeAssembly(state), {});
    auto scene = document.Scene()->GetPickScene();
    const auto& part = scene->GetParts().front();
    dg::Location place;
    part->GetLocation(place);
    place.SetPos({1, 0, 0});
    document.Scene()->SetLocation(part, place);
    Measure(state, [&] { scene = document.Scene()->GetPickScene(); });
}

/// All callouts, with the picks that find their anchors; the bytes kept are theirs.
void Create(benchmark::State& state) {
    const auto illustration = Prepared(state);
    Measure(state, [&] { illustration->Create(); });
}

/// Every label says something else.
void Relabel(benchmark::State& state) {
    const auto illustration = WithCallouts(state);
    Measure(state, [&] {
        illustration->Doc().DefineTemplate({Document::kFirstTemplate, "{item} {name}", {}});
    });
}

/// Which leaders are covered.
void CheckLeaders(benchmark::State& state) {
    const auto illustration = WithCallouts(state);
    Measure(state, [&] {
        illustration->Doc().Engine()->OnDrawWhenHidden(illustration->Doc().View());
        zrk::Kernel::GetKernel()->DispatchEvents();
    });
}

/// One by one, with their callouts.
void DeleteItems(benchmark::State& state) {
    const auto illustration = WithCallouts(state);
    Measure(state, [&] { illustration->DeleteItems(); });
}

void UndoDeletion(benchmark::State& state) {
    const auto illustration = WithCallouts(state);
    illustration->DeleteItems();
    Measure(state, [&] { illustration->Doc().Scene()->GetHistory().Undo(); });
}

void UndoCreation(benchmark::State& state) {
    const auto illustration = WithCallouts(state);
    Measure(state, [&] { illustration->Doc().Scene()->GetHistory().Undo(); });
}

void Save(benchmark::State& state) {
    const auto illustration = WithCallouts(state);
    Measure(state, [&] { illustration->Saved().Save(illustration->Files() / "x.zrsheet"); });
}

/// From the project's file to the open illustration, reading the model included.
void Load(benchmark::State& state) {
    const Folder folder;
    const auto model = folder.Write(MakeAssembly(state));
    const zrkapp::illustration::HostSession session(kThreads);
    {
        Project project(zrsheet::ImportModel(model), model, Document::Settings{});
        project.Doc().CreateCallouts({}, {});
        project.Doc().Settle();
        project.Save(folder / "x.zrsheet");
    }
    std::unique_ptr<Project> project;
    Measure(state, [&] { project = Project::Open(folder / "x.zrsheet"); });
}

/// Drawing the sheet and writing it.
void ExportSvg(benchmark::State& state) {
    const auto illustration = WithCallouts(state);
    Measure(state,
            [&] { ExportSheet(DrawSheet(illustration->Doc(), kThreads), illustration->Files() / "x.svg"); });
}

void Sizes(benchmark::internal::Benchmark* bench) {
    for (const int parts : {1000, 10'000, 100'000}) bench->Arg(parts);
    bench->Iterations(1)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime();
}

BENCHMARK(Import)->Apply(Sizes);
BENCHMARK(OpenDocument)->Apply(Sizes);
BENCHMARK(BuildRayTree)->Apply(Sizes);
BENCHMARK(RenewRayTree)->Apply(Sizes);
BENCHMARK(Create)->Apply(Sizes);
BENCHMARK(Relabel)->Apply(Sizes);
BENCHMARK(CheckLeaders)->Apply(Sizes);
BENCHMARK(DeleteItems)->Apply(Sizes);
BENCHMARK(UndoDeletion)->Apply(Sizes);
BENCHMARK(UndoCreation)->Apply(Sizes);
BENCHMARK(Save)->Apply(Sizes);
BENCHMARK(Load)->Apply(Sizes);
BENCHMARK(ExportSvg)->Apply(Sizes);

}  // namespace
