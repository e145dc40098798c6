// SPDX-License-Identifier: MIT
// Laws of edits and undo over random runs.
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "tests/modeler/session.h"
#include "tests/support/mesh_compare.h"

namespace {

/// One call of a random command; what it does depends on `kind`.
struct Step {
    int kind;
    std::size_t pick;
    float value;
    bool leave_out; ///< the map `pick` names is then a new one
};

std::ostream& operator<<(std::ostream& out, const Step& step)
{
    return out << "{" << step.kind << ", " << step.pick << ", " << step.value << ", "
               << step.leave_out << "}";
}

rc::Gen<Step> any_step()
{
    return rc::gen::build<Step>(
        rc::gen::set(&Step::kind, rc::gen::inRange(0, 5)),
        rc::gen::set(&Step::pick, rc::gen::inRange<std::size_t>(0, 1000)),
        rc::gen::set(&Step::value, rc::gen::map(rc::gen::inRange(-8, 9),
                                                [](int n) { return static_cast<float>(n) / 4; })),
        rc::gen::set(&Step::leave_out, rc::gen::arbitrary<bool>()));
}

/// Everything that a command can name: ids it was told of and ids it made.
struct Known {
    std::vector<LWPntID> points;
    std::vector<LWPolID> polygons;
};

void take(MeshEditOp* op, Known& known, const Step& step)
{
    static const char* const names[] = {"Height", "Sway", "Smile", "Tex", "Worn"};
    const LWID types[] = {LWVMAP_WGHT, LWVMAP_WGHT, LWVMAP_MORF, LWVMAP_TXUV, LWVMAP_WGHT};
    const int dimensions[] = {1, 1, 3, 2, 1};
    const double position[3] = {step.value, 1.0, -step.value};
    const float values[3] = {step.value, -step.value, 0.5f};
    const std::size_t map = step.pick % 5;
    const LWPntID point = known.points[step.pick % known.points.size()];
    const LWPolID polygon = known.polygons[step.pick % known.polygons.size()];
    const std::string fresh = "Fresh" + std::to_string(step.pick % 3);
    switch (step.kind) {
    case 0:
        known.points.push_back(op->addPoint(op->state, position));
        break;
    case 1: // may be refused: the point may be of another layer
        if (const LWPolID added = op->addPoly(op->state, LWPOLTYPE_PTCH, polygon,
                                              step.leave_out ? fresh.c_str() : nullptr, 1, &point))
            known.polygons.push_back(added);
        break;
    case 2:
    case 3:
        op->pntVMap(op->state, point, types[map], names[map], dimensions[map], values);
        break;
    default:
        op->pntVMap(op->state, point, LWVMAP_WGHT, fresh.c_str(), 1, values);
        break;
    }
}

session::Command random_command(const std::vector<Step>& steps, int error)
{
    return [&steps, error](GlobalFunc*, MeshEditBegin* begin) {
        MeshEditOp* const op = begin(0, 0, OPSEL_USER);
        Known known;
        known.polygons = session::scanned_polygons(op, OPLYR_FG | OPLYR_BG);
        for (const LWPolID polygon : known.polygons)
            for (const LWPntID point : session::scanned_points(op, polygon))
                known.points.push_back(point);
        for (const Step& step : steps)
            take(op, known, step);
        op->done(op->state, error, 0);
        return 0;
    };
}

using Steps = std::vector<Step>;

RC_GTEST_PROP(UndoLaw, EveryUndoGivesTheStageBefore, ())
{
    const auto runs =
        *rc::gen::container<std::vector<Steps>>(rc::gen::container<Steps>(any_step()));
    modeler::Modeler host = session::sample_host();
    std::vector<mesh::Document> stages;
    for (const Steps& steps : runs) {
        mesh::Document before = support::copy_of(host.document());
        const auto result = session::run(host, random_command(steps, EDERR_NONE));
        if (result.applied)
            stages.push_back(std::move(before));
        else
            RC_ASSERT(support::first_difference(host.document(), before) == "");
    }
    RC_ASSERT(host.undo_steps() == stages.size());
    for (; !stages.empty(); stages.pop_back()) {
        host.undo();
        RC_ASSERT(support::first_difference(host.document(), stages.back()) == "");
    }
}

RC_GTEST_PROP(UndoLaw, RedoGivesTheStagesAfterUndo, ())
{
    const auto runs =
        *rc::gen::container<std::vector<Steps>>(rc::gen::container<Steps>(any_step()));
    modeler::Modeler host = session::sample_host();
    std::vector<mesh::Document> stages;
    stages.push_back(support::copy_of(host.document()));
    for (const Steps& steps : runs)
        if (session::run(host, random_command(steps, EDERR_NONE)).applied)
            stages.push_back(support::copy_of(host.document()));
    while (host.can_undo())
        host.undo();
    RC_ASSERT(host.redo_steps() + 1 == stages.size());
    for (std::size_t i = 1; i < stages.size(); ++i) {
        host.redo();
        RC_ASSERT(support::first_difference(host.document(), stages[i]) == "");
    }
    RC_ASSERT(host.undo_steps() + 1 == stages.size());
    for (std::size_t i = stages.size() - 1; i > 0; --i) {
        host.undo();
        RC_ASSERT(support::first_difference(host.document(), stages[i - 1]) == "");
    }
    RC_ASSERT(session::run(host, random_command({{0, 0, 1.0F, false}}, EDERR_NONE)).applied);
    RC_ASSERT(!host.can_redo());
}

RC_GTEST_PROP(UndoLaw, AnEditFinishedWithAnErrorLeavesNothing, ())
{
    const auto kept = *rc::gen::container<Steps>(any_step());
    const auto dropped = *rc::gen::container<Steps>(any_step());
    modeler::Modeler host = session::sample_host();
    session::run(host, random_command(kept, EDERR_NONE));
    const mesh::Document before = support::copy_of(host.document());
    RC_ASSERT(!session::run(host, random_command(dropped, EDERR_NOMEMORY)).applied);
    RC_ASSERT(support::first_difference(host.document(), before) == "");
}

} // namespace
