#include "app/lineart/SharpEdges.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <optional>
#include <utility>

#include "app/lineart/ChainBuilder.h"

namespace zrsheet {
namespace {

// Shares of the crease angle: edges that turn more than the one may go on a line, those that turn more than
// the other are lines wherever they end.
constexpr double kWeak = 0.6;
constexpr double kStrong = 1.5;
constexpr double kMostBend = 0.7;  // cosine of the angle by which a line goes on
constexpr std::size_t kMostSteps = 64;

class SharpEdgeFinder {
public:
    SharpEdgeFinder(std::span<const TurningEdge> edges, std::span<const dg::DPoint3D> vertices, double crease)
        : m_edges(edges),
          m_vertices(vertices),
          m_crease(crease),
          m_isSharp(edges.size()),
          m_sharpAt(vertices.size(), 0) {
        for (std::uint32_t i = 0; i < edges.size(); ++i) {
            if (edges[i].turn <= kWeak * crease) continue;
            m_ends.emplace_back(edges[i].from, i);
            m_ends.emplace_back(edges[i].to, i);
            if (edges[i].turn > crease) Sharpen(i);
        }
        std::sort(m_ends.begin(), m_ends.end());
    }

    /// Lets lines that end anywhere go on to the next.
    void GoOn() {
        for (std::uint32_t i = 0; i < m_edges.size(); ++i) {
            if (!m_isSharp[i]) continue;
            for (const std::uint32_t end : {m_edges[i].from, m_edges[i].to}) {
                if (m_sharpAt[end] != 1) continue;
                for (const std::uint32_t edge : WayOn(i, end)) Sharpen(edge);
            }
        }
    }

    void DropLoose() {
        std::vector<ChainLink> links;
        std::vector<std::uint32_t> sharp;
        for (std::uint32_t i = 0; i < m_edges.size(); ++i) {
            if (!m_isSharp[i]) continue;
            links.push_back({m_edges[i].from, m_edges[i].to});
            sharp.push_back(i);
        }
        for (const LinkChain& chain : BuildChains(links)) {
            const bool isLoose = m_sharpAt[chain.nodes.front()] == 1 || m_sharpAt[chain.nodes.back()] == 1;
            const bool isWeak = std::all_of(chain.links.begin(), chain.links.end(), [&](std::uint32_t link) {
                return m_edges[sharp[link]].turn < kStrong * m_crease;
            });
            if (!isLoose || !isWeak) continue;
            for (const std::uint32_t link : chain.links) m_isSharp[sharp[link]] = false;
        }
    }

    const std::vector<bool>& Sharp() const { return m_isSharp; }

private:
    void Sharpen(std::uint32_t edge) {
        m_isSharp[edge] = true;
        ++m_sharpAt[m_edges[edge].from];
        ++m_sharpAt[m_edges[edge].to];
    }

    std::uint32_t FarEnd(std::uint32_t edge, std::uint32_t vertex) const {
        return m_edges[edge].from == vertex ? m_edges[edge].to : m_edges[edge].from;
    }

    dg::DVec3 DirectionFrom(std::uint32_t vertex, std::uint32_t edge) const {
        return (m_vertices[FarEnd(edge, vertex)] - m_vertices[vertex]).Normalized();
    }

    /// The edge that goes on straightest from `edge`.
    std::optional<std::uint32_t> Next(std::uint32_t edge, std::uint32_t vertex) const {
        const dg::DVec3 ahead = DirectionFrom(vertex, edge) * -1.0;
        std::optional<std::uint32_t> best;
        double most = kMostBend;
        for (auto end = std::lower_bound(m_ends.begin(), m_ends.end(), std::pair(vertex, 0U));
             end != m_ends.end() && end->first == vertex; ++end) {
            if (m_isSharp[end->second] || end->second == edge) continue;
            const double straight = ahead.Dot(DirectionFrom(vertex, end->second));
            if (straight <= most) continue;
            most = straight;
            best = end->second;
        }
        return best;
    }

    /// Empty if it leads to no line.
    std::vector<std::uint32_t> WayOn(std::uint32_t edge, std::uint32_t vertex) const {
        std::vector<std::uint32_t> way;
        while (way.size() < kMostSteps) {
            const auto next = Next(edge, vertex);
            if (!next) break;
            edge = *next;
            way.push_back(edge);
            vertex = FarEnd(edge, vertex);
            if (m_sharpAt[vertex] > 0) return way;
        }
        return {};
    }

    std::span<const TurningEdge> m_edges;
    std::span<const dg::DPoint3D> m_vertices;
    double m_crease;
    std::vector<bool> m_isSharp;
    std::vector<std::uint32_t> m_sharpAt;                         // how many, of each vertex
    std::vector<std::pair<std::uint32_t, std::uint32_t>> m_ends;  // vertex and edge, of all but smooth ones
};

}  // namespace

std::vector<bool> FindSharpEdges(std::span<const TurningEdge> edges, std::span<const dg::DPoint3D> vertices,
                                 double creaseAngle) {
    SharpEdgeFinder finder(edges, vertices, creaseAngle * std::numbers::pi / 180.0);
    finder.GoOn();
    finder.DropLoose();
    return finder.Sharp();
}

}  // namespace zrsheet
