#include "app/import/cad/SphereFaces.h"

#include <BRepAdaptor_Surface.hxx>
#include <BRepLib.hxx>
#include <BRepMesh_IncrementalMesh.hxx>
#include <BRepTools_ReShape.hxx>
#include <BRep_Builder.hxx>
#include <BRep_Tool.hxx>
#include <Geom_SphericalSurface.hxx>
#include <Poly_Triangulation.hxx>
#include <ShapeFix_Face.hxx>
#include <TopExp.hxx>
#include <TopExp_Explorer.hxx>
#include <TopTools_IndexedDataMapOfShapeListOfShape.hxx>
#include <TopTools_IndexedMapOfShape.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Face.hxx>
#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <optional>
#include <vector>

namespace zrsheet {
namespace {

constexpr double kSameSphere = 1e-4;  // of the radius: how far two spheres may differ
constexpr double kAreaSlack = 0.02;   // of the sphere's area: what triangles are smaller than it, and more
constexpr int kTriedAxes = 12;

using Triangle = std::array<gp_Pnt, 3>;

gp_Vec AreaOf(const Triangle& t) { return gp_Vec(t[0], t[1]).Crossed(gp_Vec(t[0], t[2])) * 0.5; }

/// A face as its triangles, in the space of the body.
class SphereFace {
public:
    SphereFace(const TopoDS_Face& face, const gp_Sphere& sphere) : m_face(face), m_sphere(sphere) {
        TopLoc_Location location;
        const Handle(Poly_Triangulation) mesh = BRep_Tool::Triangulation(face, location);
        if (mesh.IsNull()) return;
        const gp_Trsf toBody = location.Transformation();
        for (int i = 1; i <= mesh->NbTriangles(); ++i) {
            std::array<int, 3> nodes{};
            mesh->Triangle(i).Get(nodes[0], nodes[1], nodes[2]);
            Triangle triangle;
            for (std::size_t k = 0; k < 3; ++k) triangle[k] = mesh->Node(nodes[k]).Transformed(toBody);
            m_area += AreaOf(triangle).Magnitude();
            m_triangles.push_back(triangle);
        }
    }

    const TopoDS_Face& Face() const { return m_face; }
    const gp_Sphere& Sphere() const { return m_sphere; }
    double Share() const { return m_area / m_sphere.Area(); }

    bool IsOnSphereOf(const SphereFace& other) const {
        const double slack = kSameSphere * m_sphere.Radius();
        return std::abs(m_sphere.Radius() - other.m_sphere.Radius()) <= slack &&
               m_sphere.Location().Distance(other.m_sphere.Location()) <= slack;
    }

    /// Far from the face's border, as far as triangles tell. Requires: there are triangles.
    gp_Vec TowardsInside() const {
        const auto largest = std::max_element(
            m_triangles.begin(), m_triangles.end(), [](const Triangle& a, const Triangle& b) {
                return AreaOf(a).SquareMagnitude() < AreaOf(b).SquareMagnitude();
            });
        const Triangle& t = *largest;
        return (Out(t[0]) + Out(t[1]) + Out(t[2])) / 3.0;
    }

    /// Whether the ray from the sphere's middle meets the face.
    bool IsMetTowards(const gp_Vec& direction) const {
        return std::any_of(m_triangles.begin(), m_triangles.end(), [&](const Triangle& t) {
            const double ab = direction.Dot(Out(t[0]).Crossed(Out(t[1])));
            const double bc = direction.Dot(Out(t[1]).Crossed(Out(t[2])));
            const double ca = direction.Dot(Out(t[2]).Crossed(Out(t[0])));
            const bool isInCone = (ab > 0 && bc > 0 && ca > 0) || (ab < 0 && bc < 0 && ca < 0);
            return isInCone && direction.Dot(Out(t[0])) > 0.0;
        });
    }

    /// The middle of what the face leaves over: the outward areas of a whole sphere add up to nothing.
    gp_Vec TowardsRest() const {
        gp_Vec sum;
        for (const Triangle& t : m_triangles) {
            const gp_Vec area = AreaOf(t);
            sum += area.Dot(Out(t[0])) > 0.0 ? area : -area;
        }
        return -sum;
    }

    /// The least angle between the axis through both poles and the face's border.
    double BorderFrom(const gp_Dir& axis) const {
        double least = std::numbers::pi;
        for (TopExp_Explorer edge(m_face, TopAbs_EDGE); edge.More(); edge.Next()) {
            TopLoc_Location location;
            Handle(Poly_Triangulation) mesh;
            Handle(Poly_PolygonOnTriangulation) row;
            BRep_Tool::PolygonOnTriangulation(TopoDS::Edge(edge.Current()), row, mesh, location);
            if (row.IsNull()) continue;
            for (int i = 1; i <= row->NbNodes(); ++i) {
                const gp_Vec out = Out(mesh->Node(row->Node(i)).Transformed(location.Transformation()));
                if (out.Magnitude() <= 0.0) continue;
                const double angle = gp_Dir(out).Angle(axis);
                least = std::min({least, angle, std::numbers::pi - angle});
            }
        }
        return least;
    }

private:
    gp_Vec Out(const gp_Pnt& point) const { return {m_sphere.Location(), point}; }

    TopoDS_Face m_face;
    gp_Sphere m_sphere;
    std::vector<Triangle> m_triangles;
    double m_area = 0.0;
};

std::vector<SphereFace> SphereFacesOf(const TopoDS_Shape& body) {
    TopTools_IndexedMapOfShape faces;
    TopExp::MapShapes(body, TopAbs_FACE, faces);
    std::vector<SphereFace> found;
    for (int i = 1; i <= faces.Extent(); ++i) {
        const TopoDS_Face& face = TopoDS::Face(faces(i));
        const BRepAdaptor_Surface surface(face, false);
        if (surface.GetType() != GeomAbs_Sphere) continue;
        SphereFace sphereFace(face, surface.Sphere());
        if (sphereFace.Share() > 0.0) found.push_back(std::move(sphereFace));
    }
    return found;
}

/// Whether it is more than half of a sphere of which another face lies in it.
bool CoversAnother(const SphereFace& face, const std::vector<SphereFace>& all) {
    if (face.Share() < 0.5 + kAreaSlack || face.Share() > 1.0 - kAreaSlack) return false;
    return std::any_of(all.begin(), all.end(), [&face](const SphereFace& other) {
        return !other.Face().IsSame(face.Face()) && other.IsOnSphereOf(face) &&
               other.Share() < face.Share() && face.IsMetTowards(other.TowardsInside());
    });
}

/// The same sphere with its seam behind what the face leaves over, and its poles far from the border.
gp_Sphere FrameOfRest(const SphereFace& face) {
    const gp_Dir middle(face.TowardsRest());
    const gp_Ax3 first(face.Sphere().Location(), gp_Ax2(gp_Pnt(), middle).XDirection(), middle);
    gp_Ax3 best = first;
    double most = -1.0;
    for (int i = 0; i < kTriedAxes; ++i) {
        const gp_Ax3 turned =
            first.Rotated(gp_Ax1(first.Location(), middle), i * std::numbers::pi / kTriedAxes);
        const double angle = face.BorderFrom(turned.Direction());
        if (angle <= most) continue;
        most = angle;
        best = turned;
    }
    return {best, face.Sphere().Radius()};
}

/// What the face leaves over of its sphere, with the same edges in the same senses.
TopoDS_Face RestOf(const SphereFace& face) {
    const BRep_Builder builder;
    TopoDS_Face rest;
    builder.MakeFace(rest, new Geom_SphericalSurface(FrameOfRest(face)), BRep_Tool::Tolerance(face.Face()));
    const TopoDS_Shape forward = face.Face().Oriented(TopAbs_FORWARD);
    for (TopExp_Explorer wire(forward, TopAbs_WIRE); wire.More(); wire.Next()) {
        TopoDS_Wire turned;
        builder.MakeWire(turned);
        for (TopExp_Explorer edge(wire.Current(), TopAbs_EDGE); edge.More(); edge.Next()) {
            if (!BRep_Tool::Degenerated(TopoDS::Edge(edge.Current())))
                builder.Add(turned, edge.Current().Reversed());
        }
        builder.Add(rest, turned);
    }
    ShapeFix_Face fix(rest);
    fix.FixOrientationMode() = 0;
    fix.FixMissingSeamMode() = 0;
    fix.Perform();
    rest = fix.Face();
    rest.Orientation(TopAbs::Reverse(face.Face().Orientation()));
    return rest;
}

/// None if the kernel makes something else of it.
std::optional<TopoDS_Face> CheckedRestOf(const SphereFace& face) {
    const TopoDS_Face rest = RestOf(face);
    if (rest.IsNull()) return std::nullopt;
    const BRepMesh_IncrementalMesh mesh(rest, kAreaSlack * face.Sphere().Radius());
    const double share = SphereFace(rest, face.Sphere()).Share();
    if (std::abs(share + face.Share() - 1.0) > kAreaSlack) return std::nullopt;
    return rest;
}

/// The solid with its surface the other way round, as a shape of its own.
TopoDS_Solid Turned(const TopoDS_Shape& solid) {
    const BRep_Builder builder;
    TopoDS_Solid turned;
    builder.MakeSolid(turned);
    for (TopExp_Explorer shell(solid, TopAbs_SHELL); shell.More(); shell.Next())
        builder.Add(turned, shell.Current().Reversed());
    return turned;
}

TopoDS_Shape FacingOutwards(const TopoDS_Shape& shape) {
    const Handle(BRepTools_ReShape) turned = new BRepTools_ReShape;
    for (TopExp_Explorer each(shape, TopAbs_SOLID); each.More(); each.Next()) {
        TopoDS_Solid solid = TopoDS::Solid(each.Current().Located(TopLoc_Location()));
        const TopAbs_Orientation before = solid.Orientation();
        if (BRepLib::OrientClosedSolid(solid) && solid.Orientation() != before)
            turned->Replace(each.Current(), Turned(each.Current()));
    }
    return turned->Apply(shape);
}

/// Two faces of one sphere go over into each other, which the kernel cannot tell where they meet at a pole.
void SmoothBorders(const TopoDS_Shape& shape) {
    const std::vector<SphereFace> faces = SphereFacesOf(shape);
    TopTools_IndexedDataMapOfShapeListOfShape edges;
    TopExp::MapShapesAndAncestors(shape, TopAbs_EDGE, TopAbs_FACE, edges);
    const auto sphereFace = [&faces](const TopoDS_Shape& face) {
        return std::find_if(faces.begin(), faces.end(),
                            [&face](const SphereFace& each) { return each.Face().IsSame(face); });
    };
    for (int i = 1; i <= edges.Extent(); ++i) {
        if (edges(i).Extent() != 2) continue;
        const auto one = sphereFace(edges(i).First());
        const auto other = sphereFace(edges(i).Last());
        if (one == faces.end() || other == faces.end() || !one->IsOnSphereOf(*other)) continue;
        BRep_Builder().Continuity(TopoDS::Edge(edges.FindKey(i)), one->Face(), other->Face(), GeomAbs_CN);
    }
}

}  // namespace

TopoDS_Shape WithTrueSpheres(const TopoDS_Shape& shape) {
    const Handle(BRepTools_ReShape) mended = new BRepTools_ReShape;
    bool isMended = false;
    const std::vector<SphereFace> all = SphereFacesOf(shape);
    for (const SphereFace& face : all) {
        if (!CoversAnother(face, all)) continue;
        const std::optional<TopoDS_Face> rest = CheckedRestOf(face);
        if (!rest) continue;
        mended->Replace(face.Face(), *rest);
        isMended = true;
    }
    if (!isMended) return shape;
    const TopoDS_Shape body = FacingOutwards(mended->Apply(shape));
    SmoothBorders(body);
    return body;
}

}  // namespace zrsheet
