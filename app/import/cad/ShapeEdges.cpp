#include "app/import/cad/ShapeEdges.h"

#include <BRep_Tool.hxx>
#include <Poly_PolygonOnTriangulation.hxx>
#include <Poly_Triangulation.hxx>
#include <TopExp.hxx>
#include <TopTools_IndexedDataMapOfShapeListOfShape.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Edge.hxx>
#include <TopoDS_Face.hxx>
#include <TopoDS_Vertex.hxx>
#include <algorithm>
#include <map>

#include "app/import/reading/PartBuilder.h"

namespace zrsheet {
namespace {

using Row = std::vector<std::uint32_t>;

Row RowOf(const Poly_PolygonOnTriangulation& polygon, std::uint32_t firstNode) {
    Row row;
    row.reserve(static_cast<std::size_t>(polygon.NbNodes()));
    for (int i = 1; i <= polygon.NbNodes(); ++i)
        row.push_back(firstNode + static_cast<std::uint32_t>(polygon.Node(i)) - 1);
    return row;
}

// A face that meets itself at the edge has a row on either side.
void AppendRows(const TopoDS_Edge& edge, const TopoDS_Face& face, std::uint32_t firstNode, ShapeEdge& to) {
    TopLoc_Location location;
    const Handle(Poly_Triangulation) mesh = BRep_Tool::Triangulation(face, location);
    if (mesh.IsNull()) return;
    const auto append = [&](const TopoDS_Edge& side) {
        const auto polygon = BRep_Tool::PolygonOnTriangulation(side, mesh, location);
        if (!polygon.IsNull()) to.rows.push_back(RowOf(*polygon, firstNode));
    };
    append(edge);
    if (BRep_Tool::IsClosed(edge, face)) append(TopoDS::Edge(edge.Reversed()));
}

ShapeEdge ShapeEdgeOf(const TopoDS_Edge& edge, const TopTools_ListOfShape& itsFaces,
                      const MeshedFaces& faces) {
    ShapeEdge made;
    made.tolerance = BRep_Tool::Tolerance(edge);
    made.isSmooth = BRep_Tool::MaxContinuity(edge) > GeomAbs_C0;
    made.isPoint = BRep_Tool::Degenerated(edge);
    std::vector<int> numbers;
    for (const TopoDS_Shape& face : itsFaces) {
        const int number = faces.shapes.FindIndex(face);
        if (std::find(numbers.begin(), numbers.end(), number) == numbers.end()) numbers.push_back(number);
    }
    for (const int number : numbers) {
        const TopoDS_Face& face = TopoDS::Face(faces.shapes(number));
        AppendRows(edge, face, faces.firstNodes[static_cast<std::size_t>(number) - 1], made);
    }
    made.isSeam = numbers.size() == 1 && BRep_Tool::IsClosed(edge, TopoDS::Face(faces.shapes(numbers[0])));
    return made;
}

/// Joins the ends of edges that meet in a corner of the body.
class Corners {
public:
    Corners(double tolerance, VertexWeld& weld) : m_tolerance(tolerance), m_weld(weld) {}

    void Add(int corner, std::uint32_t node, double tolerance) {
        if (corner == 0) return;
        const auto [known, isNew] = m_nodes.try_emplace(corner, node);
        if (!isNew) m_weld.Join(known->second, node, std::max(tolerance, m_tolerance));
    }

private:
    double m_tolerance;
    VertexWeld& m_weld;
    std::map<int, std::uint32_t> m_nodes;
};

}  // namespace

std::vector<ShapeEdge> ShapeEdgesOf(const TopoDS_Shape& shape, const MeshedFaces& faces) {
    TopTools_IndexedDataMapOfShapeListOfShape facesOfEdges;
    TopExp::MapShapesAndAncestors(shape, TopAbs_EDGE, TopAbs_FACE, facesOfEdges);
    TopTools_IndexedMapOfShape corners;
    TopExp::MapShapes(shape, TopAbs_VERTEX, corners);
    std::vector<ShapeEdge> edges;
    for (int i = 1; i <= facesOfEdges.Extent(); ++i) {
        if (facesOfEdges(i).IsEmpty()) continue;  // a loose curve
        const TopoDS_Edge forward = TopoDS::Edge(facesOfEdges.FindKey(i).Oriented(TopAbs_FORWARD));
        ShapeEdge edge = ShapeEdgeOf(forward, facesOfEdges(i), faces);
        if (edge.rows.empty()) continue;
        edge.firstCorner = corners.FindIndex(TopExp::FirstVertex(forward));
        edge.lastCorner = corners.FindIndex(TopExp::LastVertex(forward));
        edges.push_back(std::move(edge));
    }
    return edges;
}

void WeldAlong(std::span<const ShapeEdge> edges, double tolerance, VertexWeld& weld) {
    Corners corners(tolerance, weld);
    for (const ShapeEdge& edge : edges) {
        const double most = std::max(edge.tolerance, tolerance);
        for (const Row& row : edge.rows) {
            weld.JoinRows(edge.rows.front(), row, most);
            corners.Add(edge.firstCorner, row.front(), edge.tolerance);
            corners.Add(edge.lastCorner, row.back(), edge.tolerance);
            if (!edge.isPoint) continue;
            for (const std::uint32_t node : row) weld.Join(row.front(), node, most);
        }
    }
}

std::vector<AssemblyEdge> PartEdges(std::span<const ShapeEdge> edges,
                                    std::span<const std::uint32_t> vertexOfNode) {
    std::vector<AssemblyEdge> made;
    for (const ShapeEdge& edge : edges) {
        if (edge.isSeam || edge.isPoint) continue;
        AssemblyEdge line{edge.isSmooth, {}};
        for (const std::uint32_t node : edge.rows.front()) {
            const std::uint32_t vertex = vertexOfNode[node];
            const bool isSame = !line.vertices.empty() && line.vertices.back() == vertex;
            if (vertex != PartBuilder::kNoVertex && !isSame) line.vertices.push_back(vertex);
        }
        if (line.vertices.size() >= 2) made.push_back(std::move(line));
    }
    return made;
}

}  // namespace zrsheet
