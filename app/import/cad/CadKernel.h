// The CAD kernel as this program uses it: silent, and with its crashes turned into errors.

#pragma once

#include <Standard_Handle.hxx>
#include <functional>

class TDocStd_Document;

namespace zrsheet {

/// Makes the kernel write nothing and turn signals of this process (a null pointer followed, a division by
/// zero) into exceptions. Once, before anything else of the kernel.
void StartCadKernel();

/// A document that readers fill with shapes, names and colours.
[[nodiscard]] opencascade::handle<TDocStd_Document> NewCadDocument();

/// Does `work`. Throws ImportError with the kernel's reason when the kernel fails or crashes in it; what the
/// work held is then lost to the process, which should end soon.
void DoInCadKernel(const std::function<void()>& work);

}  // namespace zrsheet
