// Rebuilds the labels once after a burst of changes in the table of annotation sets.

#pragma once

#include <atomic>
#include <memory>

#include "callouts/observers/EngineHandle.h"
#include "zrk/annotation/AnnoSetTableObserver.h"

namespace zrcallouts {

class AnnoSetTableObserver : public zrk::AnnoSetTableObserver {
public:
    explicit AnnoSetTableObserver(std::shared_ptr<EngineHandle> handle) : m_owner(std::move(handle)) {}
    ~AnnoSetTableObserver() override;

    void OnBeginUpdate() override { m_changed = false; }
    void OnEndUpdate() override;
    void OnAnnoSetChanged(const du::SmartPtr<zrk::AnnoSet>&) override { m_changed = true; }

    EngineLink m_owner;

private:
    std::atomic<bool> m_changed{false};
};

}  // namespace zrcallouts
