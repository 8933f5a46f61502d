#include "app/lineart/EdgeMesh.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <numbers>
#include <numeric>
#include <tuple>

#include "app/lineart/ChainBuilder.h"
#include "app/lineart/SharpEdges.h"

namespace zrsheet {
namespace {

// Shares of the shape's size. A triangle less high has no normal worth the name.
constexpr double kSliver = 1e-6;
// Vertices at borders that are nearer to each other are one.
constexpr double kCrack = 1e-4;
// Where a file has rounded positions to a grid, vertices that were one may be a step apart along each axis.
constexpr double kGrainReach = 1.8;      // steps
constexpr double kCoarsestGrain = 2e-3;  // share of the shape's size
// Of the shorter edges at two border vertices: nearer ones are one, if the grain asks for it.
constexpr double kGrainShare = 0.4;
// The nearest two of n places by chance are about a range / n^2 apart; no chance leaves so many times as
// much.
constexpr double kGridSureness = 25.0;
// An edge that turns less, in sine, lies in a plane.
constexpr double kFlat = 1e-4;
// How much further than the crease angle the mean around a corner may turn away from the face. Where it does,
// at the tip of a cone, the mean says nothing.
constexpr double kTipTurn = 1.25;

using Place = std::array<float, 3>;

/// Sets of numbers that are joined step by step.
class Groups {
public:
    explicit Groups(std::size_t count) : m_parents(count) {
        std::iota(m_parents.begin(), m_parents.end(), 0U);
    }
    std::uint32_t Find(std::uint32_t i) {
        while (m_parents[i] != i) i = m_parents[i] = m_parents[m_parents[i]];
        return i;
    }
    void Join(std::uint32_t a, std::uint32_t b) {
        const std::uint32_t rootA = Find(a);
        const std::uint32_t rootB = Find(b);
        m_parents[std::max(rootA, rootB)] = std::min(rootA, rootB);
    }

private:
    std::vector<std::uint32_t> m_parents;
};

/// For each vertex the first one in its place.
std::vector<std::uint32_t> WeldVertices(const std::vector<Place>& places) {
    std::vector<std::uint32_t> order(places.size());
    std::iota(order.begin(), order.end(), 0U);
    std::sort(order.begin(), order.end(), [&places](std::uint32_t a, std::uint32_t b) {
        return std::tie(places[a], a) < std::tie(places[b], b);
    });
    std::vector<std::uint32_t> first(places.size());
    for (std::size_t i = 0; i < order.size(); ++i) {
        const bool isSame = i > 0 && places[order[i]] == places[order[i - 1]];
        first[order[i]] = isSame ? first[order[i - 1]] : order[i];
    }
    return first;
}

/// The step of the grid to which the coordinates along an axis have been rounded; 0 if there is none.
double GrainAlong(int axis, const std::vector<dg::DPoint3D>& vertices) {
    std::vector<double> values;
    values.reserve(vertices.size());
    for (const dg::DPoint3D& vertex : vertices) values.push_back(vertex[axis]);
    std::sort(values.begin(), values.end());
    values.erase(std::unique(values.begin(), values.end()), values.end());
    double least = values.back() - values.front();
    const auto count = static_cast<double>(values.size());
    const double sure = kGridSureness * least / (count * count);
    for (std::size_t i = 1; i < values.size(); ++i) least = std::min(least, values[i] - values[i - 1]);
    return least >= sure ? least : 0.0;
}

/// How far each border vertex may be from another one to be the same.
class BorderReach {
public:
    BorderReach(const std::vector<dg::DPoint3D>& vertices, double size) : m_least(kCrack * size) {
        double grain = 0.0;
        for (int axis = 0; axis < 3; ++axis) grain = std::max(grain, GrainAlong(axis, vertices));
        m_most = grain <= kCoarsestGrain * size ? std::max(kGrainReach * grain, m_least) : m_least;
        m_shortest.resize(vertices.size(), std::numeric_limits<double>::max());
    }

    void AddEdge(std::uint32_t from, std::uint32_t to, double length) {
        for (const std::uint32_t end : {from, to}) m_shortest[end] = std::min(m_shortest[end], length);
    }
    double Most() const { return m_most; }
    double Between(std::uint32_t a, std::uint32_t b) const {
        return std::clamp(kGrainShare * std::min(m_shortest[a], m_shortest[b]), m_least, m_most);
    }

private:
    double m_least;
    double m_most;
    std::vector<double> m_shortest;  // border edge at each vertex
};

/// Finds vertices that are as good as in one place.
class PlaceFinder {
public:
    PlaceFinder(const std::vector<dg::DPoint3D>& vertices, const BorderReach& reach)
        : m_vertices(vertices), m_reach(reach) {}

    /// The first of those asked for so far that lies within reach; else the vertex itself.
    std::uint32_t FirstAt(std::uint32_t vertex) {
        const dg::DPoint3D& place = m_vertices[vertex];
        for (int i = 0; i < 27; ++i) {
            const auto cell = m_cells.find(CellOf(place, {i % 3 - 1, i / 3 % 3 - 1, i / 9 - 1}));
            if (cell == m_cells.end()) continue;
            for (const std::uint32_t other : cell->second) {
                if ((m_vertices[other] - place).Length() <= m_reach.Between(vertex, other)) return other;
            }
        }
        m_cells[CellOf(place, {})].push_back(vertex);
        return vertex;
    }

private:
    using Cell = std::array<std::int64_t, 3>;

    Cell CellOf(const dg::DPoint3D& place, const std::array<int, 3>& beside) const {
        Cell cell{};
        for (int axis = 0; axis < 3; ++axis) {
            const auto i = static_cast<std::size_t>(axis);
            cell[i] = static_cast<std::int64_t>(std::floor(place[axis] / m_reach.Most())) + beside[i];
        }
        return cell;
    }

    const std::vector<dg::DPoint3D>& m_vertices;
    const BorderReach& m_reach;
    std::map<Cell, std::vector<std::uint32_t>> m_cells;
};

double AngleBetween(const dg::DVec3& a, const dg::DVec3& b) {
    return std::atan2(a.Cross(b).Length(), a.Dot(b));
}

}  // namespace

EdgeMesh::EdgeMesh(const zrg::Shape& shape, double creaseAngle) {
    VertexNumbers numbers = TakeFaces(shape);
    FindEdges();
    CloseCracks(numbers);
    LevelSlivers();
    if (shape.GetCreases()) {
        TakeSharpEdges(*shape.GetCreases(), numbers);
    } else {
        GuessSharpEdges(creaseAngle);
    }
    m_isFaceted = std::all_of(m_edges.begin(), m_edges.end(), [this](const Edge& edge) {
        return edge.isSharp ||
               m_faceNormals[edge.faces[0]].Cross(m_faceNormals[edge.faces[1]]).Length() <= kFlat;
    });
    TurnOutwards();
    SmoothNormals(creaseAngle);
    ChainSharpEdges();
}

EdgeMesh::VertexNumbers EdgeMesh::TakeFaces(const zrg::Shape& shape) {
    const auto positions = shape.GetPositions();
    std::vector<Place> places(positions.size() / 3);
    m_vertices.resize(places.size());
    dg::DPoint3D low(1e300, 1e300, 1e300);
    dg::DPoint3D high(-1e300, -1e300, -1e300);
    for (std::size_t i = 0; i < places.size(); ++i) {
        for (int axis = 0; axis < 3; ++axis) {
            const float value = positions[3 * i + static_cast<std::size_t>(axis)];
            places[i][static_cast<std::size_t>(axis)] = value + 0.0F;
            m_vertices[i][axis] = static_cast<double>(value);
            low[axis] = std::min(low[axis], m_vertices[i][axis]);
            high[axis] = std::max(high[axis], m_vertices[i][axis]);
        }
    }
    m_size = places.empty() ? 0.0 : (high - low).Length();
    VertexNumbers welded = WeldVertices(places);
    const auto indices = shape.GetIndices();
    m_faces.resize(shape.GetTriangleCount());
    m_faceNormals.resize(m_faces.size());
    m_faceAreas.resize(m_faces.size());
    for (std::size_t i = 0; i < m_faces.size(); ++i) {
        auto& corners = m_faces[i].vertices;
        for (std::size_t k = 0; k < 3; ++k) corners[k] = welded[indices[3 * i + k]];
        const dg::DPoint3D& origin = m_vertices[corners[0]];
        const dg::DVec3 normal = (m_vertices[corners[1]] - origin).Cross(m_vertices[corners[2]] - origin);
        m_faceNormals[i] = normal.Normalized();
        m_faceAreas[i] = 0.5 * normal.Length();
    }
    return welded;
}

// In the order of their vertices, the lower one first.
void EdgeMesh::FindEdges() {
    struct Side {
        std::uint32_t low;
        std::uint32_t high;
        std::uint32_t face;
        std::uint32_t corner;
    };
    std::vector<Side> sides;
    sides.reserve(3 * m_faces.size());
    for (std::uint32_t face = 0; face < m_faces.size(); ++face) {
        for (std::uint32_t k = 0; k < 3; ++k) {
            const std::uint32_t a = m_faces[face].vertices[k];
            const std::uint32_t b = m_faces[face].vertices[(k + 1) % 3];
            sides.push_back({std::min(a, b), std::max(a, b), face, k});
        }
    }
    std::sort(sides.begin(), sides.end(), [](const Side& a, const Side& b) {
        return std::tie(a.low, a.high, a.face, a.corner) < std::tie(b.low, b.high, b.face, b.corner);
    });
    for (std::size_t i = 0; i < sides.size(); ++i) {
        const Side& side = sides[i];
        Face& face = m_faces[side.face];
        const std::uint32_t from = face.vertices[side.corner];
        const bool isNew = i == 0 || sides[i - 1].low != side.low || sides[i - 1].high != side.high;
        if (isNew) {
            m_edges.push_back({from, face.vertices[(side.corner + 1) % 3], {side.face, kNone}});
        } else if (Edge& edge = m_edges.back(); edge.faces[1] == kNone) {
            edge.faces[1] = side.face;
            edge.isTwisted = edge.from == from;
        } else {
            edge.isMany = true;
        }
        face.edges[side.corner] = static_cast<std::uint32_t>(m_edges.size() - 1);
    }
}

// Files that have each face by itself round its border now this way, now that.
void EdgeMesh::CloseCracks(VertexNumbers& numbers) {
    VertexNumbers border;
    for (const Edge& edge : m_edges) {
        if (edge.faces[1] == kNone) border.insert(border.end(), {edge.from, edge.to});
    }
    if (border.empty()) return;
    BorderReach reach(m_vertices, m_size);
    for (const Edge& edge : m_edges) {
        if (edge.faces[1] == kNone)
            reach.AddEdge(edge.from, edge.to, (m_vertices[edge.to] - m_vertices[edge.from]).Length());
    }
    std::sort(border.begin(), border.end());
    border.erase(std::unique(border.begin(), border.end()), border.end());
    VertexNumbers same(m_vertices.size());
    std::iota(same.begin(), same.end(), 0U);
    PlaceFinder finder(m_vertices, reach);
    for (const std::uint32_t vertex : border) same[vertex] = finder.FirstAt(vertex);
    for (const Face& face : m_faces) {
        const auto& [a, b, c] = face.vertices;
        if (same[a] != same[b] && same[b] != same[c] && same[c] != same[a]) continue;
        for (const std::uint32_t vertex : face.vertices)
            same[vertex] = vertex;  // nothing would be left of it
    }
    for (Face& face : m_faces) {
        for (std::uint32_t& vertex : face.vertices) vertex = same[vertex];
    }
    for (std::uint32_t& number : numbers) number = same[number];
    m_edges.clear();
    FindEdges();
}

// A sliver goes with the face beyond its longest edge, which is where it lies in the surface.
void EdgeMesh::LevelSlivers() {
    const std::vector<dg::DVec3> own = m_faceNormals;
    for (std::uint32_t i = 0; i < m_faces.size(); ++i) {
        const Face& face = m_faces[i];
        std::size_t longest = 0;
        double length = 0.0;
        for (std::size_t k = 0; k < 3; ++k) {
            const Edge& edge = m_edges[face.edges[k]];
            const double each = (m_vertices[edge.to] - m_vertices[edge.from]).Length();
            if (each > length) {
                length = each;
                longest = k;
            }
        }
        if (2.0 * m_faceAreas[i] > kSliver * m_size * length) continue;
        const Edge& edge = m_edges[face.edges[longest]];
        const std::uint32_t other = edge.faces[0] == i ? edge.faces[1] : edge.faces[0];
        if (other != kNone) m_faceNormals[i] = own[other] * (edge.isTwisted ? -1.0 : 1.0);
    }
}

// A crease is the file's word for it, however little the faces turn; and elsewhere they may turn as much as
// coarse triangles make them.
void EdgeMesh::TakeSharpEdges(const zrg::Shape::Creases& creases, const VertexNumbers& numbers) {
    const auto ends = [](std::uint32_t a, std::uint32_t b) {
        return std::pair(std::min(a, b), std::max(a, b));
    };
    for (Edge& edge : m_edges) edge.isSharp = edge.isMany || edge.faces[1] == kNone;
    for (std::size_t i = 0; i + 1 < creases.size(); i += 2) {
        const auto wanted = ends(numbers[creases[i]], numbers[creases[i + 1]]);
        const auto found = std::lower_bound(
            m_edges.begin(), m_edges.end(), wanted,
            [&](const Edge& edge, const auto& pair) { return ends(edge.from, edge.to) < pair; });
        if (found != m_edges.end() && ends(found->from, found->to) == wanted) found->isSharp = true;
    }
}

void EdgeMesh::GuessSharpEdges(double creaseAngle) {
    std::vector<TurningEdge> turning;
    turning.reserve(m_edges.size());
    for (const Edge& edge : m_edges) {
        const bool isOpen = edge.isMany || edge.faces[1] == kNone;
        const double turn = isOpen
                                ? std::numbers::pi
                                : AngleBetween(m_faceNormals[edge.faces[0]],
                                               m_faceNormals[edge.faces[1]] * (edge.isTwisted ? -1.0 : 1.0));
        turning.push_back({edge.from, edge.to, turn});
    }
    const std::vector<bool> isSharp = FindSharpEdges(turning, m_vertices, creaseAngle);
    for (std::size_t i = 0; i < m_edges.size(); ++i) m_edges[i].isSharp = isSharp[i];
}

// The volume under the faces tells the inside from the outside.
void EdgeMesh::TurnOutwards() {
    m_isSolid = std::none_of(m_edges.begin(), m_edges.end(), [](const Edge& edge) {
        return edge.isMany || edge.isTwisted || edge.faces[1] == kNone;
    });
    if (!m_isSolid || m_faces.empty()) return;
    const dg::DPoint3D origin = m_vertices[m_faces.front().vertices[0]];
    double volume = 0.0;
    for (const Face& face : m_faces) {
        const dg::DVec3 a = m_vertices[face.vertices[0]] - origin;
        volume += a.Dot((m_vertices[face.vertices[1]] - origin).Cross(m_vertices[face.vertices[2]] - origin));
    }
    if (volume >= 0.0) return;
    for (dg::DVec3& normal : m_faceNormals) normal = normal * -1.0;
}

std::pair<std::uint32_t, std::uint32_t> EdgeMesh::CornersAt(const Edge& edge, std::uint32_t vertex) const {
    const auto corner = [&](std::uint32_t face) {
        const auto& vertices = m_faces[face].vertices;
        const auto place = std::find(vertices.begin(), vertices.end(), vertex) - vertices.begin();
        return 3 * face + static_cast<std::uint32_t>(place);
    };
    return {corner(edge.faces[0]), corner(edge.faces[1])};
}

// Weighted by area and angle: by area lest a fillet bends the flat face beside it, by angle lest the split of
// a strip into triangles tilts a cylinder.
void EdgeMesh::SmoothNormals(double creaseAngle) {
    Groups groups(3 * m_faces.size());
    for (const Edge& edge : m_edges) {
        if (edge.isSharp || edge.isTwisted) continue;
        for (const std::uint32_t vertex : {edge.from, edge.to}) {
            const auto [a, b] = CornersAt(edge, vertex);
            groups.Join(a, b);
        }
    }
    std::vector<dg::DVec3> sums(3 * m_faces.size());
    for (std::uint32_t i = 0; i < m_faces.size(); ++i) {
        for (std::uint32_t k = 0; k < 3; ++k) {
            const dg::DPoint3D& here = m_vertices[m_faces[i].vertices[k]];
            const double angle = AngleBetween(m_vertices[m_faces[i].vertices[(k + 1) % 3]] - here,
                                              m_vertices[m_faces[i].vertices[(k + 2) % 3]] - here);
            dg::DVec3& sum = sums[groups.Find(3 * i + k)];
            sum = sum + m_faceNormals[i] * (angle * m_faceAreas[i]);
        }
    }
    const double tipCosine = std::cos(kTipTurn * creaseAngle * std::numbers::pi / 180.0);
    m_cornerNormals.resize(sums.size());
    for (std::uint32_t i = 0; i < m_cornerNormals.size(); ++i) {
        const dg::DVec3 mean = sums[groups.Find(i)].Normalized();
        const dg::DVec3& own = m_faceNormals[i / 3];
        m_cornerNormals[i] = mean.Dot(own) < tipCosine ? own : mean;
    }
}

void EdgeMesh::ChainSharpEdges() {
    std::vector<ChainLink> links;
    std::vector<std::uint32_t> sharp;
    for (std::uint32_t i = 0; i < m_edges.size(); ++i) {
        if (!m_edges[i].isSharp) continue;
        links.push_back({m_edges[i].from, m_edges[i].to});
        sharp.push_back(i);
    }
    for (const LinkChain& found : BuildChains(links)) {
        Chain& chain = m_chains.emplace_back();
        for (const std::uint64_t node : found.nodes)
            chain.vertices.push_back(static_cast<std::uint32_t>(node));
        for (const std::uint32_t link : found.links) chain.edges.push_back(sharp[link]);
    }
}

}  // namespace zrsheet
