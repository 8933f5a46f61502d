#include "app/import/cad/ShapeMesher.h"

#include <BRepBndLib.hxx>
#include <BRepLib.hxx>
#include <BRepMesh_IncrementalMesh.hxx>
#include <BRep_Tool.hxx>
#include <Bnd_Box.hxx>
#include <Poly_Triangulation.hxx>
#include <TopExp.hxx>
#include <TopTools_IndexedMapOfShape.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Face.hxx>
#include <cmath>
#include <cstdint>
#include <utility>
#include <vector>

#include "app/import/cad/CadKernel.h"
#include "app/import/cad/ShapeEdges.h"
#include "app/import/cad/SphereFaces.h"
#include "app/import/reading/PartBuilder.h"

namespace zrsheet {
namespace {

// A part that fills a page two thousand pixels wide is nowhere more than a pixel beside its true surface; the
// angle keeps small holes and rounds of large parts round.
constexpr double kDeflectionOfSize = 0.0005;
constexpr double kAngle = 0.25;        // radians
constexpr double kSmoothAngle = 0.02;  // radians; faces that meet at less go over into each other
constexpr double kWeldOfSize = 1e-5;   // nodes on a common edge come from one curve: rounding only
constexpr double kLargestSize = 1e9;   // millimetres; no body, but damage
constexpr double kMetres = 0.001;      // the kernel's unit is a millimetre

double SizeOf(const TopoDS_Shape& shape) {
    Bnd_Box box;
    BRepBndLib::Add(shape, box, false);
    return box.IsVoid() ? 0.0 : std::sqrt(box.SquareExtent());
}

void Triangulate(const TopoDS_Shape& shape, double size) {
    IMeshTools_Parameters parameters;
    parameters.Deflection = kDeflectionOfSize * size;
    parameters.Angle = kAngle;
    parameters.InParallel = true;
    const BRepMesh_IncrementalMesh mesh(shape, parameters);
    BRepLib::EncodeRegularity(shape, kSmoothAngle);
}

void AppendTriangles(const Poly_Triangulation& mesh, std::uint32_t firstNode, bool turn,
                     std::vector<std::uint32_t>& indices) {
    for (int i = 1; i <= mesh.NbTriangles(); ++i) {
        std::array<int, 3> corners{};
        mesh.Triangle(i).Get(corners[0], corners[1], corners[2]);
        if (turn) std::swap(corners[1], corners[2]);
        for (const int corner : corners)
            indices.push_back(firstNode + static_cast<std::uint32_t>(corner) - 1);
    }
}

/// The triangles of all faces, one after the other, in the body's space.
class FaceMeshes {
public:
    explicit FaceMeshes(const TopoDS_Shape& shape) {
        TopExp::MapShapes(shape, TopAbs_FACE, m_faces.shapes);
        for (int i = 1; i <= m_faces.shapes.Extent(); ++i) Add(TopoDS::Face(m_faces.shapes(i)));
    }

    const MeshedFaces& Faces() const { return m_faces; }
    int DamagedFaces() const { return m_damaged; }
    std::vector<gp_Pnt> TakeNodes() { return std::move(m_nodes); }
    std::vector<std::uint32_t> TakeIndices() { return std::move(m_indices); }

private:
    void Add(const TopoDS_Face& face) {
        m_faces.firstNodes.push_back(static_cast<std::uint32_t>(m_nodes.size()));
        TopLoc_Location location;
        const Handle(Poly_Triangulation) mesh = BRep_Tool::Triangulation(face, location);
        if (mesh.IsNull() || mesh->NbTriangles() == 0) {
            ++m_damaged;
            return;
        }
        const gp_Trsf toBody = location.Transformation();
        const bool turn = (face.Orientation() == TopAbs_REVERSED) != toBody.IsNegative();
        AppendTriangles(*mesh, m_faces.firstNodes.back(), turn, m_indices);
        for (int i = 1; i <= mesh->NbNodes(); ++i) m_nodes.push_back(mesh->Node(i).Transformed(toBody));
    }

    MeshedFaces m_faces;
    std::vector<gp_Pnt> m_nodes;
    std::vector<std::uint32_t> m_indices;
    int m_damaged = 0;
};

TriangleList WeldedList(VertexWeld& weld, std::uint32_t nodes, std::vector<std::uint32_t> indices) {
    TriangleList list{{}, std::move(indices)};
    list.positions.reserve(std::size_t{nodes} * 3);
    for (std::uint32_t node = 0; node < nodes; ++node) {
        const gp_Pnt& place = weld.PlaceOf(node);
        for (int axis = 1; axis <= 3; ++axis)
            list.positions.push_back(static_cast<float>(place.Coord(axis) * kMetres));
    }
    return list;
}

MeshedShape Collect(const TopoDS_Shape& shape, double size) {
    FaceMeshes meshes(shape);
    std::vector<gp_Pnt> places = meshes.TakeNodes();
    const auto nodes = static_cast<std::uint32_t>(places.size());
    VertexWeld weld(std::move(places));
    const std::vector<ShapeEdge> edges = ShapeEdgesOf(shape, meshes.Faces());
    WeldAlong(edges, kWeldOfSize * size, weld);
    PartBuilder builder;
    const auto vertices = builder.Add(WeldedList(weld, nodes, meshes.TakeIndices()));
    MeshedShape meshed{builder.Take(), meshes.DamagedFaces()};
    meshed.part.edges = PartEdges(edges, vertices);
    return meshed;
}

}  // namespace

MeshedShape MeshShape(const TopoDS_Shape& shape) {
    MeshedShape meshed;
    DoInCadKernel([&] {
        const double size = SizeOf(shape);
        if (!(size > 0.0 && size < kLargestSize)) return;
        Triangulate(shape, size);
        const TopoDS_Shape body = WithTrueSpheres(shape);
        if (!body.IsSame(shape)) Triangulate(body, size);
        meshed = Collect(body, size);
    });
    return meshed;
}

}  // namespace zrsheet
