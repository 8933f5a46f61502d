#include "app/document/SymbolShapes.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <utility>

#include "app/document/UserError.h"
#include "dg/DVec3.h"

namespace zrsheet {
namespace {

const zrg::Shape& ShapeOf(const std::string& name) {
    return *SymbolComponent(name)->GetShape()->GetShapeData();
}

dg::DVec3 Corner(const zrg::Shape& shape, std::uint32_t index) {
    const auto at = [&](std::size_t i) { return static_cast<double>(shape.GetPositions()[index * 3 + i]); };
    return {at(0), at(1), at(2)};
}

double Volume(const zrg::Shape& shape) {
    double volume = 0.0;
    const auto indices = shape.GetIndices();
    for (std::size_t i = 0; i < indices.size(); i += 3) {
        const dg::DVec3 a = Corner(shape, indices[i]);
        volume += a.Dot(Corner(shape, indices[i + 1]).Cross(Corner(shape, indices[i + 2]))) / 6.0;
    }
    return volume;
}

bool IsClosed(const zrg::Shape& shape) {
    std::set<std::pair<std::uint32_t, std::uint32_t>> open;
    const auto indices = shape.GetIndices();
    for (std::size_t i = 0; i < indices.size(); ++i) {
        const std::uint32_t from = indices[i];
        const std::uint32_t to = indices[i % 3 == 2 ? i - 2 : i + 1];
        if (open.erase({to, from}) == 0 && !open.insert({from, to}).second) return false;
    }
    return open.empty();
}

// A face that is missing or turned inside out lets picks and the picture see through the symbol.
TEST(SymbolShapes, AreSolid) {
    const std::map<std::string, double> volumes{
        {"arrow", 0.4 * 0.4 * 0.45 / 3.0 + 0.16 * 0.16 * 0.55},
        {"cross", 3.0 * 0.16 * 0.16},
        {"diamond", 2.0 * 0.7 * 0.7 * 0.5 / 3.0},
    };
    for (const auto name : SymbolShapeNames()) {
        SCOPED_TRACE(name);
        const zrg::Shape& shape = ShapeOf(std::string(name));
        EXPECT_TRUE(IsClosed(shape));
        EXPECT_NEAR(Volume(shape), volumes.at(std::string(name)), 1e-6);
    }
    EXPECT_THROW(static_cast<void>(SymbolComponent("star")), UserError);
}

}  // namespace
}  // namespace zrsheet
