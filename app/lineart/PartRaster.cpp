#include "app/lineart/PartRaster.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <optional>
#include <utility>

#include "app/render/ParallelFor.h"

namespace zrsheet {
namespace {

constexpr int kBand = 64;  // rows of samples that are filled together, so that their depths stay in the cache
constexpr int kTile = 4;   // samples along the side of a tile
constexpr double kReach = 1.0;  // pixels around a box that must be covered too

/// A point in the picture: samples, and depth as the camera measures it.
struct Corner {
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
};

using CornerTriangle = std::array<Corner, 3>;

/// A part's triangles as the camera sees them, cut off at the nearest plane.
class Projection {
public:
    Projection(const PlacedMesh& part, const Viewer& viewer, int samples) : m_samples(samples) {
        const std::size_t count = part.Mesh().Vertices().size();
        m_corners.reserve(count);
        std::vector<bool> isBefore(count);
        for (std::uint32_t i = 0; i < count; ++i) {
            const dg::DPoint3D vertex = part.Vertex(i);
            m_corners.push_back(CornerOf(viewer.ToPixel(vertex)));
            isBefore[i] = viewer.IsBefore(vertex);
        }
        m_triangles.reserve(part.Mesh().Faces().size());
        for (const EdgeMesh::Face& face : part.Mesh().Faces()) {
            const auto& [a, b, c] = face.vertices;
            if (isBefore[a] || isBefore[b] || isBefore[c]) {
                AddClipped(part, face, viewer);
            } else {
                m_triangles.push_back(face.vertices);
            }
        }
        for (const Corner& corner : m_corners) {
            m_top = std::min(m_top, corner.y);
            m_bottom = std::max(m_bottom, corner.y);
        }
    }

    double Top() const { return m_top; }
    double Bottom() const { return m_bottom; }
    std::size_t TriangleCount() const { return m_triangles.size(); }
    CornerTriangle Triangle(std::size_t i) const {
        const auto& [a, b, c] = m_triangles[i];
        return {m_corners[a], m_corners[b], m_corners[c]};
    }

private:
    Corner CornerOf(const dg::DPoint3D& pixel) const {
        return {pixel.x * m_samples - 0.5, pixel.y * m_samples - 0.5, pixel.z};
    }

    void AddClipped(const PlacedMesh& part, const EdgeMesh::Face& face, const Viewer& viewer) {
        std::vector<dg::DPoint3D> outline;
        for (std::size_t k = 0; k < 3; ++k) {
            dg::DPoint3D from = part.Vertex(face.vertices[k]);
            const dg::DPoint3D end = part.Vertex(face.vertices[(k + 1) % 3]);
            dg::DPoint3D to = end;
            if (!viewer.ClipNear(from, to)) continue;
            outline.push_back(from);
            if (to != end) outline.push_back(to);
        }
        const auto first = static_cast<std::uint32_t>(m_corners.size());
        for (const dg::DPoint3D& point : outline) m_corners.push_back(CornerOf(viewer.ToPixel(point)));
        for (std::uint32_t i = 2; i < outline.size(); ++i)
            m_triangles.push_back({first, first + i - 1, first + i});
    }

    int m_samples;
    std::vector<Corner> m_corners;
    std::vector<std::array<std::uint32_t, 3>> m_triangles;
    double m_top = std::numeric_limits<double>::max();
    double m_bottom = std::numeric_limits<double>::lowest();
};

/// The side of a triangle, from the upper end down. Triangles that share a side have the same numbers of it,
/// so that between them no sample is left out.
class Side {
public:
    Side(const Corner& upper, const Corner& lower)
        : m_upper(upper),
          m_xStep((lower.x - upper.x) / (lower.y - upper.y)),
          m_zStep((lower.z - upper.z) / (lower.y - upper.y)) {}

    double X(double y) const { return m_upper.x + m_xStep * (y - m_upper.y); }
    double Z(double y) const { return m_upper.z + m_zStep * (y - m_upper.y); }

private:
    Corner m_upper;
    double m_xStep;
    double m_zStep;
};

int FirstAt(double place, int least, int most) {
    if (!(place > least)) return least;
    if (place >= most) return most;
    const int whole = static_cast<int>(place);
    return whole < place ? whole + 1 : whole;
}

/// What the camera measures where a surface lies deeper by `depth` in the world.
double DepthMargin(const PlacedMesh& part, const Viewer& viewer, double depth) {
    const dg::DPoint3D middle = part.Low() + (part.High() - part.Low()) * 0.5;
    const dg::DPoint3D nearer = middle + viewer.TowardsEye(middle) * depth;
    return std::abs(viewer.ToPixel(middle).z - viewer.ToPixel(nearer).z);
}

}  // namespace

/// Some rows of the grid.
class PartRaster::Band {
public:
    Band(int top, int bottom, int width, std::span<std::uint32_t> parts)
        : m_top(top),
          m_bottom(bottom),
          m_width(width),
          m_parts(parts),
          m_depths(parts.size(), std::numeric_limits<float>::infinity()) {}

    /// What comes later must be nearer by `margin` to be seen.
    void Fill(CornerTriangle triangle, std::uint32_t part, double margin) {
        auto& [upper, middle, lower] = triangle;
        const int first = FirstAt(std::min({upper.y, middle.y, lower.y}), m_top, m_bottom);
        const int last = FirstAt(std::max({upper.y, middle.y, lower.y}), m_top, m_bottom);
        if (first == last) return;
        const int left = FirstAt(std::min({upper.x, middle.x, lower.x}), 0, m_width);
        const int right = FirstAt(std::max({upper.x, middle.x, lower.x}), 0, m_width);
        if (left == right) return;
        if (upper.y > middle.y) std::swap(upper, middle);
        if (middle.y > lower.y) std::swap(middle, lower);
        if (upper.y > middle.y) std::swap(upper, middle);
        const int turn = FirstAt(middle.y, first, last);
        const Side whole(upper, lower);
        if (first < turn) FillRows(first, turn, whole, Side(upper, middle), part, margin);
        if (turn < last) FillRows(turn, last, whole, Side(middle, lower), part, margin);
    }

    /// The deepest of each tile; `tiles` are those of the band.
    void Deepest(std::span<float> tiles, int columns) const {
        for (int y = m_top; y < m_bottom; ++y) {
            const float* depths =
                &m_depths[static_cast<std::size_t>(y - m_top) * static_cast<std::size_t>(m_width)];
            float* row =
                &tiles[static_cast<std::size_t>((y - m_top) / kTile) * static_cast<std::size_t>(columns)];
            for (int x = 0; x < m_width; ++x) row[x / kTile] = std::max(row[x / kTile], depths[x]);
        }
    }

private:
    void FillRows(int first, int last, const Side& one, const Side& other, std::uint32_t part,
                  double margin) {
        for (int y = first; y < last; ++y) {
            double from = one.X(y);
            double to = other.X(y);
            double z = one.Z(y);
            double zTo = other.Z(y);
            if (from > to) {
                std::swap(from, to);
                std::swap(z, zTo);
            }
            const int left = FirstAt(from, 0, m_width);
            const int right = FirstAt(to, 0, m_width);
            if (left == right) continue;
            const double step = (zTo - z) / (to - from);
            FillRow(y, left, right, z + step * (left - from), step, part, margin);
        }
    }

    void FillRow(int y, int left, int right, double z, double step, std::uint32_t part, double margin) {
        const std::size_t row = static_cast<std::size_t>(y - m_top) * static_cast<std::size_t>(m_width);
        float* depths = &m_depths[row + static_cast<std::size_t>(left)];
        std::uint32_t* parts = &m_parts[row + static_cast<std::size_t>(left)];
        for (int i = 0; i < right - left; ++i) {
            const double depth = z + step * i;
            if (depth >= static_cast<double>(depths[i])) continue;
            depths[i] = static_cast<float>(depth - margin);
            parts[i] = part;
        }
    }

    int m_top;
    int m_bottom;
    int m_width;
    std::span<std::uint32_t> m_parts;
    std::vector<float> m_depths;
};

PartRaster::PartRaster(std::span<const PlacedMesh> parts, const Viewer& viewer, int samples,
                       double coincident, unsigned threads)
    : m_samples(samples),
      m_width(samples * viewer.Camera().GetViewportWidth()),
      m_height(samples * viewer.Camera().GetViewportHeight()),
      m_columns((m_width + kTile - 1) / kTile),
      m_parts(static_cast<std::size_t>(m_width) * static_cast<std::size_t>(m_height), kGround),
      m_deepest(static_cast<std::size_t>(m_columns) *
                static_cast<std::size_t>((m_height + kTile - 1) / kTile)) {
    std::vector<std::optional<Projection>> projections(parts.size());
    std::vector<double> margins(parts.size());
    ParallelFor(parts.size(), threads, [&](std::size_t i) {
        projections[i].emplace(parts[i], viewer, samples);
        margins[i] = DepthMargin(parts[i], viewer, coincident);
    });
    for (const double margin : margins) m_margin = std::max(m_margin, margin);
    ParallelFor(static_cast<std::size_t>((m_height + kBand - 1) / kBand), threads, [&](std::size_t number) {
        const int top = kBand * static_cast<int>(number);
        const int bottom = std::min(top + kBand, m_height);
        const auto width = static_cast<std::size_t>(m_width);
        Band band(top, bottom, m_width,
                  {m_parts.data() + static_cast<std::size_t>(top) * width,
                   static_cast<std::size_t>(bottom - top) * width});
        for (std::uint32_t part = 0; part < parts.size(); ++part) {
            const Projection& seen = *projections[part];
            if (seen.Top() > bottom || seen.Bottom() < top) continue;
            for (std::size_t i = 0; i < seen.TriangleCount(); ++i)
                band.Fill(seen.Triangle(i), part, margins[part]);
        }
        const auto columns = static_cast<std::size_t>(m_columns);
        band.Deepest(std::span(m_deepest).subspan(static_cast<std::size_t>(top / kTile) * columns),
                     m_columns);
    });
}

bool PartRaster::Covers(const PixelBox& box) const {
    const double scale = m_samples;
    const double left = std::floor((box.left - kReach) * scale);
    const double top = std::floor((box.top - kReach) * scale);
    const double right = std::ceil((box.right + kReach) * scale);
    const double bottom = std::ceil((box.bottom + kReach) * scale);
    if (left < 0.0 || top < 0.0 || right >= m_width || bottom >= m_height) return false;
    const double nearest = box.nearest - m_margin;
    const int lastRow = static_cast<int>(bottom) / kTile;
    const int lastColumn = static_cast<int>(right) / kTile;
    for (int row = static_cast<int>(top) / kTile; row <= lastRow; ++row) {
        for (int column = static_cast<int>(left) / kTile; column <= lastColumn; ++column) {
            const std::size_t tile = static_cast<std::size_t>(row) * static_cast<std::size_t>(m_columns) +
                                     static_cast<std::size_t>(column);
            if (static_cast<double>(m_deepest[tile]) >= nearest) return false;
        }
    }
    return true;
}

}  // namespace zrsheet
