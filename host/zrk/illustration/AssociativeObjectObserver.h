// Told about an object that others are made from, such as a template.

#pragma once

#include "zrk/object/Observer.h"

namespace zrk::illustration {

class AssociativeObjectObserver : public zrk::Observer {
public:
    ~AssociativeObjectObserver() override;

    virtual void OnCollectionLoadedFromStandard() {}
    virtual void OnTemplateModified() {}
    virtual void OnThumbnailsLoaded() {}
};

}  // namespace zrk::illustration
