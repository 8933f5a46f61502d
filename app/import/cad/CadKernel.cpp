#include "app/import/cad/CadKernel.h"

#include <Message.hxx>
#include <Message_Messenger.hxx>
#include <Message_Printer.hxx>
#include <OSD.hxx>
#include <Standard_ErrorHandler.hxx>
#include <Standard_Failure.hxx>
#include <TDocStd_Document.hxx>
#include <XCAFApp_Application.hxx>
#include <string>

#include "app/import/ImportError.h"
#include "app/import/Utf8Text.h"

namespace zrsheet {

void StartCadKernel() {
    Message::DefaultMessenger()->RemovePrinters(STANDARD_TYPE(Message_Printer));
    OSD::SetSignal(false);
}

Handle(TDocStd_Document) NewCadDocument() {
    Handle(TDocStd_Document) document;
    XCAFApp_Application::GetApplication()->NewDocument("BinXCAF", document);
    return document;
}

void DoInCadKernel(const std::function<void()>& work) {
    try {
        OCC_CATCH_SIGNALS
        work();
    } catch (const Standard_Failure& failure) {
        const char* reason = failure.GetMessageString();
        const bool hasReason = reason != nullptr && *reason != '\0';
        throw ImportError(OneLine(hasReason ? reason : failure.DynamicType()->Name()));
    }
}

}  // namespace zrsheet
