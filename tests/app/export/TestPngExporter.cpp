#include "app/export/PngExporter.h"

#include <gtest/gtest.h>
#include <png.h>

#include <array>

#include "app/export/ExportError.h"
#include "tests/app/export/SampleSheet.h"

namespace zrsheet::test {
namespace {

using Rgb = std::array<int, 3>;
constexpr Rgb kWhite{255, 255, 255};
constexpr Rgb kPicture{200, 200, 200};
constexpr Rgb kGlass{120, 120, 120};

Raster Decode(const std::string& bytes) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    png_image_begin_read_from_memory(&image, bytes.data(), bytes.size());
    image.format = PNG_FORMAT_RGB;
    Raster raster{static_cast<int>(image.width), static_cast<int>(image.height), {}};
    raster.pixels.resize(PNG_IMAGE_SIZE(image));
    png_image_finish_read(&image, nullptr, raster.pixels.data(), 0, nullptr);
    return raster;
}

Rgb PixelAt(const Raster& raster, int x, int y) {
    const std::size_t at = 3 * static_cast<std::size_t>(y * raster.width + x);
    return {raster.pixels[at], raster.pixels[at + 1], raster.pixels[at + 2]};
}

bool HasInk(const Raster& raster, const PageBox& box, int scale) {
    for (int y = static_cast<int>(box.y0) * scale; y < static_cast<int>(box.y1) * scale; ++y) {
        for (int x = static_cast<int>(box.x0) * scale; x < static_cast<int>(box.x1) * scale; ++x) {
            if (PixelAt(raster, x, y)[0] < 100) return true;
        }
    }
    return false;
}

// The page at twice the scale is the same page: everything lies where it lay.
TEST(PngExporter, DrawsThePageAtAnyScale) {
    for (const int scale : {1, 2}) {
        const Raster page = Decode(PngBytes(SampleSheet(), scale));
        const auto at = [&](double x, double y) {
            return PixelAt(page, static_cast<int>(x * scale), static_cast<int>(y * scale));
        };
        ASSERT_EQ(page.width, 400 * scale);
        ASSERT_EQ(page.height, 200 * scale);
        EXPECT_EQ(at(2, 190), kWhite);
        EXPECT_EQ(at(100.5, 159), kPicture);
        EXPECT_EQ(at(199.5, 41), kPicture);
        EXPECT_EQ(at(201, 41), kWhite);
        EXPECT_EQ(at(200, 130), kGlass);
        EXPECT_EQ(at(182, 112), kPicture) << "the glass is cut to its circle";
        EXPECT_EQ(at(178, 130), kWhite) << "the rim of the glass";
        EXPECT_LT(at(180, 130)[0], 60) << "its outline";
        EXPECT_LT(at(125, 145)[0], 140) << "the circle around what it shows";
        EXPECT_EQ(at(130, 145), kPicture);
        EXPECT_LT(at(120.4, 90)[0], 20) << "the dot of a leader";
        EXPECT_LT(at(35, 20)[0], 140) << "the top of a balloon";
        EXPECT_EQ(at(89.5, 100.5), kWhite) << "outside the round end of a capsule";
        EXPECT_TRUE(HasInk(page, {30, 28, 40, 42}, scale)) << "a label";
        EXPECT_TRUE(HasInk(page, {10, 2, 60, 16}, scale)) << "the title";
        EXPECT_TRUE(HasInk(page, {262, 44, 275, 58}, scale)) << "a number, at the right of its column";
        EXPECT_FALSE(HasInk(page, {224, 44, 260, 58}, scale)) << "and not at the left";
    }
}

// The same forms as in the SVG, told apart by pixels of the balloon, whose box is 20,20 to 50,50, and of the
// arrow, whose tip is 120,90.
TEST(PngExporter, DrawsEveryShapeOfBalloonAndEndOfLeader) {
    using zrannotations::BalloonShape;
    const struct {
        BalloonShape shape;
        bool atCorner;  // has ink
        bool atPoint;
        bool inMiddle;
        bool below;
    } rows[] = {{BalloonShape::Round, false, true, false, true},
                {BalloonShape::Split, false, true, true, true},
                {BalloonShape::Box, true, true, false, true},
                {BalloonShape::Hexagon, false, true, false, true},
                {BalloonShape::None, false, false, false, true}};
    for (const auto& row : rows) {
        Sheet sheet = SampleSheet();
        sheet.callouts.resize(1);
        sheet.callouts[0].label = "1\n2";
        sheet.callouts[0].look.shape = row.shape;
        sheet.callouts[0].leaders[0].terminator = zrannotations::Terminator::Arrow;
        sheet.callouts[0].leaders[0].end = {60, 90};
        const Raster page = Decode(PngBytes(sheet, 4));
        const auto hasInk = [&](const PageBox& box) { return HasInk(page, box, 4); };
        SCOPED_TRACE(static_cast<int>(row.shape));
        EXPECT_EQ(hasInk({19, 19, 22, 22}), row.atCorner);
        EXPECT_EQ(hasInk({19, 33, 22, 37}), row.atPoint);
        EXPECT_EQ(hasInk({24, 33, 28, 37}), row.inMiddle);
        EXPECT_EQ(hasInk({33, 49, 37, 51}), row.below);
        EXPECT_TRUE(hasInk({113, 91, 115, 93})) << "the arrow's side";
        EXPECT_FALSE(hasInk({121, 88, 125, 92})) << "nothing beyond its tip";
    }
}

}  // namespace
}  // namespace zrsheet::test
