#include "app/import/cad/ShapeColors.h"

#include <BRepGProp.hxx>
#include <GProp_GProps.hxx>
#include <Quantity_Color.hxx>
#include <TDF_LabelSequence.hxx>
#include <TopExp.hxx>
#include <TopTools_IndexedMapOfShape.hxx>
#include <TopoDS.hxx>
#include <XCAFDoc_ColorTool.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_ShapeTool.hxx>
#include <algorithm>
#include <map>

namespace zrsheet {
namespace {

constexpr double kShareOfMain = 0.5;  // of the surface; below it no colour is the part's

AssemblyColor AsAssemblyColor(const Quantity_Color& color) {
    std::array<double, 3> shares{};
    color.Values(shares[0], shares[1], shares[2], Quantity_TOC_sRGB);
    AssemblyColor made{};
    std::transform(shares.begin(), shares.end(), made.begin(),
                   [](double share) { return static_cast<float>(std::clamp(share, 0.0, 1.0)); });
    return made;
}

double AreaOf(const TopoDS_Shape& face) {
    GProp_GProps properties;
    constexpr bool kFromTriangles = true;
    BRepGProp::SurfaceProperties(face, properties, false, kFromTriangles);
    return properties.Mass();
}

/// The colours of the faces of a product, as its bodies and faces are given them.
class FaceColors {
public:
    explicit FaceColors(const TopoDS_Shape& product) {
        TopExp::MapShapes(product, TopAbs_FACE, m_faces);
        m_colors.resize(static_cast<std::size_t>(m_faces.Extent()));
    }

    void Set(const TopoDS_Shape& piece, const AssemblyColor& color) {
        TopTools_IndexedMapOfShape faces;
        TopExp::MapShapes(piece, TopAbs_FACE, faces);
        for (int i = 1; i <= faces.Extent(); ++i) {
            const int place = m_faces.FindIndex(faces(i));
            if (place > 0) m_colors[static_cast<std::size_t>(place) - 1] = color;
        }
    }

    std::optional<AssemblyColor> Main() const {
        std::map<AssemblyColor, double> areas;
        double sum = 0.0;
        for (int i = 1; i <= m_faces.Extent(); ++i) {
            const double area = AreaOf(m_faces(i));
            sum += area;
            const auto& color = m_colors[static_cast<std::size_t>(i) - 1];
            if (color) areas[*color] += area;
        }
        const auto most = std::max_element(areas.begin(), areas.end(),
                                           [](const auto& a, const auto& b) { return a.second < b.second; });
        if (most == areas.end() || most->second < kShareOfMain * sum) return std::nullopt;
        return most->first;
    }

private:
    TopTools_IndexedMapOfShape m_faces;
    std::vector<std::optional<AssemblyColor>> m_colors;
};

}  // namespace

std::optional<AssemblyColor> ColorOf(const TDF_Label& label) {
    const Handle(XCAFDoc_ColorTool) colors = XCAFDoc_DocumentTool::ColorTool(label);
    Quantity_Color color;
    for (const XCAFDoc_ColorType type : {XCAFDoc_ColorSurf, XCAFDoc_ColorGen}) {
        if (colors->GetColor(label, type, color)) return AsAssemblyColor(color);
    }
    return std::nullopt;
}

std::optional<AssemblyColor> MainColorOf(const TDF_Label& product, const Handle(XCAFDoc_ShapeTool) & shapes) {
    TDF_LabelSequence pieces;
    shapes->GetSubShapes(product, pieces);
    const std::optional<AssemblyColor> own = ColorOf(product);
    if (pieces.IsEmpty()) return own;
    FaceColors faces(shapes->GetShape(product));
    if (own) faces.Set(shapes->GetShape(product), *own);
    // Bodies before their faces, whose colour counts where both have one.
    for (const bool areFaces : {false, true}) {
        for (const TDF_Label& piece : pieces) {
            const TopoDS_Shape shape = shapes->GetShape(piece);
            const auto color = ColorOf(piece);
            if (color && !shape.IsNull() && (shape.ShapeType() == TopAbs_FACE) == areFaces)
                faces.Set(shape, *color);
        }
    }
    return faces.Main();
}

}  // namespace zrsheet
