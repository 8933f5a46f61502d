// The CAD kernel removes hidden lines from triangles too, by comparing every edge with every triangle. It is
// no part of the product: meshes from other formats need a way of our own in any case, and one way for all
// draws them alike; it answers for single parts that move or are hidden, smooths what triangles made
// straight, and draws where parts run through each other, which the kernel leaves out. But what both draw
// must be the same.

#include <gtest/gtest.h>

#include <BRepBndLib.hxx>
#include <BRepLib.hxx>
#include <BRepMesh_IncrementalMesh.hxx>
#include <BRep_Tool.hxx>
#include <Bnd_Box.hxx>
#include <HLRAlgo_Projector.hxx>
#include <HLRBRep_PolyAlgo.hxx>
#include <HLRBRep_PolyHLRToShape.hxx>
#include <STEPControl_Reader.hxx>
#include <TopExp.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Edge.hxx>
#include <TopoDS_Vertex.hxx>
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>

#include "app/document/ProductModel.h"
#include "app/import/cad/StepReader.h"
#include "tests/app/file/TemporaryFolder.h"
#include "tests/app/import/CadSample.h"
#include "tests/app/lineart/ArtStage.h"
#include "zrkapp/illustration/HostSession.h"

namespace zrsheet::test {
namespace {

constexpr int kModelPixels = 700;  // the model's diagonal
constexpr double kMillimetre = 0.001;
// Finer than ours: the kernel's contours run along edges of triangles, ours on the surface.
constexpr double kDeflectionOfSize = 0.0005;
constexpr double kAngle = 0.1;

/// What two programs draw of a file.
class TwoDrawings {
public:
    explicit TwoDrawings(const std::filesystem::path& file) {
        STEPControl_Reader reader;
        if (reader.ReadFile(file.c_str()) != IFSelect_RetDone) throw std::runtime_error("no STEP file");
        reader.TransferRoots();
        m_shape = reader.OneShape();
        Bnd_Box box;
        BRepBndLib::Add(m_shape, box, false);
        m_size = std::sqrt(box.SquareExtent());
        m_middle = gp_Pnt(0.5 * (box.CornerMin().XYZ() + box.CornerMax().XYZ()));
        const BRepMesh_IncrementalMesh mesh(m_shape, kDeflectionOfSize * m_size, false, kAngle, true);
        BRepLib::EncodeRegularity(m_shape);
        const ProductModel model(ReadStep(file));
        for (const auto& part : model.Scene()->GetShapeInstances()) {
            dg::Location location;
            part->GetLocation(location);
            m_stage.Add(part->GetShape()->GetShapeData(), location);
        }
    }

    void LookFrom(const dg::DVec3& towardsEye) {
        m_towardsEye = towardsEye;
        const dg::DPoint3D middle(kMillimetre * m_middle.X(), kMillimetre * m_middle.Z(),
                                  -kMillimetre * m_middle.Y());
        m_stage.SetCamera(dg::Camera3D::Orthographic(middle, towardsEye * -1.0, {0, 1, 0},
                                                     kModelPixels / (kMillimetre * m_size), kModelPixels,
                                                     kModelPixels, 2.0 * kMillimetre * m_size));
    }

    std::vector<Stroke> Ours() {
        std::vector<Stroke> strokes = m_stage.Strokes();
        std::erase_if(strokes, [](const Stroke& stroke) { return stroke.kind == LineKind::Crossing; });
        return strokes;
    }

    std::vector<Stroke> Theirs() const {
        const auto turned = [](const dg::DVec3& v) { return gp_Dir(v.x, -v.z, v.y); };  // Z is up there
        const dg::DVec3 right = dg::DVec3(0, 1, 0).Cross(m_towardsEye);
        const Handle(HLRBRep_PolyAlgo) algorithm = new HLRBRep_PolyAlgo;
        algorithm->Load(m_shape);
        algorithm->Projector(HLRAlgo_Projector(gp_Ax2(gp_Pnt(0, 0, 0), turned(m_towardsEye), turned(right))));
        algorithm->Update();
        HLRBRep_PolyHLRToShape found;
        found.Update(algorithm);
        std::vector<Stroke> strokes;
        for (const TopoDS_Shape& lines : {found.VCompound(), found.OutLineVCompound()}) {
            if (!lines.IsNull()) AddStrokes(lines, strokes);
        }
        return strokes;
    }

private:
    void AddStrokes(const TopoDS_Shape& lines, std::vector<Stroke>& strokes) const {
        BRepLib::BuildCurves3d(lines);
        const ArtPoint origin = m_stage.PixelOf({0, 0, 0});
        const double scale = kModelPixels / m_size;
        const auto pixel = [&](const TopoDS_Vertex& vertex) {
            const gp_Pnt point = BRep_Tool::Pnt(vertex);
            return ArtPoint{origin.x + scale * point.X(), origin.y - scale * point.Y()};
        };
        for (TopExp_Explorer edges(lines, TopAbs_EDGE); edges.More(); edges.Next()) {
            const TopoDS_Edge& edge = TopoDS::Edge(edges.Current());
            strokes.push_back(
                {LineKind::Edge, pixel(TopExp::FirstVertex(edge)), pixel(TopExp::LastVertex(edge))});
        }
    }

    TopoDS_Shape m_shape;
    double m_size = 0.0;  // millimetres
    gp_Pnt m_middle;
    dg::DVec3 m_towardsEye;
    ArtStage m_stage;
};

double DistanceTo(const Stroke& stroke, const ArtPoint& p) {
    const double dx = stroke.to.x - stroke.from.x;
    const double dy = stroke.to.y - stroke.from.y;
    const double squared = dx * dx + dy * dy;
    const double along = (p.x - stroke.from.x) * dx + (p.y - stroke.from.y) * dy;
    const double share = squared > 0.0 ? std::clamp(along / squared, 0.0, 1.0) : 0.0;
    return std::hypot(p.x - stroke.from.x - share * dx, p.y - stroke.from.y - share * dy);
}

/// Which share of the length of `lines` has one of `others` within a pixel.
double SharedLength(const std::vector<Stroke>& lines, const std::vector<Stroke>& others) {
    double whole = 0.0;
    double shared = 0.0;
    for (const Stroke& line : lines) {
        const int pieces = static_cast<int>(line.Length()) + 1;
        for (int i = 0; i < pieces; ++i) {
            const double share = (i + 0.5) / pieces;
            const ArtPoint point{line.from.x + share * (line.to.x - line.from.x),
                                 line.from.y + share * (line.to.y - line.from.y)};
            const bool isShared = std::any_of(others.begin(), others.end(), [&](const Stroke& other) {
                return DistanceTo(other, point) < 1.0;
            });
            whole += line.Length() / pieces;
            shared += isShared ? line.Length() / pieces : 0.0;
        }
    }
    EXPECT_GT(whole, kModelPixels) << "hardly a line";
    return shared / whole;
}

std::vector<std::filesystem::path> StepFiles(const TemporaryFolder& folder) {
    const std::filesystem::path sample = folder / "sample.stp";
    WriteStepSample(sample);
    std::vector<std::filesystem::path> files{sample};
    const char* given = std::getenv("ZR_MODELS");
    const auto model = std::filesystem::path(given != nullptr ? given : ZR_MODELS) / "step/as1-oc-214.stp";
    if (std::filesystem::exists(model)) files.push_back(model);
    return files;
}

// From sides where the kernel is right: from some it forgets the contours of a long rod that others cover at
// both ends.
TEST(LineArt, AgreesWithTheCadKernelsHiddenLines) {
    const zrkapp::illustration::HostSession session(1);
    const TemporaryFolder folder;
    for (const auto& file : StepFiles(folder)) {
        TwoDrawings drawings(file);
        for (const dg::DVec3& towardsEye :
             {dg::DVec3(1, 0.8, 1.2), dg::DVec3(0.5, 0.6, 1.0), dg::DVec3(0.9, 0.3, -0.6)}) {
            SCOPED_TRACE(testing::Message() << file.filename() << ' ' << towardsEye.x);
            drawings.LookFrom(towardsEye);
            const std::vector<Stroke> ours = drawings.Ours();
            const std::vector<Stroke> theirs = drawings.Theirs();
            EXPECT_GT(SharedLength(ours, theirs), 0.98) << "ours that the kernel does not draw";
            EXPECT_GT(SharedLength(theirs, ours), 0.98) << "the kernel's that we do not draw";
        }
    }
}

}  // namespace
}  // namespace zrsheet::test
