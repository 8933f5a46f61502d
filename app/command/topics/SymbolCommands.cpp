#include "app/command/topics/SymbolCommands.h"

#include "app/command/SceneNames.h"
#include "app/command/Session.h"
#include "app/document/SymbolShapes.h"
#include "app/document/UserError.h"
#include "app/text/ProgramText.h"
#include "zrannotations/SymbolAnnotation.h"
#include "zrk/annotation/AnnoSet.h"
#include "zrk/object/Checked.h"

namespace zrsheet {
namespace {

void Add(Session& session, Arguments& arguments) {
    Document& document = session.Doc();
    const double size = arguments.TakeNumberOption("size").value_or(1.0);
    const std::string shape = arguments.Take("SHAPE");
    const auto component = SymbolComponent(shape);
    arguments.ExpectKeyword("at");
    const dg::DVec3 at = arguments.TakeVector("X,Y,Z");
    arguments.ExpectEnd();
    if (size <= 0.0) throw UserError(arguments.WithUsage("a size is above 0"));
    const std::string name = NewSymbolName(document);
    const auto scale = static_cast<float>(size);
    const dg::Location location(dg::FMat33::Scale({scale, scale, scale}), dg::DPoint3D() + at);
    const du::SmartPtr<zrk::Instance> instance(zrk::Checked(new zrk::Instance(
        zrk::Checked(new zrk::ComponentInstance(du::Symbol(name))), shape, component, location)));
    du::SmartPtr<zrk::AnnoSet> annoSet;
    document.Scene()->GetAnnoSet(annoSet);
    annoSet->AddAnnotationToSet(zrk::Checked(new zrannotations::SymbolAnnotation(instance)), nullptr);
    document.Scene()->CreateShapeInstance(instance);
    session.Out() << Text("added", {{"name", name}}) << "\n";
}

du::SmartPtr<zrk::Annotation> AnnotationOf(const zrk::AnnoSet& annoSet,
                                           const du::SmartPtr<zrk::Instance>& symbol) {
    for (const auto& annotation : annoSet.GetAnnotations()) {
        const auto candidate = du::DynamicCast<zrannotations::SymbolAnnotation>(annotation);
        if (candidate && candidate->GetInstance() == symbol) return annotation;
    }
    return nullptr;
}

void Remove(Session& session, Arguments& arguments) {
    Document& document = session.Doc();
    const auto shape = FindSymbol(document, arguments.Take("SYMBOL"));
    arguments.ExpectEnd();
    du::SmartPtr<zrk::Instance> instance;
    shape->GetInstance(instance);
    du::SmartPtr<zrk::AnnoSet> annoSet;
    document.Scene()->GetAnnoSet(annoSet);
    document.Scene()->RemoveShapeInstance(shape);
    annoSet->RemoveAnnotationFromSet(AnnotationOf(*annoSet, instance), nullptr);
}

}  // namespace

CommandTopic SymbolCommands() {
    return {"Symbols",
            {{"symbol add", "arrow|cross|diamond at X,Y,Z [size=S]", "put a 3-D symbol into the scene",
              "The tip of an arrow is at the place, from above. A symbol is one unit of the model high times "
              "the size. Symbols are called symbol-1, symbol-2 ...",
              "symbol add arrow at 0,0.2,0 size=0.05", Effect::Changes, "Add Symbol", Add},
             {"symbol remove", "SYMBOL", "take a 3-D symbol away", "", "symbol remove symbol-1",
              Effect::Changes, "Remove Symbol", Remove}}};
}

}  // namespace zrsheet
