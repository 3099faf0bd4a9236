// The average colour under a polygon: its triangles are scan-converted on a grid `scale` times finer than the
// pixels, and every covered grid point takes one bilinear sample of the image, which repeats on all sides.
//
// All state of a scan lives in its own objects, so images may be resampled on several threads.

#include "image/lanes.h"
#include "image/whole_number.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>
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

/// Takes bilinear samples of an image, row by row, and averages them.
class Sampler {
public:
    explicit Sampler(Image const& image)
        : m_image(image),
          m_width(static_cast<float>(image.getWidth())),
          m_height(static_cast<float>(image.getHeight())) {}

    void beginRow(float v) {
        Neighbours const rows(v, m_height, m_image.getHeight());
        m_upper = &m_image(0, rows.first);
        m_lower = &m_image(0, rows.second);
        m_fraction = rows.fraction;
    }

    void add(float u) {
        Neighbours const columns(u, m_width, m_image.getWidth());
        m_average.add(m_upper[columns.first], m_upper[columns.second], m_lower[columns.first],
                      m_lower[columns.second], columns.fraction, m_fraction);
    }

    Color average() const { return m_average.value(); }

private:
    Image const& m_image;
    float m_width;
    float m_height;
    Color const* m_upper = nullptr;
    Color const* m_lower = nullptr;
    float m_fraction = 0.0F;
    lanes::BilinearAverage m_average;
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

class TriangleScan {
public:
    TriangleScan(Sampler& sampler, float scale) : m_sampler(sampler), m_texelsPerStep(1.0F / scale) {}

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
            int const end = right.column();
            int column = left.column();
            if (column < end)
                m_sampler.beginRow(texel(row));
            for (; column < end; ++column)
                m_sampler.add(texel(column));
            left.step();
            right.step();
        }
    }

    /// A grid point samples the texel position of its lower right corner, less half a texel.
    float texel(int gridPosition) const {
        return (static_cast<float>(gridPosition) + 1.0F) * m_texelsPerStep - 0.5F;
    }

    Sampler& m_sampler;
    float m_texelsPerStep;
};

bool isFinite(Point const& point) { return std::isfinite(point.x) && std::isfinite(point.y); }

} // namespace

Color Image::areaSample(float scale, Vector2Template<float> const* polygon, int count) const {
    if (count < 3 || m_data == nullptr || !std::isfinite(scale) ||
        !std::all_of(polygon, polygon + count, isFinite))
        return {};

    auto const onGrid = [&](Point const& corner) {
        return Point(corner.x * scale * static_cast<float>(m_width),
                     corner.y * scale * static_cast<float>(m_height));
    };
    Sampler sampler(*this);
    TriangleScan triangles(sampler, scale);
    for (int i = 1; i + 1 < count; ++i) {
        std::array<Point, 3> const corners{onGrid(polygon[0]), onGrid(polygon[i]), onGrid(polygon[i + 1])};
        if (std::all_of(corners.begin(), corners.end(), isFinite))
            triangles.add(corners);
    }
    return sampler.average();
}

void Image::copyWithScale(Image const* src, float scale) {
    float const stepX = 1.0F / static_cast<float>(m_width);
    float const stepY = 1.0F / static_cast<float>(m_height);
    // Meant: the borders of the pixels are sums of steps, with the rounding that sums have.
    float top = 0.0F;
    for (int y = 0; y < m_height; ++y) {
        float const bottom = top + stepY;
        float left = 0.0F;
        for (int x = 0; x < m_width; ++x) {
            float const right = left + stepX;
            std::array<Point, 4> const corners{Point(left, top), Point(right, top), Point(right, bottom),
                                               Point(left, bottom)};
            (*this)(x, y) = src->areaSample(scale, corners.data(), static_cast<int>(corners.size()));
            left = right;
        }
        top = bottom;
    }
}

} // namespace Zel
