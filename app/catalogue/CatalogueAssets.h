// What every catalogue is made of. The build bundles it from the folder `web`.

#pragma once

#include <string_view>

namespace zrsheet {

/// The page, with places to fill: "{{title}}".
extern const std::string_view kCataloguePage;
extern const std::string_view kCatalogueStyles;
extern const std::string_view kCatalogueScript;
/// "sha256-...", for the page's security policy.
extern const std::string_view kCatalogueScriptHash;

}  // namespace zrsheet
