#include "app/document/ItemOrder.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <limits>
#include <map>
#include <numbers>
#include <unordered_map>
#include <utility>

namespace zrsheet {
namespace {

bool IsDigit(char c) { return std::isdigit(static_cast<unsigned char>(c)) != 0; }

char Lower(char c) { return static_cast<char>(std::tolower(static_cast<unsigned char>(c))); }

/// Takes the number in front, without zeros before it.
std::string_view TakeDigits(std::string_view& text) {
    const auto end = std::find_if_not(text.begin(), text.end(), IsDigit);
    std::string_view digits = text.substr(0, static_cast<std::size_t>(end - text.begin()));
    text.remove_prefix(digits.size());
    digits.remove_prefix(std::min(digits.find_first_not_of('0'), digits.size()));
    return digits;
}

/// Items in list order, sorted by what `keyOf` says; equal ones stay.
template <class KeyOf>
std::vector<unsigned> Sorted(const std::vector<unsigned>& ids, KeyOf keyOf) {
    std::vector<std::pair<decltype(keyOf(0U)), unsigned>> keyed;
    keyed.reserve(ids.size());
    for (const unsigned id : ids) keyed.emplace_back(keyOf(id), id);
    std::stable_sort(keyed.begin(), keyed.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    std::vector<unsigned> sorted;
    sorted.reserve(ids.size());
    for (const auto& [key, id] : keyed) sorted.push_back(id);
    return sorted;
}

std::string NameOf(const Document& document, unsigned id) {
    const auto instances = document.Items()->GetOrderedInstances(id);
    return instances.empty() ? std::string() : ProductModel::NameOf(*instances.front());
}

/// How far around the middle, clockwise from the corner: 0 up to a whole turn.
double TurnFrom(Corner corner, double x, double y) {
    constexpr double kWhole = 2.0 * std::numbers::pi;
    // With y downwards angles grow clockwise.
    const std::map<Corner, std::pair<double, double>> directions{{Corner::TopLeft, {-1, -1}},
                                                                 {Corner::TopRight, {1, -1}},
                                                                 {Corner::BottomRight, {1, 1}},
                                                                 {Corner::BottomLeft, {-1, 1}}};
    const auto& [cornerX, cornerY] = directions.at(corner);
    const double turn = std::atan2(y, x) - std::atan2(cornerY, cornerX);
    return turn < 0.0 ? turn + kWhole : turn;
}

std::vector<unsigned> ItemsByStructure(const Document& document) {
    std::unordered_map<const zrk::illustration::SbomInstance*, std::size_t> places;
    for (const auto& instance : document.Model().Instances()) places.emplace(instance.get(), places.size());
    return Sorted(document.Items()->GetItemIds(), [&](unsigned id) {
        std::size_t first = std::numeric_limits<std::size_t>::max();
        for (const auto& instance : document.Items()->GetOrderedInstances(id)) {
            const auto place = places.find(instance.get());
            if (place != places.end()) first = std::min(first, place->second);
        }
        return first;
    });
}

std::vector<unsigned> ItemsByName(const Document& document) {
    struct Name {
        std::string text;
        bool operator<(const Name& other) const { return IsBeforeInNaturalOrder(text, other.text); }
    };
    return Sorted(ItemsByStructure(document), [&](unsigned id) { return Name{NameOf(document, id)}; });
}

std::vector<unsigned> ItemsByPlace(const Document& document, Corner corner) {
    std::unordered_map<unsigned, double> turns;
    for (const auto& callout : document.Callouts()) {
        unsigned id = 0;
        du::SmartPtr<zrk::ShapeView> view;
        const dg::DPoint3D label = callout->GetLabelRelativeScreenPosition(view);
        if (!view || !callout->GetItemId(id)) continue;
        dg::Camera3D camera;
        view->GetCamera(camera);
        const double turn = TurnFrom(corner, label.x - 0.5 * camera.GetViewportWidth(),
                                     label.y - 0.5 * camera.GetViewportHeight());
        const auto [known, isFirst] = turns.emplace(id, turn);
        if (!isFirst) known->second = std::min(known->second, turn);
    }
    return Sorted(ItemsByStructure(document), [&](unsigned id) {
        const auto turn = turns.find(id);
        return turn != turns.end() ? turn->second : std::numeric_limits<double>::max();
    });
}

}  // namespace

bool IsBeforeInNaturalOrder(std::string_view a, std::string_view b) {
    while (!a.empty() && !b.empty()) {
        if (IsDigit(a.front()) && IsDigit(b.front())) {
            const std::string_view left = TakeDigits(a);
            const std::string_view right = TakeDigits(b);
            if (left.size() != right.size()) return left.size() < right.size();
            if (left != right) return left < right;
            continue;
        }
        const char left = Lower(a.front());
        const char right = Lower(b.front());
        if (left != right) return static_cast<unsigned char>(left) < static_cast<unsigned char>(right);
        a.remove_prefix(1);
        b.remove_prefix(1);
    }
    return a.empty() && !b.empty();
}

std::vector<unsigned> OrderedItems(const Document& document, ItemOrder order, Corner corner) {
    switch (order) {
        case ItemOrder::Name:
            return ItemsByName(document);
        case ItemOrder::Place:
            return ItemsByPlace(document, corner);
        case ItemOrder::Structure:
            break;
    }
    return ItemsByStructure(document);
}

}  // namespace zrsheet
