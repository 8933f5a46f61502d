#include "tests/app/import/CadSample.h"

#include <BRepAlgoAPI_Cut.hxx>
#include <BRepBuilderAPI_MakeEdge.hxx>
#include <BRepBuilderAPI_MakeFace.hxx>
#include <BRepBuilderAPI_MakeSolid.hxx>
#include <BRepBuilderAPI_MakeWire.hxx>
#include <BRepBuilderAPI_Sewing.hxx>
#include <BRepFilletAPI_MakeFillet.hxx>
#include <BRepPrimAPI_MakeBox.hxx>
#include <BRepPrimAPI_MakeCylinder.hxx>
#include <IGESCAFControl_Writer.hxx>
#include <Interface_Static.hxx>
#include <Message.hxx>
#include <Message_Messenger.hxx>
#include <Message_Printer.hxx>
#include <Quantity_Color.hxx>
#include <STEPCAFControl_Controller.hxx>
#include <STEPCAFControl_Writer.hxx>
#include <TDataStd_Name.hxx>
#include <TDocStd_Document.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <XCAFApp_Application.hxx>
#include <XCAFDoc_ColorTool.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_ShapeTool.hxx>
#include <stdexcept>

namespace zrsheet {
namespace {

gp_Ax2 UpAt(double x, double y, double z) { return {gp_Pnt(x, y, z), gp_Dir(0, 0, 1)}; }

TopoDS_Shape Block() {
    const TopoDS_Shape box = BRepPrimAPI_MakeBox(100, 60, 20).Shape();
    return BRepAlgoAPI_Cut(box, BRepPrimAPI_MakeCylinder(UpAt(50, 30, 0), 10, 20).Shape()).Shape();
}

TopoDS_Shape Washer() {
    const TopoDS_Shape disc = BRepPrimAPI_MakeCylinder(12, 6).Shape();
    const TopoDS_Shape ring = BRepAlgoAPI_Cut(disc, BRepPrimAPI_MakeCylinder(5, 6).Shape()).Shape();
    BRepFilletAPI_MakeFillet rounded(ring);
    for (TopExp_Explorer edge(ring, TopAbs_EDGE); edge.More(); edge.Next())
        rounded.Add(1, TopoDS::Edge(edge.Current()));
    return rounded.Shape();
}

constexpr double kBall = 10.0;  // radius
constexpr double kRight = 1.5707963267948966;

/// From pole to pole.
TopoDS_Face Slice(double from, double to) {
    return BRepBuilderAPI_MakeFace(gp_Sphere(gp_Ax3(), kBall), from, to, -kRight, kRight);
}

TopoDS_Face Base() {
    const gp_Circ circle(gp_Ax2(gp_Pnt(), gp_Dir(0, 1, 0), gp_Dir(0, 0, 1)), kBall);
    BRepBuilderAPI_MakeWire border(BRepBuilderAPI_MakeEdge(circle, 0.0, 2.0 * kRight),
                                   BRepBuilderAPI_MakeEdge(circle, 2.0 * kRight, 4.0 * kRight));
    return BRepBuilderAPI_MakeFace(border.Wire(), true);
}

TopoDS_Shape Dome() {
    BRepBuilderAPI_Sewing sewing(1e-5);
    sewing.Add(Base());
    sewing.Add(Slice(0.0, kRight));
    sewing.Add(Slice(2.0 * kRight, 5.0 * kRight));
    sewing.Perform();
    return BRepBuilderAPI_MakeSolid(TopoDS::Shell(sewing.SewedShape()));
}

/// Builds the document that is written.
class Sample {
public:
    Sample() {
        Message::DefaultMessenger()->RemovePrinters(STANDARD_TYPE(Message_Printer));
        XCAFApp_Application::GetApplication()->NewDocument("BinXCAF", m_document);
        m_shapes = XCAFDoc_DocumentTool::ShapeTool(m_document->Main());
    }
    const Handle(TDocStd_Document) & Document() const { return m_document; }

    TDF_Label Part(const char* name, const TopoDS_Shape& shape) {
        const TDF_Label label = m_shapes->AddShape(shape, false);
        Name(label, name);
        return label;
    }
    TDF_Label Assembly(const char* name) {
        const TDF_Label label = m_shapes->NewShape();
        Name(label, name);
        return label;
    }
    void Place(const TDF_Label& product, const TDF_Label& in, const char* name, double x, double y,
               double z) {
        gp_Trsf move;
        move.SetTranslation(gp_Vec(x, y, z));
        Name(m_shapes->AddComponent(in, product, TopLoc_Location(move)), name);
    }
    void Paint(const TDF_Label& label, double red, double green, double blue) {
        XCAFDoc_DocumentTool::ColorTool(m_document->Main())
            ->SetColor(label, Quantity_Color(red, green, blue, Quantity_TOC_sRGB), XCAFDoc_ColorSurf);
    }
    void Finish() { m_shapes->UpdateAssemblies(); }

private:
    static void Name(const TDF_Label& label, const char* name) {
        TDataStd_Name::Set(label, TCollection_ExtendedString(name, true));
    }
    Handle(TDocStd_Document) m_document;
    Handle(XCAFDoc_ShapeTool) m_shapes;
};

void Fill(Sample& sample) {
    const TDF_Label clamp = sample.Assembly("Clamp");
    const TDF_Label block = sample.Part("Gr\u00f6\u00dfe", Block());
    const TDF_Label bolt = sample.Part("Bolt", BRepPrimAPI_MakeCylinder(5, 30).Shape());
    const TDF_Label set = sample.Assembly("Bolt set");
    sample.Paint(block, 0.2, 0.4, 0.6);
    sample.Paint(bolt, 1, 0, 0);
    sample.Place(bolt, set, "NAUO1", 0, 0, -10);
    sample.Place(sample.Part("Washer", Washer()), set, "NAUO2", 0, 0, 0);
    sample.Place(block, clamp, "the block", 0, 0, 0);
    sample.Place(set, clamp, "left", 20, 30, 20);
    sample.Place(set, clamp, "right", 80, 30, 20);
    sample.Finish();
}

void Write(const Sample& sample, const std::filesystem::path& file, const StepChoices& choices) {
    STEPCAFControl_Controller::Init();
    Interface_Static::SetCVal("write.step.schema", choices.schema.c_str());
    Interface_Static::SetCVal("write.step.unit", choices.unit.c_str());
    STEPCAFControl_Writer writer;  // takes the choices over when it is made
    const bool isDone =
        writer.Transfer(sample.Document(), STEPControl_AsIs, choices.hasExternalFiles ? "part-" : nullptr);
    if (!isDone || writer.Write(file.c_str()) != IFSelect_RetDone) throw std::runtime_error("no STEP sample");
}

}  // namespace

void WriteStepSample(const std::filesystem::path& file, const StepChoices& choices) {
    Sample sample;
    Fill(sample);
    Write(sample, file, choices);
}

void WriteDome(const std::filesystem::path& file) {
    Sample sample;
    sample.Part("Dome", Dome());
    Write(sample, file, {});
}

void WriteIgesSample(const std::filesystem::path& file) {
    Sample sample;
    sample.Paint(sample.Part("Block", Block()), 0.2, 0.4, 0.6);
    IGESCAFControl_Writer writer;
    if (!writer.Transfer(sample.Document()) || !writer.Write(file.c_str()))
        throw std::runtime_error("no IGES sample");
}

}  // namespace zrsheet
