#include "app/import/cad/ShapeTree.h"

#include <fmt/format.h>

#include <TDF_LabelSequence.hxx>
#include <TDataStd_Name.hxx>
#include <TDocStd_Document.hxx>
#include <TopExp_Explorer.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_ShapeTool.hxx>
#include <algorithm>
#include <cmath>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "app/import/ImportError.h"
#include "app/import/Utf8Text.h"
#include "app/import/cad/CadKernel.h"
#include "app/import/cad/ShapeColors.h"
#include "app/import/cad/ShapeMesher.h"
#include "app/import/reading/AssemblyTree.h"
#include "app/import/reading/PartTable.h"
#include "app/import/reading/ReaderProgress.h"

namespace zrsheet {
namespace {

constexpr std::size_t kMostDepth = 10'000;
constexpr std::size_t kMostNodes = 1'000'000;
constexpr double kMetres = 0.001;

std::string NameOf(const TDF_Label& label) {
    Handle(TDataStd_Name) name;
    if (!label.FindAttribute(TDataStd_Name::GetID(), name)) return {};
    const TCollection_ExtendedString& text = name->Get();
    std::string utf8(static_cast<std::size_t>(text.LengthOfCString()) + 1, '\0');
    Standard_PCharacter to = utf8.data();
    text.ToUTF8CString(to);
    utf8.pop_back();
    return OneLine(utf8);
}

// What programs write where nobody gave a name: counters, references and their own.
bool IsMadeUp(std::string_view name) {
    const auto isLetter = [](char c) {
        return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c & 0x80) != 0;
    };
    return std::none_of(name.begin(), name.end(), isLetter) || name.starts_with("=>") ||
           name.starts_with("*") || name.starts_with("NAUO") ||
           name.starts_with("Open CASCADE STEP translator");
}

std::string ProductNameOf(const TDF_Label& product) {
    std::string name = NameOf(product);
    const bool isMark = name.starts_with("*") && name.size() > 1;
    if (isMark) return name.substr(1);
    return name.starts_with("=>") || name.starts_with("Open CASCADE STEP translator") ? std::string() : name;
}

std::array<double, 16> MatrixOf(const gp_Trsf& trsf) {
    std::array<double, 16> matrix = kIdentityMatrix;
    for (int from = 1; from <= 3; ++from) {
        for (int to = 1; to <= 3; ++to)
            matrix[static_cast<std::size_t>((from - 1) * 4 + to - 1)] = trsf.Value(to, from);
    }
    for (int to = 1; to <= 3; ++to)
        matrix[static_cast<std::size_t>(12 + to - 1)] = trsf.Value(to, 4) * kMetres;
    return matrix;
}

// CAD's Z points up, and its front looks against Y.
std::array<double, 16> TurnedUp(std::array<double, 16> matrix) {
    constexpr double kPlusZero = 0.0;  // added, it turns -0 into 0
    for (std::size_t row = 0; row < 16; row += 4) {
        const double y = matrix[row + 1];
        matrix[row + 1] = matrix[row + 2];
        matrix[row + 2] = kPlusZero - y;
    }
    return matrix;
}

/// Turns products into parts, each when it is first met.
class Parts {
public:
    struct Part {
        int number = -1;  // -1: no triangles
        std::optional<AssemblyColor> color;
    };

    Parts(const Handle(XCAFDoc_ShapeTool) & shapes, std::vector<std::string>& warnings)
        : m_shapes(shapes), m_warnings(warnings) {
        TDF_LabelSequence all;
        shapes->GetShapes(all);
        m_count = std::max(all.Length(), 1);
    }

    const Part& Of(const TDF_Label& product) {
        if (!m_known.IsBound(product)) {
            TellReaderProgress("Triangulating its parts", 60 + 40 * m_known.Extent() / m_count);
            m_known.Bind(product, Make(product));
        }
        return m_known.Find(product);
    }
    std::vector<AssemblyPart> Take() { return m_parts.Take(); }
    std::vector<std::string> TakeEmpty() { return std::move(m_empty); }

private:
    Part Make(const TDF_Label& product) {
        const std::string name = ProductNameOf(product);
        const TopoDS_Shape shape = m_shapes->GetShape(product);
        if (shape.IsNull() || !TopExp_Explorer(shape, TopAbs_VERTEX).More()) m_empty.push_back(name);
        try {
            MeshedShape meshed = MeshShape(shape);
            if (meshed.damagedFaces > 0) {
                m_warnings.push_back(
                    fmt::format("\"{}\" lacks {} faces that cannot be read", name, meshed.damagedFaces));
            }
            if (meshed.part.indices.empty()) return {};
            meshed.part.name = name;
            Part part;
            DoInCadKernel([&] { part.color = MainColorOf(product, m_shapes); });
            part.number = m_parts.Add(std::move(meshed.part));
            return part;
        } catch (const ImportError& error) {
            m_warnings.push_back(fmt::format("\"{}\" is left out, it is damaged ({})", name, error.what()));
            return {};
        }
    }

    Handle(XCAFDoc_ShapeTool) m_shapes;
    std::vector<std::string>& m_warnings;
    std::vector<std::string> m_empty;  // names of products with nothing in their shape
    int m_count = 1;                   // of parts and assemblies together
    PartTable m_parts;
    NCollection_DataMap<TDF_Label, Part, TDF_LabelMapHasher> m_known;
};

/// Walks the structure depth first without recursion.
class TreeWalk {
public:
    TreeWalk(const Handle(XCAFDoc_ShapeTool) & shapes, const LabelProperties& properties, Assembly& assembly)
        : m_shapes(shapes),
          m_properties(properties),
          m_assembly(assembly),
          m_parts(shapes, assembly.warnings) {}

    std::vector<std::string> Run() {
        TDF_LabelSequence roots;
        m_shapes->GetFreeShapes(roots);
        Push(roots, {});
        while (!m_waiting.empty()) {
            const Visit visit = m_waiting.back();
            m_waiting.pop_back();
            Enter(visit);
        }
        m_assembly.parts = m_parts.Take();
        TellLooseBodies();
        return m_parts.TakeEmpty();
    }

private:
    struct Visit {
        TDF_Label label;
        int parent = -1;
        std::size_t depth = 0;
        std::optional<AssemblyColor> color;  // of the assembly around it
    };

    void Push(const TDF_LabelSequence& labels, Visit visit) {
        for (int i = labels.Length(); i >= 1; --i) {
            visit.label = labels(i);
            m_waiting.push_back(visit);
        }
    }

    void Enter(Visit visit) {
        if (visit.depth++ > kMostDepth || m_assembly.nodes.size() >= kMostNodes) {
            throw ImportError(
                "its assemblies hold more than a million parts or nest deeper than 10000; the file "
                "is probably damaged, otherwise split it");
        }
        TDF_Label product = visit.label;
        if (XCAFDoc_ShapeTool::IsReference(visit.label))
            XCAFDoc_ShapeTool::GetReferredShape(visit.label, product);
        m_assembly.nodes.push_back(NodeOf(visit, product));
        AssemblyNode& node = m_assembly.nodes.back();
        if (const auto own = ColorOf(visit.label)) visit.color = own;
        if (XCAFDoc_ShapeTool::IsAssembly(product)) {
            TDF_LabelSequence components;
            XCAFDoc_ShapeTool::GetComponents(product, components);
            visit.parent = static_cast<int>(m_assembly.nodes.size()) - 1;
            Push(components, visit);
        } else {
            const Parts::Part& part = m_parts.Of(product);
            node.part = part.number;
            node.color = part.color && !ColorOf(visit.label) ? part.color : visit.color;
        }
    }

    AssemblyNode NodeOf(const Visit& visit, const TDF_Label& product) const {
        AssemblyNode node;
        node.product = ProductNameOf(product);
        node.name = NameOf(visit.label);
        if (IsMadeUp(node.name)) node.name = node.product;
        node.parent = visit.parent;
        if (visit.label != product) node.matrix = MatrixOf(XCAFDoc_ShapeTool::GetLocation(visit.label));
        if (visit.parent < 0) node.matrix = TurnedUp(node.matrix);
        if (m_properties.IsBound(visit.label)) node.properties = m_properties.Find(visit.label);
        if (visit.label != product && m_properties.IsBound(product)) {
            const Properties& more = m_properties.Find(product);
            node.properties.insert(node.properties.end(), more.begin(), more.end());
        }
        return node;
    }

    // Of several bodies without structure, none is loose.
    void TellLooseBodies() {
        const auto isRoot = [](const AssemblyNode& node) { return node.parent < 0; };
        const auto isLoose = [&](const AssemblyNode& node) { return isRoot(node) && node.part >= 0; };
        const auto& nodes = m_assembly.nodes;
        const auto isStructure = [&](const AssemblyNode& node) { return isRoot(node) && node.part < 0; };
        const auto first = std::find_if(nodes.begin(), nodes.end(), isLoose);
        if (first == nodes.end() || std::none_of(nodes.begin(), nodes.end(), isStructure)) return;
        m_assembly.warnings.push_back(
            fmt::format("{} bodies stand outside its product structure, the first \"{}\"",
                        std::count_if(nodes.begin(), nodes.end(), isLoose), first->name));
    }

    Handle(XCAFDoc_ShapeTool) m_shapes;
    const LabelProperties& m_properties;
    Assembly& m_assembly;
    Parts m_parts;
    std::vector<Visit> m_waiting;
};

}  // namespace

std::vector<std::string> ReadShapes(const Handle(TDocStd_Document) & document,
                                    const LabelProperties& properties, Assembly& assembly) {
    std::vector<std::string> empty;
    DoInCadKernel([&] {
        empty = TreeWalk(XCAFDoc_DocumentTool::ShapeTool(document->Main()), properties, assembly).Run();
    });
    FinishTree(assembly);
    return empty;
}

}  // namespace zrsheet
