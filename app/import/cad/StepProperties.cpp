#include "app/import/cad/StepProperties.h"

#include <Interface_InterfaceModel.hxx>
#include <NCollection_DataMap.hxx>
#include <STEPCAFControl_ExternFile.hxx>
#include <STEPCAFControl_Reader.hxx>
#include <STEPConstruct_Tool.hxx>
#include <StepBasic_Product.hxx>
#include <StepBasic_ProductDefinition.hxx>
#include <StepBasic_ProductDefinitionFormation.hxx>
#include <StepRepr_CharacterizedDefinition.hxx>
#include <StepRepr_NextAssemblyUsageOccurrence.hxx>
#include <StepRepr_ProductDefinitionShape.hxx>
#include <StepRepr_PropertyDefinition.hxx>
#include <StepRepr_PropertyDefinitionRepresentation.hxx>
#include <StepRepr_Representation.hxx>
#include <StepRepr_RepresentationItem.hxx>
#include <StepRepr_RepresentedDefinition.hxx>
#include <TransferBRep.hxx>
#include <Transfer_TransientProcess.hxx>
#include <XCAFDoc_ShapeTool.hxx>
#include <XSControl_TransferReader.hxx>
#include <XSControl_WorkSession.hxx>
#include <algorithm>
#include <array>
#include <map>
#include <string_view>

#include "app/import/cad/CadKernel.h"
#include "app/import/cad/StepValueText.h"

namespace zrsheet {
namespace {

// What programs write where the format wants a text and there is none.
bool IsPlaceholder(std::string_view text) {
    constexpr std::array<std::string_view, 7> kPlaceholders{
        "", "NOT SPECIFIED", "not specified", "UNSPECIFIED", "LAST_VERSION", "NONE", "None"};
    return std::find(kPlaceholders.begin(), kPlaceholders.end(), text) != kPlaceholders.end();
}

/// Centroids, areas and volumes by which a transfer can be checked: "geometric validation property", with
/// underscores in older files.
bool IsCheck(std::string name) {
    std::replace(name.begin(), name.end(), '_', ' ');
    return name.find("validation property") != std::string::npos;
}

/// The properties in one file.
class FileProperties {
public:
    FileProperties(const Handle(XSControl_WorkSession) & session, const Handle(XCAFDoc_ShapeTool) & shapes,
                   const XCAFDoc_DataMapOfShapeLabel& labels, LabelProperties& properties)
        : m_session(session), m_shapes(shapes), m_labels(labels), m_properties(properties) {}

    void Read() {
        const Handle(Interface_InterfaceModel) model = m_session->Model();
        for (int i = 1; i <= model->NbEntities(); ++i) {
            const Handle(Standard_Transient) entity = model->Value(i);
            if (const auto product = Handle(StepBasic_ProductDefinition)::DownCast(entity); !product.IsNull())
                AddProduct(product);
            using Representation = StepRepr_PropertyDefinitionRepresentation;
            if (const auto property = Handle(Representation)::DownCast(entity); !property.IsNull())
                AddUserProperty(*property);
        }
    }

private:
    void Add(const TDF_Label& label, const std::string& key, const std::string& value) {
        if (label.IsNull() || key.empty() || IsPlaceholder(value)) return;
        if (!m_properties.IsBound(label)) m_properties.Bind(label, {});
        Properties& known = m_properties.ChangeFind(label);
        const auto isKey = [&key](const auto& property) { return property.first == key; };
        if (std::none_of(known.begin(), known.end(), isKey)) known.emplace_back(key, value);
    }

    TDF_Label LabelOf(const Handle(StepBasic_ProductDefinition) & definition) const {
        const auto process = m_session->TransferReader()->TransientProcess();
        const TopoDS_Shape shape = TransferBRep::ShapeResult(process, definition);
        return shape.IsNull() || !m_labels.IsBound(shape) ? TDF_Label() : m_labels.Find(shape);
    }

    TDF_Label LabelOf(const Handle(StepRepr_NextAssemblyUsageOccurrence) & usage) const {
        const STEPConstruct_Tool tool(m_session);
        return STEPCAFControl_Reader::FindInstance(usage, m_shapes, tool, m_labels);
    }

    TDF_Label LabelOf(const StepRepr_CharacterizedDefinition& definition) const {
        if (const auto shape = definition.ProductDefinitionShape(); !shape.IsNull())
            return LabelOf(shape->Definition());
        if (const auto product = definition.ProductDefinition(); !product.IsNull()) return LabelOf(product);
        const auto usage = Handle(StepRepr_NextAssemblyUsageOccurrence)::DownCast(definition.Value());
        return usage.IsNull() ? TDF_Label() : LabelOf(usage);
    }

    void AddProduct(const Handle(StepBasic_ProductDefinition) & definition) {
        const Handle(StepBasic_ProductDefinitionFormation) formation = definition->Formation();
        if (formation.IsNull() || formation->OfProduct().IsNull()) return;
        const Handle(StepBasic_Product) product = formation->OfProduct();
        const TDF_Label label = LabelOf(definition);
        const std::string name = TextOf(product->Name());
        const std::string number = TextOf(product->Id());
        const std::string description = TextOf(product->Description());
        if (number != name) Add(label, "Product id", number);
        if (description != name) Add(label, "Description", description);
        Add(label, "Version", TextOf(formation->Id()));
    }

    void AddUserProperty(const StepRepr_PropertyDefinitionRepresentation& property) {
        const Handle(StepRepr_PropertyDefinition) definition = property.Definition().PropertyDefinition();
        const Handle(StepRepr_Representation) representation = property.UsedRepresentation();
        if (definition.IsNull() || representation.IsNull() || representation->Items().IsNull()) return;
        const std::string name = TextOf(definition->Name());
        if (IsCheck(name)) return;
        const TDF_Label label = LabelOf(definition->Definition());
        for (int i = 1; i <= representation->NbItems(); ++i) {
            const Handle(StepRepr_RepresentationItem) item = representation->ItemsValue(i);
            if (item.IsNull()) continue;
            const std::string itemName = TextOf(item->Name());
            Add(label, itemName.empty() ? name : itemName, ValueTextOf(*item));
        }
    }

    Handle(XSControl_WorkSession) m_session;
    Handle(XCAFDoc_ShapeTool) m_shapes;
    const XCAFDoc_DataMapOfShapeLabel& m_labels;
    LabelProperties& m_properties;
};

}  // namespace

LabelProperties StepPropertiesOf(const STEPCAFControl_Reader& reader,
                                 const Handle(XCAFDoc_ShapeTool) & shapes) {
    LabelProperties properties;
    const auto& labels = reader.GetShapeLabelMap();
    DoInCadKernel([&] {
        FileProperties(reader.Reader().WS(), shapes, labels, properties).Read();
        using Files = NCollection_DataMap<TCollection_AsciiString, Handle(STEPCAFControl_ExternFile)>;
        for (Files::Iterator each(reader.ExternFiles()); each.More(); each.Next()) {
            const Handle(XSControl_WorkSession) session = each.Value()->GetWS();
            if (!session.IsNull()) FileProperties(session, shapes, labels, properties).Read();
        }
    });
    return properties;
}

}  // namespace zrsheet
