#include "app/import/gltf/GltfAccessors.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

#include "app/import/ImportError.h"

namespace zrsheet {
namespace {

// Elements that no bytes stand behind; more of them than this are damage, not a model.
constexpr std::size_t kMostZeros = std::size_t{1} << 24;

template <class T, class Number>
Number Load(const char* from, bool normalized) {
    T value;
    std::memcpy(&value, from, sizeof value);
    const auto number = static_cast<Number>(value);
    if constexpr (std::is_integral_v<T> && std::is_floating_point_v<Number>) {
        constexpr auto kMost = static_cast<Number>(std::numeric_limits<T>::max());
        return normalized ? std::max(number / kMost, Number{-1}) : number;
    }
    return number;
}

template <class Number>
struct Component {
    std::size_t size = 0;
    Number (*load)(const char*, bool) = nullptr;
};

template <class Number>
Component<Number> ComponentOf(unsigned type) {
    switch (type) {
        case 5120:
            return {1, Load<std::int8_t, Number>};
        case 5121:
            return {1, Load<std::uint8_t, Number>};
        case 5122:
            return {2, Load<std::int16_t, Number>};
        case 5123:
            return {2, Load<std::uint16_t, Number>};
        case 5125:
            return {4, Load<std::uint32_t, Number>};
        default:
            return {4, Load<float, Number>};
    }
}

template <class Number>
std::vector<Number> ReadSlice(GltfBytes& bytes, const GltfSlice& slice, std::size_t components,
                              std::size_t count, bool normalized) {
    const Component<Number> component = ComponentOf<Number>(slice.componentType);
    const auto [data, stride] = bytes.Elements(slice, component.size * components, count);
    std::vector<Number> numbers;
    numbers.reserve(count * components);
    for (std::size_t i = 0; i < count; ++i) {
        for (std::size_t k = 0; k < components; ++k) {
            numbers.push_back(component.load(data.data() + i * stride + k * component.size, normalized));
        }
    }
    return numbers;
}

bool IsUnsigned(unsigned type) { return type == 5121 || type == 5123 || type == 5125; }

template <class Number>
void PutSparse(GltfBytes& bytes, const GltfAccessor& accessor, std::vector<Number>& numbers) {
    const GltfSparse& sparse = *accessor.sparse;
    const std::size_t components = accessor.components;
    if (!IsUnsigned(sparse.places.componentType))
        throw ImportError("sparse places are no indices; export the file again");
    const auto places = ReadSlice<std::uint32_t>(bytes, sparse.places, 1, sparse.count, false);
    const auto values =
        ReadSlice<Number>(bytes, sparse.values, components, sparse.count, accessor.normalized);
    for (std::size_t i = 0; i < sparse.count; ++i) {
        if (places[i] >= accessor.count)
            throw ImportError("a sparse place does not exist; export the file again");
        std::copy_n(&values[i * components], components, &numbers[places[i] * components]);
    }
}

template <class Number>
std::vector<Number> ReadNumbers(GltfBytes& bytes, const GltfAccessor& accessor) {
    std::vector<Number> numbers;
    if (accessor.base) {
        numbers = ReadSlice<Number>(bytes, *accessor.base, accessor.components, accessor.count,
                                    accessor.normalized);
    } else if (accessor.count <= kMostZeros) {
        numbers.resize(accessor.count * accessor.components);
    } else {
        throw ImportError(fmt::format("{} elements have no bytes; export the file again", accessor.count));
    }
    if (accessor.sparse) PutSparse(bytes, accessor, numbers);
    return numbers;
}

}  // namespace

std::vector<float> ReadPositions(const GltfDocument& document, GltfBytes& bytes, std::size_t accessor) {
    const GltfAccessor& from = document.accessors[accessor];
    if (from.components != 3)
        throw ImportError("positions have not three coordinates; export the file again");
    std::vector<float> positions = ReadNumbers<float>(bytes, from);
    const auto wrong = std::ranges::find_if(positions, [](float x) { return !std::isfinite(x); });
    if (wrong != positions.end()) {
        throw ImportError(fmt::format("the position of vertex {} is no finite number; export the file again",
                                      (wrong - positions.begin()) / 3));
    }
    return positions;
}

std::vector<std::uint32_t> ReadIndices(const GltfDocument& document, GltfBytes& bytes, std::size_t accessor) {
    const GltfAccessor& from = document.accessors[accessor];
    if (from.components != 1 || !IsUnsigned(from.componentType)) {
        throw ImportError("its indices are no unsigned numbers; export the file again");
    }
    return ReadNumbers<std::uint32_t>(bytes, from);
}

}  // namespace zrsheet
