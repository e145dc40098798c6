// SPDX-License-Identifier: MIT
#include "picture/scene/polygon_splitter.h"

#include <deque>
#include <new>
#include <numeric>
#include <tuple>

#include <GL/glu.h>

#include "picture/view/vectors.h"

namespace picture {

using mesh::Vec3;

namespace {

/// Whether a triangle has the same orientation as its polygon.
bool faces(const Vec3& a, const Vec3& b, const Vec3& c, const Vec3& normal)
{
    return dot(cross(b - a, c - a), normal) > 0.0;
}

using Callback = void (*)();

} // namespace

/// Wrapper of the library's tessellator and its callbacks. These are called from C code, through
/// which no exception may propagate, so out of memory is recorded and thrown later.
struct PolygonSplitter::Tessellator {
    explicit Tessellator(PolygonSplitter& owner) : splitter(owner), handle(gluNewTess())
    {
        if (handle == nullptr)
            throw std::bad_alloc();
        set(GLU_TESS_EDGE_FLAG_DATA, reinterpret_cast<Callback>(&edge_flag));
        set(GLU_TESS_VERTEX_DATA, reinterpret_cast<Callback>(&vertex));
        set(GLU_TESS_COMBINE_DATA, reinterpret_cast<Callback>(&combine));
        set(GLU_TESS_ERROR_DATA, reinterpret_cast<Callback>(&fail));
        gluTessProperty(handle, GLU_TESS_WINDING_RULE, GLU_TESS_WINDING_NONZERO);
    }
    Tessellator(const Tessellator&) = delete;
    Tessellator& operator=(const Tessellator&) = delete;
    ~Tessellator() { gluDeleteTess(handle); }

    void run(std::span<const Vec3> corners, const Vec3& normal)
    {
        corner_count = corners.size();
        piece_corner = 0;
        out_of_memory = false;
        const Vec3 direction = normalized(normal);
        gluTessNormal(handle, direction.x, direction.y, direction.z);
        gluTessBeginPolygon(handle, this);
        gluTessBeginContour(handle);
        for (std::size_t i = 0; i < corners.size(); ++i) {
            std::array<GLdouble, 3> place{corners[i].x, corners[i].y, corners[i].z};
            gluTessVertex(handle, place.data(), handle_of(static_cast<std::uint32_t>(i)));
        }
        gluTessEndContour(handle);
        gluTessEndPolygon(handle);
        if (out_of_memory)
            throw std::bad_alloc();
    }

    PolygonSplitter& splitter;
    GLUtesselator* handle;
    std::deque<std::uint32_t> numbers; ///< each its own place; never moved
    std::size_t corner_count = 0;
    Piece piece;
    std::size_t piece_corner = 0;
    bool edge_begins = false;
    bool out_of_memory = false;

private:
    void set(GLenum which, Callback callback) { gluTessCallback(handle, which, callback); }

    /// The library identifies a corner by a pointer: here to the corner's number.
    void* handle_of(std::uint32_t corner)
    {
        while (numbers.size() <= corner)
            numbers.push_back(static_cast<std::uint32_t>(numbers.size()));
        return &numbers[corner];
    }

    static std::uint32_t number_of(const void* corner)
    {
        return *static_cast<const std::uint32_t*>(corner);
    }

    static Tessellator& self(void* data) { return *static_cast<Tessellator*>(data); }

    /// Callback: whether the following sides are edges of the polygon. Registering it makes the
    /// library emit separate triangles only.
    static void edge_flag(GLboolean flag, void* data) noexcept
    {
        self(data).edge_begins = flag != GL_FALSE;
    }

    static void vertex(void* corner, void* data) noexcept
    {
        Tessellator& one = self(data);
        one.piece.corners.at(one.piece_corner) = number_of(corner);
        if (one.edge_begins)
            one.piece.edges = static_cast<std::uint8_t>(one.piece.edges | 1U << one.piece_corner);
        if (++one.piece_corner < 3)
            return;
        one.piece_corner = 0;
        try {
            one.splitter.pieces_.push_back(one.piece);
        } catch (const std::bad_alloc&) {
            one.out_of_memory = true;
        }
        one.piece = {};
    }

    /// Callback: a new point where edges intersect or points coincide.
    static void combine(GLdouble* place, void** corners, GLfloat* shares, void** result,
                        void* data) noexcept
    {
        Tessellator& one = self(data);
        AddedPoint mixed;
        mixed.place = {place[0], place[1], place[2]};
        for (std::size_t i = 0; i < 4; ++i)
            if (shares[i] > 0.0F)
                one.mix_in(mixed, number_of(corners[i]), shares[i]);
        even_out(mixed);
        try {
            *result = one.handle_of(
                static_cast<std::uint32_t>(one.corner_count + one.splitter.added_.size()));
            one.splitter.added_.push_back(mixed);
        } catch (const std::bad_alloc&) {
            *result = corners[0];
            one.out_of_memory = true;
        }
    }

    /// Adds a weighted corner, or the corners of an earlier added point.
    void mix_in(AddedPoint& mixed, std::uint32_t corner, float share) const noexcept
    {
        if (corner >= corner_count) {
            const AddedPoint& earlier = splitter.added_[corner - corner_count];
            for (std::size_t i = 0; i < 4; ++i)
                if (earlier.shares.at(i) > 0.0F)
                    mix_in(mixed, earlier.corners.at(i), share * earlier.shares.at(i));
            return;
        }
        std::size_t least = 0;
        for (std::size_t i = 0; i < 4; ++i) {
            if (mixed.shares.at(i) > 0.0F && mixed.corners.at(i) == corner) {
                mixed.shares.at(i) += share;
                return;
            }
            if (mixed.shares.at(i) < mixed.shares.at(least))
                least = i;
        }
        if (share > mixed.shares.at(least)) {
            mixed.corners.at(least) = corner;
            mixed.shares.at(least) = share;
        }
    }

    /// Normalises the sum of the shares to 1 after some were dropped.
    static void even_out(AddedPoint& mixed) noexcept
    {
        const float sum = std::accumulate(mixed.shares.begin(), mixed.shares.end(), 0.0F);
        for (float& share : mixed.shares)
            share /= sum;
    }

    /// Callback for errors. The library has freed its data; the triangles so far are kept.
    static void fail(GLenum error, void* data) noexcept
    {
        if (error == GLU_OUT_OF_MEMORY)
            self(data).out_of_memory = true;
    }
};

Vec3 area_vector(std::span<const Vec3> corners) noexcept
{
    Vec3 sum;
    for (std::size_t i = 2; i < corners.size(); ++i)
        sum = sum + cross(corners[i - 1] - corners[0], corners[i] - corners[0]);
    return sum;
}

PolygonSplitter::PolygonSplitter() : tessellator_(std::make_unique<Tessellator>(*this)) {}

PolygonSplitter::~PolygonSplitter() = default;

void PolygonSplitter::split(std::span<const Vec3> corners)
{
    pieces_.clear();
    added_.clear();
    if (corners.size() == 3) {
        pieces_.push_back({{0, 1, 2}, 7});
        return;
    }
    const Vec3 normal = area_vector(corners);
    if (corners.size() == 4 ? split_quad(corners, normal) : split_as_fan(corners, normal))
        return;
    pieces_.clear();
    constexpr std::size_t crossings_a_corner = 4;
    if (crossings_.more_than(crossings_a_corner * corners.size(), corners, normal))
        make_fan(static_cast<std::uint32_t>(corners.size()));
    else
        tessellator_->run(corners, normal);
}

/// Splits as a fan from the first corner; false if not all corners are visible from there.
bool PolygonSplitter::split_as_fan(std::span<const Vec3> corners, const Vec3& normal)
{
    for (std::size_t i = 2; i < corners.size(); ++i)
        if (!faces(corners[0], corners[i - 1], corners[i], normal) ||
            !faces(corners[0], corners[1], corners[i], normal))
            return false;
    make_fan(static_cast<std::uint32_t>(corners.size()));
    return true;
}

void PolygonSplitter::make_fan(std::uint32_t corner_count)
{
    for (std::uint32_t i = 2; i < corner_count; ++i) {
        // sides: from the first corner, between the two others, and back
        unsigned edges = 2;
        if (i == 2)
            edges |= 1;
        if (i + 1 == corner_count)
            edges |= 4;
        pieces_.push_back({{0, i - 1, i}, static_cast<std::uint8_t>(edges)});
    }
}

/// Splits a quad along the diagonal inside it, or the shorter one if both are; false for a
/// self-intersecting quad.
bool PolygonSplitter::split_quad(std::span<const Vec3> corners, const Vec3& normal)
{
    const auto& [a, b, c, d] = std::tie(corners[0], corners[1], corners[2], corners[3]);
    const bool by_first = faces(a, b, c, normal) && faces(a, c, d, normal);
    const bool by_second = faces(a, b, d, normal) && faces(b, c, d, normal);
    if (!by_first && !by_second)
        return false;
    const bool first_is_shorter = dot(c - a, c - a) <= dot(d - b, d - b);
    if (by_first && (first_is_shorter || !by_second)) {
        pieces_.push_back({{0, 1, 2}, 3});
        pieces_.push_back({{0, 2, 3}, 6});
    } else {
        pieces_.push_back({{0, 1, 3}, 5});
        pieces_.push_back({{1, 2, 3}, 3});
    }
    return true;
}

} // namespace picture
