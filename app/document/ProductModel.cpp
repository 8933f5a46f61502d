#include "app/document/ProductModel.h"

#include <algorithm>
#include <cfloat>
#include <map>
#include <optional>
#include <utility>

#include "app/document/Structure.h"
#include "zrk/object/Checked.h"
#include "zrk/tree/ComponentNode.h"
#include "zrk/world/World.h"
#include "zrkapp/illustration/IllMultiRootContainer.h"

namespace zrsheet {
namespace {

using ComponentPtr = du::SmartPtr<zrk::ComponentNode>;
using InstancePtr = du::SmartPtr<zrk::Instance>;
using PartPtr = du::SmartPtr<zrk::ShapeInstance>;
using zrk::illustration::SbomInstance;

/// The properties under which every part can be asked for what the file says of it.
constexpr const char* kNameProperty = "Name";

dg::Location LocationOf(const AssemblyNode& node) { return dg::Location(dg::DMat44(node.matrix)); }

/// Where a drawing has lines: not where faces go over into each other.
std::optional<zrg::Shape::Creases> CreasesOf(const AssemblyPart& part) {
    if (part.edges.empty()) return std::nullopt;
    zrg::Shape::Creases creases;
    for (const AssemblyEdge& edge : part.edges) {
        if (edge.isSmooth) continue;
        for (std::size_t i = 1; i < edge.vertices.size(); ++i)
            creases.insert(creases.end(), {edge.vertices[i - 1], edge.vertices[i]});
    }
    return creases;
}

/// Makes each part's definition once, when it is first met.
class Components {
public:
    explicit Components(Assembly& assembly) : m_assembly(assembly), m_names(PartNames(assembly)) {}

    ComponentPtr Of(const AssemblyNode& node, int number) {
        ComponentPtr& component = m_made[number];
        if (!component) component = zrk::Checked(new zrk::ComponentNode(NameOf(node), ShapeOf(node)));
        return component;
    }

    std::string NameOf(const AssemblyNode& node) const {
        return node.part >= 0 ? m_names[static_cast<std::size_t>(node.part)] : ProductName(node);
    }

private:
    du::SmartPtr<zrk::Shape> ShapeOf(const AssemblyNode& node) {
        if (node.part < 0) return nullptr;
        AssemblyPart& part = m_assembly.parts[static_cast<std::size_t>(node.part)];
        auto creases = CreasesOf(part);
        return zrk::Checked(new zrk::Shape(
            new zrg::Shape(std::move(part.positions), std::move(part.indices), std::move(creases))));
    }

    Assembly& m_assembly;
    std::vector<std::string> m_names;
    std::map<int, ComponentPtr> m_made;
};

void CopyProperties(const AssemblyNode& node, const std::string& name, SbomInstance& sbom) {
    sbom.SetProperty(du::Symbol::EMPTY, du::Symbol(kNameProperty), du::Symbol(name));
    for (const auto& [key, value] : node.properties) {
        sbom.SetProperty(du::Symbol::EMPTY, du::Symbol(key), du::Symbol(value));
    }
}

/// The extent of parts on a screen, from their vertices.
struct ScreenExtent {
    double minX = DBL_MAX;
    double minY = DBL_MAX;
    double minZ = DBL_MAX;
    double maxX = -DBL_MAX;
    double maxY = -DBL_MAX;
    double maxZ = -DBL_MAX;

    void Enclose(const dg::DPoint3D& point) {
        minX = std::min(minX, point.x);
        minY = std::min(minY, point.y);
        minZ = std::min(minZ, point.z);
        maxX = std::max(maxX, point.x);
        maxY = std::max(maxY, point.y);
        maxZ = std::max(maxZ, point.z);
    }
};

constexpr ScreenExtent kUnitExtent{-0.5, -0.5, -0.5, 0.5, 0.5, 0.5};

std::vector<PartPtr> ShownParts(const zrk::ShapeScene& scene) {
    auto parts = scene.GetShapeInstances();
    std::erase_if(parts, [](const PartPtr& part) { return !part->IsVisible(); });
    return parts;
}

ScreenExtent Measure(const std::vector<PartPtr>& parts, const dg::DMat44& worldToScreen) {
    ScreenExtent extent;
    for (const auto& part : parts) {
        const zrg::Shape* shape = part->GetShape() ? part->GetShape()->GetShapeData() : nullptr;
        if (shape == nullptr) continue;
        dg::Location location;
        part->GetLocation(location);
        const dg::DMat44 toScreen = location.GetXform() * worldToScreen;
        const auto positions = shape->GetPositions();
        for (std::size_t i = 0; i + 2 < positions.size(); i += 3) {
            const dg::DPoint3D point(static_cast<double>(positions[i]), static_cast<double>(positions[i + 1]),
                                     static_cast<double>(positions[i + 2]));
            extent.Enclose(point * toScreen);
        }
    }
    return extent;
}

constexpr double kLeastSpan = 1e-12;

/// Measures in its pixels what is one of the model's units long.
dg::Camera3D FlatCamera(const ViewDirection& direction) {
    return dg::Camera3D::Orthographic({}, direction.look, direction.up, 1.0, 0, 0, 1.0);
}

/// What is shown, or the whole model when nothing is.
ScreenExtent MeasureAll(const zrk::ShapeScene& scene, const dg::Camera3D& camera) {
    auto parts = ShownParts(scene);
    if (parts.empty()) parts = scene.GetShapeInstances();
    return parts.empty() ? kUnitExtent : Measure(parts, camera.GetWorldToPixel());
}

}  // namespace

ProductModel::ProductModel(Assembly assembly)
    : m_scene(zrk::Checked(new zrk::illustration::Illustration3dScene)) {
    assembly = WithProductAtTop(WithoutWrappers(std::move(assembly)));
    m_name = assembly.name;
    m_view = zrk::Checked(new zrk::ShapeView(m_scene, 1));
    m_scene->AddView(m_view);
    Build(assembly);
}

ProductModel::~ProductModel() {
    m_scene->Close();
    if (const auto world = zrk::World::GetWorld()) {
        world->GetTree()->SetRoot(nullptr);
        world->SetMRC(nullptr);
    }
}

void ProductModel::Build(Assembly& assembly) {
    const InstancePtr top(
        zrk::Checked(new zrk::Instance(du::Symbol("/"), m_name, nullptr, dg::Location::IDENTITY)));
    m_root = zrk::Checked(new SbomInstance(du::Symbol("/"), m_name));
    m_root->SetProperty(du::Symbol::EMPTY, du::Symbol(kNameProperty), du::Symbol(m_name));
    m_root->SetEbomInstance(top);
    const std::vector<std::string> paths = InstancePaths(assembly);
    const std::vector<int> numbers = ComponentNumbers(assembly);
    Components components(assembly);
    std::vector<InstancePtr> instances;
    for (std::size_t i = 0; i < assembly.nodes.size(); ++i) {
        const AssemblyNode& node = assembly.nodes[i];
        const std::string name = components.NameOf(node);
        const du::Symbol path(paths[i]);
        const InstancePtr instance(zrk::Checked(
            new zrk::Instance(path, node.name, components.Of(node, numbers[i]), LocationOf(node))));
        const SbomPtr sbom(zrk::Checked(new SbomInstance(path, node.name)));
        CopyProperties(node, name, *sbom);
        sbom->SetEbomInstance(instance);
        const auto parent = static_cast<std::size_t>(node.parent);
        (node.parent >= 0 ? instances[parent] : top)->AddChild(instance);
        (node.parent >= 0 ? m_instances[parent] : m_root)->AddChild(sbom);
        instances.push_back(instance);
        if (node.color) {
            const auto [red, green, blue] = *node.color;
            m_colors[instance.get()] = dg::Color(red, green, blue, 1.0F);
        }
        m_instances.push_back(sbom);
    }
    const auto world = zrk::World::GetWorld();
    world->GetTree()->SetRoot(top);
    const du::SmartPtr<zrkapp::illustration::KorvanFileInfo> info(new zrkapp::illustration::KorvanFileInfo);
    info->SetProperty("Title", m_name);
    world->SetMRC(zrk::Checked(new zrkapp::illustration::IllMultiRootContainer(info)));
    for (std::size_t i = 0; i < instances.size(); ++i) {
        if (assembly.nodes[i].part < 0) continue;
        m_scene->CreateShapeInstance(instances[i]);
        ++m_leafCount;
        const zrg::Shape* shape = instances[i]->GetComponentNode()->GetShape()->GetShapeData();
        m_triangleCount += shape->GetTriangleCount();
    }
    m_partCount = assembly.parts.size();
}

PagePoint ProductModel::ExtentFrom(const ViewDirection& direction) const {
    const ScreenExtent extent = MeasureAll(*m_scene, FlatCamera(direction));
    return {std::max(extent.maxX - extent.minX, kLeastSpan), std::max(extent.maxY - extent.minY, kLeastSpan)};
}

void ProductModel::LookAt(const ViewDirection& direction, int width, int height, double margin) {
    const dg::Camera3D flat = FlatCamera(direction);
    const ScreenExtent extent = MeasureAll(*m_scene, flat);
    const double spanX = std::max(extent.maxX - extent.minX, kLeastSpan);
    const double spanY = std::max(extent.maxY - extent.minY, kLeastSpan);
    const double scale =
        std::min(std::max(width - 2.0 * margin, 1.0) / spanX, std::max(height - 2.0 * margin, 1.0) / spanY);
    const dg::DPoint3D middle((extent.minX + extent.maxX) * 0.5, (extent.minY + extent.maxY) * 0.5,
                              (extent.minZ + extent.maxZ) * 0.5);
    // That camera's depth covers one unit before and behind the target; twice the model's depth keeps planes
    // off its ends.
    const double depth = std::max(2.0 * (extent.maxZ - extent.minZ), 1e-9 + spanX + spanY);
    m_view->SetCamera(dg::Camera3D::Orthographic(middle * flat.GetPixelToWorld(), direction.look,
                                                 direction.up, scale, width, height, depth));
}

PageBox ProductModel::ScreenBox() const {
    dg::Camera3D camera;
    m_view->GetCamera(camera);
    const ScreenExtent extent = Measure(ShownParts(*m_scene), camera.GetWorldToPixel());
    if (extent.minX <= extent.maxX) return {extent.minX, extent.minY, extent.maxX, extent.maxY};
    const double x = 0.5 * camera.GetViewportWidth();
    const double y = 0.5 * camera.GetViewportHeight();
    return {x, y, x, y};
}

dg::Color ProductModel::ColorOf(const zrk::ShapeInstance& part) const {
    du::SmartPtr<zrk::Instance> instance;
    part.GetInstance(instance);
    const auto found = m_colors.find(instance.get());
    return found != m_colors.end() ? found->second : dg::Color(1.0F, 1.0F, 1.0F, 1.0F);
}

std::string ProductModel::NameOf(const SbomInstance& instance) {
    du::Symbol name;
    instance.FindProperty(du::Symbol::EMPTY, du::Symbol(kNameProperty), du::Symbol::EMPTY, name);
    return name.Text();
}

}  // namespace zrsheet
