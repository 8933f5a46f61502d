// The open illustration document.

#pragma once

#include <utility>

#include "du/SmartPtr.h"
#include "zrk/world/MultiRootContainer.h"
#include "zrkapp/illustration/KorvanFileInfo.h"

namespace zrkapp::illustration {

class IllMultiRootContainer : public zrk::MultiRootContainer {
public:
    /// `fileInfo` may be null: a document that was never saved.
    explicit IllMultiRootContainer(du::SmartPtr<KorvanFileInfo> fileInfo) : m_fileInfo(std::move(fileInfo)) {}
    ~IllMultiRootContainer() override;

    const du::SmartPtr<KorvanFileInfo>& GetFileInfo() const { return m_fileInfo; }

private:
    const du::SmartPtr<KorvanFileInfo> m_fileInfo;
};

}  // namespace zrkapp::illustration
