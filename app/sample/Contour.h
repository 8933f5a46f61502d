// Closed outlines in a plane, from which prisms are made.

#pragma once

#include <vector>

#include "app/sample/SolidMesh.h"

namespace zrsheet {

/// Corners of a closed polygon in millimetres, counter-clockwise round material; a hole's run clockwise.
using Contour = std::vector<Point2>;

/// A region of the plane: one contour, and the holes in it.
using Region = std::vector<Contour>;

[[nodiscard]] Contour Circle(double radius, int corners, Point2 centre = {0, 0});
[[nodiscard]] Contour Rectangle(Point2 low, Point2 high);

/// A rectangle with quarter circles at its corners.
[[nodiscard]] Contour RoundedRectangle(Point2 low, Point2 high, double radius);

/// A hexagon by its width across flats.
[[nodiscard]] Contour Hexagon(double acrossFlats);

/// A circle with a slot of `width` towards +x whose floor lies at distance `floor` from the centre: less than
/// the radius for a keyway in a shaft, more for one in a hub.
[[nodiscard]] Contour KeyedCircle(double radius, double width, double floor);

/// The circle without the slot, with the corners that the keyed circle of the same radius and width has.
[[nodiscard]] Contour UnkeyedCircle(double radius, double width);

/// A spur gear with involute flanks of 20 degrees, a tooth's middle towards +x.
[[nodiscard]] Contour Gear(int teeth, double module);

/// The same outline run through the other way: the hole that the shape would leave.
[[nodiscard]] Contour Hole(Contour contour);

/// Round holes on a circle, the first at `startAngle` (radians).
[[nodiscard]] Region HolesOnCircle(double circleRadius, double holeRadius, int holes, double startAngle);

/// One region with the contours of both.
[[nodiscard]] Region Join(Region region, const Region& more);

/// Twice the enclosed area; negative for a hole.
[[nodiscard]] double DoubleArea(const Contour& contour);

[[nodiscard]] bool IsInside(const Contour& contour, const Point2& point);

}  // namespace zrsheet
