// The average colour under a polygon: its triangles are scan-converted on a grid `scale` times finer than the
// pixels, and every covered grid point takes one bilinear sample of the image, which repeats on all sides.
//
// All state of a scan lives in its own objects, so images may be resampled on several threads.

#include "image/lanes.h"
#include "image/whole_number.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>
#include <utility>
#include <vector>
#include <zel/image.h>

namespace Zel {
namespace {

using Point = Vector2Template<float>;

/// `value` moved by whole sizes into [0, size).
float wrapped(float value, float size) {
    if (!(std::abs(value) < 16.0F * size)) // far away, or NaN: in one step instead of many
        value = std::isfinite(value) ? std::fmod(value, size) : 0.0F;
    while (value < 0.0F)
        value += size;
    while (value >= size)
        value -= size;
    return value;
}

/// The two pixels beside a sample along one side of an image that repeats; the fraction leads from the first
/// to the second.
struct Neighbours {
    Neighbours(float position, float size, int wholeSize) {
        position = wrapped(position, size);
        first = static_cast<int>(position);
        second = static_cast<int>(position + 1.0F);
        fraction = position - static_cast<float>(first);
        // `position + 1` may be rounded up to the size, or past it.
        while (first >= wholeSize)
            first -= wholeSize;
        while (second >= wholeSize)
            second -= wholeSize;
    }

    int first;
    int second;
    float fraction;
};

/// Where the grid's points lie along one side of the image.
class Axis {
public:
    Axis(int size, float scale) : m_size(size), m_scale(scale), m_texelsPerStep(1.0F / scale) {}

    /// Computes in advance what many polygons will ask for.
    void remember() {
        constexpr float kMost = 65536.0F; // less than a megabyte
        int const count = truncated(std::clamp(m_scale * static_cast<float>(m_size), 0.0F, kMost));
        for (int i = 0; i < count; ++i)
            m_remembered.push_back(compute(i));
    }

    Neighbours at(int gridPosition) const {
        auto const i = static_cast<std::size_t>(gridPosition);
        return i < m_remembered.size() ? m_remembered[i] : compute(gridPosition);
    }

private:
    /// A grid point samples the texel position of its lower right corner, less half a texel.
    Neighbours compute(int gridPosition) const {
        float const texel = (static_cast<float>(gridPosition) + 1.0F) * m_texelsPerStep - 0.5F;
        return {texel, static_cast<float>(m_size), m_size};
    }

    int m_size;
    float m_scale;
    float m_texelsPerStep;
    std::vector<Neighbours> m_remembered;
};

/// The grid on which an image is sampled.
struct Grid {
    Grid(Image const& source, float fineness)
        : image(source),
          scale(fineness),
          columns(source.getWidth(), scale),
          rows(source.getHeight(), scale) {}

    /// The same for many polygons.
    static Grid forMany(Image const& source, float fineness) {
        Grid grid(source, fineness);
        grid.columns.remember();
        grid.rows.remember();
        return grid;
    }

    Image const& image;
    float scale;
    Axis columns;
    Axis rows;
};

/// One side of a triangle: where it crosses each scanline, from its upper end on.
class Edge {
public:
    Edge(Point const& upper, Point const& lower) {
        float const height = lower.y - upper.y;
        m_slope = height != 0.0F ? (lower.x - upper.x) / height : 0.0F;
        // Each scanline is crossed at its lower border, even the first, in which the edge begins.
        m_x = upper.x + m_slope * (1.0F - (upper.y - std::trunc(upper.y)));
    }

    int column() const { return truncated(m_x); }
    void step() { m_x += m_slope; }

private:
    float m_slope;
    float m_x;
};

/// Takes a bilinear sample at every grid point under triangles, and averages them.
class TriangleScan {
public:
    explicit TriangleScan(Grid const& grid) : m_grid(grid) {}

    void add(std::array<Point, 3> corners) {
        std::rotate(corners.begin(), std::min_element(corners.begin(), corners.end(), isAbove),
                    corners.end());
        auto& [top, right, left] = corners;
        double const doubleArea = cross(top, right, left);
        if (doubleArea == 0.0)
            return;
        if (doubleArea < 0.0)
            std::swap(right, left);

        int const first = truncated(top.y);
        int const rightEnd = truncated(right.y);
        int const leftEnd = truncated(left.y);
        Edge leftEdge(top, left);
        Edge rightEdge(top, right);
        scan(first, std::min(rightEnd, leftEnd), leftEdge, rightEdge);
        if (leftEnd < rightEnd) {
            leftEdge = Edge(left, right);
            scan(leftEnd, rightEnd, leftEdge, rightEdge);
        } else if (rightEnd < leftEnd) {
            rightEdge = Edge(right, left);
            scan(rightEnd, leftEnd, leftEdge, rightEdge);
        }
    }

    Color average() const { return m_average.value(); }

private:
    static bool isAbove(Point const& a, Point const& b) { return a.y < b.y; }

    /// Twice the signed area: positive when b lies right of c, as seen with a on top.
    static double cross(Point const& a, Point const& b, Point const& c) {
        auto const across = [](Point const& from, Point const& to) {
            return double{to.x} - double{from.x};
        };
        auto const down = [](Point const& from, Point const& to) {
            return double{to.y} - double{from.y};
        };
        return across(a, b) * down(a, c) - across(a, c) * down(a, b);
    }

    void scan(int firstRow, int endRow, Edge& left, Edge& right) {
        for (int row = firstRow; row < endRow; ++row) {
            takeRow(row, left.column(), right.column());
            left.step();
            right.step();
        }
    }

    void takeRow(int row, int column, int end) {
        if (column >= end)
            return;
        Neighbours const rows = m_grid.rows.at(row);
        Color const* const upper = &m_grid.image(0, rows.first);
        Color const* const lower = &m_grid.image(0, rows.second);
        for (; column < end; ++column) {
            Neighbours const columns = m_grid.columns.at(column);
            m_average.add(upper[columns.first], upper[columns.second], lower[columns.first],
                          lower[columns.second], columns.fraction, rows.fraction);
        }
    }

    Grid const& m_grid;
    lanes::BilinearAverage m_average;
};

bool isFinite(Point const& point) { return std::isfinite(point.x) && std::isfinite(point.y); }

/// The average under a polygon whose corners are finite.
Color averageUnder(std::span<Point const> polygon, Grid const& grid) {
    auto const onGrid = [&grid](Point const& corner) {
        return Point(corner.x * grid.scale * static_cast<float>(grid.image.getWidth()),
                     corner.y * grid.scale * static_cast<float>(grid.image.getHeight()));
    };
    TriangleScan triangles(grid);
    for (std::size_t i = 1; i + 1 < polygon.size(); ++i) {
        std::array<Point, 3> const corners{onGrid(polygon[0]), onGrid(polygon[i]), onGrid(polygon[i + 1])};
        if (std::all_of(corners.begin(), corners.end(), isFinite))
            triangles.add(corners);
    }
    return triangles.average();
}

} // namespace

Color Image::areaSample(float scale, Vector2Template<float> const* polygon, int count) const {
    if (count < 3 || m_data == nullptr || !std::isfinite(scale) ||
        !std::all_of(polygon, polygon + count, isFinite))
        return {};
    return averageUnder({polygon, static_cast<std::size_t>(count)}, Grid(*this, scale));
}

void Image::copyWithScale(Image const* src, float scale) {
    float const stepX = 1.0F / static_cast<float>(m_width);
    float const stepY = 1.0F / static_cast<float>(m_height);
    bool const hasSamples = src->m_data != nullptr && std::isfinite(scale);
    Grid const grid = Grid::forMany(*src, hasSamples ? scale : 0.0F);
    // Meant: the borders of the pixels are sums of steps, with the rounding that sums have.
    float top = 0.0F;
    for (int y = 0; y < m_height; ++y) {
        float const bottom = top + stepY;
        float left = 0.0F;
        for (int x = 0; x < m_width; ++x) {
            float const right = left + stepX;
            std::array<Point, 4> const corners{Point(left, top), Point(right, top), Point(right, bottom),
                                               Point(left, bottom)};
            (*this)(x, y) = hasSamples ? averageUnder(corners, grid) : Color();
            left = right;
        }
        top = bottom;
    }
}

} // namespace Zel
