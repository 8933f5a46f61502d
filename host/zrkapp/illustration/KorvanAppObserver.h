// Told about the application and its document.

#pragma once

#include "zrk/object/Observer.h"

namespace zrkapp::illustration {

class KorvanAppObserver : public zrk::Observer {
public:
    ~KorvanAppObserver() override;

    virtual void OnStructureImport() {}
    virtual void OnStructureUpdate() {}
    virtual void OnStructureCheckUpdateStatus() {}
    virtual void OnStructureUnlink() {}
    virtual void OnStructureDelete() {}
    virtual void OnStructureFix() {}
    virtual void OnStructureChangeSettings() {}
    virtual void OnStructureNew() {}
    virtual void OnFilePropertiesChanged() {}
    virtual void OnFileRenamed() {}
    virtual void OnFileSaved() {}
    virtual void OnPropertyMappingChanged() {}
    virtual void OnUnitsChanged() {}
};

}  // namespace zrkapp::illustration
