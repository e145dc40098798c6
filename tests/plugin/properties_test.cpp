// SPDX-License-Identifier: MIT
// Laws that hold for whatever input.
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

#include <rapidcheck.h>

#include "plugin/engine/clone.h"
#include "plugin/engine/pos_typ.h"
#include "plugin/geometry/axes.h"
#include "tests/plugin/module_test.h"

namespace dastrel {
namespace {

/// A number between the bounds, of no more than six digits behind the point.
rc::Gen<double> real(int low, int high)
{
    return rc::gen::map(
        rc::gen::inRange<std::int64_t>(low * 1000000LL, high * 1000000LL),
        [](std::int64_t millionths) { return static_cast<double>(millionths) / 1e6; });
}

XYZ6_typ vector_within(int bound)
{
    return {*real(-bound, bound), *real(-bound, bound), *real(-bound, bound)};
}

bool near(XYZ6_typ a, XYZ6_typ b, double tolerance) { return a.calc_distance(b) <= tolerance; }

class Laws : public ModuleTest {
protected:
    /// Checks a law on many inputs; a failure shows the input that breaks it.
    template <typename Law> void check(const char* description, Law law)
    {
        EXPECT_TRUE(rc::check(description, law));
    }

    /// Releases what the run before left, while the settings are still its own.
    void start_anew()
    {
        free_memory();
        par = params_typ();
        host.points.clear();
        host.polygons.clear();
    }

    /// A ground of 1 to 5 quads of any shape with any normals, and settings of any kind.
    void any_ground_and_settings()
    {
        start_anew();
        const int quads = *rc::gen::inRange(1, 6);
        for (int i = 0; i < quads; ++i) {
            std::vector<std::array<double, 3>> corners;
            for (int corner = 0; corner < 4; ++corner)
                corners.push_back({*real(-9, 9), *real(-9, 9), *real(-9, 9)});
            const XYZ6_typ n = ~vector_within(1);
            host.add_polygon(Side::foreground, corners, {n.x(), n.y(), n.z()});
        }
        par.clone_num = *rc::gen::inRange(0, 60);
        par.iterations = *rc::gen::inRange(-1, 20);
        par.distribution = *real(-1, 3);
        par.seed = *rc::gen::arbitrary<int>();
        par.size_poly_area = *rc::gen::inRange(0, 2);
        par.h_align = *rc::gen::inRange(0, 2);
        par.p_align = *rc::gen::inRange(0, 2);
    }

    std::vector<std::string> layout()
    {
        scan();
        set_positions(nullptr, &par);
        std::vector<std::string> places;
        for (const pos_typ* node : positions())
            places.push_back(text(node->pos) + " on " + std::to_string(node->poly) + " " +
                             support::number(node->norm_h) + " " + support::number(node->norm_p));
        return places;
    }
};

TEST_F(Laws, AsManyPositionsAsClonesInAscendingX)
{
    check("n clones asked, n positions in ascending X", [this] {
        any_ground_and_settings();
        RC_ASSERT(layout().size() == static_cast<std::size_t>(par.clone_num));
        RC_PRE(par.clone_num > 0);
        for (const pos_typ* node = pos_list; node->next != nullptr; node = node->next)
            RC_ASSERT(node->next->pos.x() >= node->pos.x());
    });
}

TEST_F(Laws, EqualSeedsAndSettingsGiveEqualPositions)
{
    check("equal seed, equal positions", [this] {
        any_ground_and_settings();
        const auto first = layout();
        losoj.randomize(*rc::gen::arbitrary<unsigned>());
        RC_ASSERT(layout() == first);
        if (par.seed != std::numeric_limits<int>::min()) {
            par.seed = -par.seed;
            RC_ASSERT(layout() == first);
        }
    });
}

TEST_F(Laws, PositionsLieInTheBoundsOfAConvexPolygon)
{
    check("a position lies on its triangle", [this] {
        start_anew();
        const XYZ6_typ a = vector_within(9);
        const XYZ6_typ b = vector_within(9);
        const XYZ6_typ c = vector_within(9);
        const XYZ6_typ cross = (b - a) * (c - a);
        RC_PRE(cross.len() > 1e-2);
        RC_PRE(a.calc_distance(b) > 1e-2);
        const XYZ6_typ n = ~cross;
        host.add_polygon(Side::foreground,
                         {{a.x(), a.y(), a.z()}, {b.x(), b.y(), b.z()}, {c.x(), c.y(), c.z()}},
                         {n.x(), n.y(), n.z()});
        par.clone_num = 5;
        par.seed = *rc::gen::arbitrary<int>();
        (void)layout();
        for (const pos_typ* node : positions()) {
            const XYZ6_typ p = node->pos;
            // The three triangles that p makes with the sides cover the whole and no more.
            const double parts =
                ((b - a) * (p - a)).len() + ((c - b) * (p - b)).len() + ((a - c) * (p - c)).len();
            RC_ASSERT(parts <= cross.len() + 1e-6 * (1 + cross.len()));
        }
    });
}

TEST_F(Laws, ToGlobalUndoesToLocal)
{
    check("to_global(to_local(p)) is p within rounding", [] {
        const XYZ6_typ p = vector_within(100);
        const XYZ6_typ origin = vector_within(100);
        const XYZ6_typ angles = vector_within(7);
        RC_ASSERT(near(p.to_local(origin, angles).to_global(origin, angles), p, 1e-11));
        axes_typ axes;
        axes.axis[0] = vector_within(3);
        axes.axis[1] = vector_within(3);
        axes.calc_transf_angles();
        XYZ6_typ q = p;
        axes.to_local(&q, 1, origin);
        axes.to_global(&q, 1, origin);
        RC_ASSERT(near(q, p, 1e-11));
    });
}

TEST_F(Laws, RotationsKeepLength)
{
    check("a rotation keeps the length within rounding", [] {
        XYZ6_typ v = vector_within(100);
        const double angle = *real(-20, 20);
        const double length = v.len();
        const auto kept = [length](XYZ6_typ turned) {
            return std::fabs(turned.len() - length) <= 1e-12 * (1 + length);
        };
        RC_ASSERT(kept(v.rotate_X(angle)));
        RC_ASSERT(kept(v.rotate_Y(angle)));
        RC_ASSERT(kept(v.rotate_Z(angle)));
        RC_ASSERT(kept(v.rotate(XYZ6_typ(), vector_within(7))));
        RC_ASSERT(kept(v.rotate_free(XYZ6_typ(), vector_within(7), angle)));
    });
}

TEST_F(Laws, RealDrawsLieWithinTheirBoundsInAnyOrder)
{
    check("z_zakresu of reals", [] {
        const double a = *real(-1000, 1000);
        const double b = *real(-1000, 1000);
        random one;
        random other;
        one.fixed(*rc::gen::arbitrary<int>());
        const int place = *rc::gen::inRange(0, 50);
        for (int i = 0; i < place; ++i)
            (void)one.get();
        other.randomize(1);
        other.mti = one.mti;
        std::copy(one.mt, one.mt + 624, other.mt);
        const double drawn = one.z_zakresu(a, b);
        RC_ASSERT(drawn == other.z_zakresu(b, a));
        RC_ASSERT(drawn >= std::fmin(a, b));
        RC_ASSERT(drawn <= std::fmax(a, b) + 1e-12); // rounding may carry it past the end
    });
}

TEST_F(Laws, WholeDrawsLieWithinTheirBoundsInAnyOrder)
{
    check("z_zakresu of whole numbers", [] {
        const int a = *rc::gen::inRange(-1000000, 1000000);
        const int b = *rc::gen::inRange(-1000000, 1000000);
        const int seed = *rc::gen::arbitrary<int>();
        random one;
        random other;
        one.fixed(seed);
        other.fixed(seed);
        const int drawn = one.z_zakresu(a, b);
        RC_ASSERT(drawn == other.z_zakresu(b, a));
        RC_ASSERT(drawn >= std::min(a, b));
        RC_ASSERT(drawn <= std::max(a, b));
    });
}

TEST_F(Laws, APointGoesIntoItsCloneWithoutChangingShape)
{
    check("alignment and rotation keep distances of a clone's points", [] {
        pos_typ item;
        item.norm_h = *real(-4, 4);
        item.norm_p = *real(-4, 4);
        akt_item = &item;
        par = params_typ();
        size_change_x = 1.0;
        HPB_rand = vector_within(7);
        const XYZ6_typ a = vector_within(9);
        const XYZ6_typ b = vector_within(9);
        const double before = a.calc_distance(b);
        const double after = calc_cloned_point(a, &par).calc_distance(calc_cloned_point(b, &par));
        akt_item = nullptr;
        RC_ASSERT(std::fabs(before - after) <= 1e-11);
    });
}

} // namespace
} // namespace dastrel
