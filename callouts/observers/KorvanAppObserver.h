// Rebuilds the labels when document data that they may show has changed.

#pragma once

#include <memory>

#include "callouts/observers/EngineHandle.h"
#include "zrkapp/illustration/KorvanAppObserver.h"

namespace zrcallouts {

class KorvanAppObserver : public zrkapp::illustration::KorvanAppObserver {
public:
    explicit KorvanAppObserver(std::shared_ptr<EngineHandle> handle) : m_owner(std::move(handle)) {}
    ~KorvanAppObserver() override;

    void OnFilePropertiesChanged() override { Regenerate(); }
    void OnFileRenamed() override { Regenerate(); }
    void OnFileSaved() override { Regenerate(); }
    void OnPropertyMappingChanged() override { Regenerate(); }
    void OnUnitsChanged() override { Regenerate(); }

    EngineLink m_owner;

private:
    void Regenerate();
};

}  // namespace zrcallouts
