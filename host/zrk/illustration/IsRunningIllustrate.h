// Whether this process is the illustration application, or another one that only shows its documents.

#pragma once

namespace zrk::illustration {

/// Any thread.
bool IsRunningIllustrate();
/// Set once while the application starts.
void SetRunningIllustrate(bool running);

}  // namespace zrk::illustration
