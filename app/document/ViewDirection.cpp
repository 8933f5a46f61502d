#include "app/document/ViewDirection.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <vector>

#include "app/document/UserError.h"

namespace zrsheet {
namespace {

struct NamedView {
    std::string_view name;
    ViewDirection view;
};

constexpr std::size_t kViewCount = 7;

const std::array<NamedView, kViewCount>& NamedViews() {
    static const std::array<NamedView, kViewCount> kViews{{
        {"iso", {}},
        {"front", {{0, 0, -1}, {0, 1, 0}}},
        {"back", {{0, 0, 1}, {0, 1, 0}}},
        {"left", {{1, 0, 0}, {0, 1, 0}}},
        {"right", {{-1, 0, 0}, {0, 1, 0}}},
        {"top", {{0, -1, 0}, {0, 0, -1}}},
        {"bottom", {{0, 1, 0}, {0, 0, 1}}},
    }};
    return kViews;
}

bool ParseNumbers(std::string_view text, std::array<double, 3>& numbers) {
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), numbers[i]);
        if (error != std::errc() || !std::isfinite(numbers[i])) return false;
        text.remove_prefix(static_cast<std::size_t>(end - text.data()));
        const bool isLast = i + 1 == numbers.size();
        if (isLast) return text.empty();
        if (text.empty() || text.front() != ',') return false;
        text.remove_prefix(1);
    }
    return false;
}

}  // namespace

std::span<const std::string_view> ViewNames() {
    static const auto kNames = [] {
        std::vector<std::string_view> names;
        for (const auto& view : NamedViews()) names.push_back(view.name);
        return names;
    }();
    return kNames;
}

ViewDirection ParseViewDirection(const std::string& text) {
    const auto& views = NamedViews();
    const auto named =
        std::find_if(views.begin(), views.end(), [&](const auto& view) { return view.name == text; });
    if (named != views.end()) return named->view;
    std::array<double, 3> numbers{};
    const bool isDirection = ParseNumbers(text, numbers);
    ViewDirection view;
    view.look = {numbers[0], numbers[1], numbers[2]};
    if (!isDirection || std::hypot(numbers[0], numbers[1], numbers[2]) == 0.0) {
        throw UserError(
            "view '" + text +
            "': not known; give iso, front, back, left, right, top, bottom or a direction such as -1,-1,-1");
    }
    const dg::DVec3 look = view.look.Normalized();
    // Straight down or up, "up" on the page is the model's back or front.
    if (std::abs(look.y) > 0.999) view.up = {0.0, 0.0, look.y};
    return view;
}

}  // namespace zrsheet
