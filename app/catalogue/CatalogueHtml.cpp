#include "app/catalogue/CatalogueHtml.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "app/catalogue/CatalogueAssets.h"
#include "app/catalogue/CatalogueData.h"
#include "app/render/CleanText.h"

namespace zrsheet {
namespace {

std::string Escaped(std::string_view text) {
    std::string escaped;
    for (const char c : CleanText(text)) {
        switch (c) {
            case '&':
                escaped += "&amp;";
                break;
            case '<':
                escaped += "&lt;";
                break;
            case '>':
                escaped += "&gt;";
                break;
            case '"':
                escaped += "&quot;";
                break;
            default:
                escaped += c;
        }
    }
    return escaped;
}

/// Without the declaration, which pages have no place for.
std::string_view Inline(std::string_view svg) {
    const auto start = svg.find("<svg");
    return svg.substr(std::min(start, svg.size()));
}

/// The page with its places, "{{name}}", filled; what is filled in is never searched for places.
template <std::size_t kCount>
std::string Filled(std::string_view page,
                   const std::array<std::pair<std::string_view, std::string_view>, kCount>& fillings) {
    std::string text;
    while (true) {
        const auto open = page.find("{{");
        text.append(page.substr(0, open));
        if (open == std::string_view::npos) return text;
        const auto close = page.find("}}", open);
        const std::string_view name = page.substr(open + 2, close - open - 2);
        for (const auto& [each, filling] : fillings)
            if (each == name) text.append(filling);
        page.remove_prefix(close + 2);
    }
}

}  // namespace

std::string CatalogueHtml(const Sheet& sheet, const std::string& svg) {
    const std::string title = Escaped(sheet.title);
    const std::string language = Escaped(sheet.language);
    const std::string data = CatalogueData(sheet);
    return Filled(kCataloguePage, std::array<std::pair<std::string_view, std::string_view>, 7>{{
                                      {"language", language},
                                      {"title", title},
                                      {"script-hash", kCatalogueScriptHash},
                                      {"styles", kCatalogueStyles},
                                      {"drawing", Inline(svg)},
                                      {"data", data},
                                      {"script", kCatalogueScript},
                                  }});
}

}  // namespace zrsheet
