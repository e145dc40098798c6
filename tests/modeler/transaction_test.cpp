// SPDX-License-Identifier: MIT
// An edit is in the document as a whole or not at all, and can be taken back.
#include <new>
#include <stdexcept>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "hostapi/messages.h"
#include "modeler/errors.h"
#include "modeler/run_failure.h"
#include "tests/modeler/session.h"
#include "tests/support/mesh_compare.h"

namespace {

using modeler::Module;
using modeler::ModuleError;
using session::run;
using session::sample_host;
using support::first_difference;
using testing::HasSubstr;

struct Failure {
    const char* server;
    const char* says; ///< of the exception; null: there is none
    int code = 0;
    const char* failure = ""; ///< what `run_failure` says; nothing where there is an exception
};
class FailingCommand : public testing::TestWithParam<Failure> {};

TEST_P(FailingCommand, LeavesTheDocumentAsItWas)
{
    modeler::Modeler host = sample_host();
    session::LoggingFrontEnd front_end;
    Module module = Module::load(session::module_file("failing"));
    if (GetParam().says != nullptr) {
        try {
            host.run(module, GetParam().server, front_end);
            FAIL() << "no exception";
        } catch (const ModuleError& error) {
            EXPECT_EQ(error.step(), "run");
            EXPECT_THAT(error.what(), HasSubstr(GetParam().says));
            EXPECT_THAT(error.what(), HasSubstr("failing.p"));
        }
    } else {
        const auto result = host.run(module, GetParam().server, front_end);
        EXPECT_EQ(result.code, GetParam().code);
        EXPECT_FALSE(result.applied);
        EXPECT_EQ(result.points_added, 0u);
        EXPECT_TRUE(result.maps_written.empty());
        EXPECT_THAT(modeler::run_failure(result), HasSubstr(GetParam().failure));
    }
    EXPECT_EQ(first_difference(host.document(), session::sample_document()), "");
    EXPECT_FALSE(host.can_undo());
    EXPECT_TRUE(run(host,
                    [](GlobalFunc*, MeshEditBegin* begin) {
                        MeshEditOp* const op = begin(0, 0, OPSEL_USER);
                        const double position[3] = {1, 2, 3};
                        op->addPoint(op->state, position);
                        op->done(op->state, EDERR_NONE, 0);
                        return 0;
                    })
                    .applied)
        << "the host goes on working";
}

INSTANTIATE_TEST_SUITE_P(Commands, FailingCommand,
                         testing::Values(Failure{"OutOfMemory", "out of memory"},
                                         Failure{"Throws", "the left hand did not know"},
                                         Failure{"ThrowsNumber", "unknown kind"},
                                         Failure{"ThrowsAfterDone", "out of memory"},
                                         Failure{"ThrowsInScan", "out of memory"},
                                         Failure{"NeverDone", nullptr, 0,
                                                 "without finishing its edit"},
                                         Failure{"GivesUp", nullptr, 17, "ended with code 17"}),
                         [](const auto& tested) { return std::string(tested.param.server); });

/// A command that changes something of every kind, the more the larger `size` is.
session::Command change(int size)
{
    return [size](GlobalFunc*, MeshEditBegin* begin) {
        MeshEditOp* const op = begin(0, 0, OPSEL_USER);
        const auto ground = session::scanned_polygons(op, OPLYR_FG);
        const auto tree = session::scanned_polygons(op, OPLYR_BG);
        const auto old = session::scanned_points(op, ground[0]);
        const auto leaf = session::scanned_points(op, tree[0]);
        const std::string name = "Step" + std::to_string(size);
        for (int i = 0; i < size; ++i) {
            const double position[3] = {double(i), double(size), -0.0};
            const LWPntID point = op->addPoint(op->state, position);
            const float value[3] = {float(i), float(size), -0.0f};
            op->pntVMap(op->state, point, LWVMAP_WGHT, "Height", 1, value);
            op->pntVMap(op->state, point, LWVMAP_MORF, name.c_str(), 3, value);
            op->pntVMap(op->state, old[std::size_t(i) % 3], LWVMAP_WGHT, "Height", 1, value);
            op->pntVMap(op->state, leaf[std::size_t(i) % 3], LWVMAP_MORF, "Smile", 3, value);
            op->pntVMap(op->state, leaf[0], LWVMAP_SPOT, name.c_str(), 3, value);
            op->addPoly(op->state, mesh::fourcc("BONE"), tree[0], nullptr, 1, &point);
            op->addPoly(op->state, LWPOLTYPE_FACE, ground[0], name.c_str(), 3, old.data());
        }
        op->done(op->state, EDERR_NONE, 0);
        return 0;
    };
}

TEST(Undo, TakesBackExactlyWhatAnEditChanged)
{
    modeler::Modeler host = sample_host();
    EXPECT_TRUE(run(host, change(5)).applied);
    EXPECT_NE(first_difference(host.document(), session::sample_document()), "");
    EXPECT_TRUE(host.can_undo());
    host.undo();
    EXPECT_EQ(first_difference(host.document(), session::sample_document()), "");
    EXPECT_FALSE(host.can_undo());
}

TEST(Undo, TakesSeveralEditsBackInReverse)
{
    modeler::Modeler host = sample_host();
    std::vector<mesh::Document> stages;
    for (int size = 1; size <= 4; ++size) {
        stages.push_back(support::copy_of(host.document()));
        run(host, change(size));
    }
    EXPECT_EQ(host.undo_steps(), 4u);
    while (!stages.empty()) {
        host.undo();
        EXPECT_EQ(first_difference(host.document(), stages.back()), "") << stages.size();
        stages.pop_back();
    }
    EXPECT_THROW(host.undo(), std::logic_error);
}

TEST(Undo, AnEditAfterAnUndoIsTheSameAsBefore)
{
    modeler::Modeler host = sample_host();
    run(host, change(3));
    const mesh::Document once = support::copy_of(host.document());
    host.undo();
    run(host, change(3));
    EXPECT_EQ(first_difference(host.document(), once), "");
}

TEST(Undo, ReplacingTheDocumentForgetsIt)
{
    modeler::Modeler host = sample_host();
    run(host, change(3));
    host.replace(session::sample_document(), session::sample_roles());
    EXPECT_FALSE(host.can_undo());
    run(host, change(3));
    const mesh::Document taken = host.release();
    EXPECT_EQ(taken.layers.size(), 5u);
    EXPECT_FALSE(host.can_undo());
    EXPECT_TRUE(host.document().layers.empty());
    EXPECT_EQ(host.document().tags.size(), 0u);
}

TEST(RunFailure, IsHowTheLastEditEnded)
{
    const auto failure_of = [](std::vector<int> errors_of_edits) {
        modeler::Modeler host = sample_host();
        return modeler::run_failure(run(host, [&](GlobalFunc*, MeshEditBegin* begin) {
            for (const int error : errors_of_edits) {
                MeshEditOp* const op = begin(0, 0, OPSEL_USER);
                op->done(op->state, error, 0);
            }
            return 0;
        }));
    };
    EXPECT_THAT(failure_of({}), HasSubstr("it began no edit"));
    EXPECT_EQ(failure_of({EDERR_NONE}), "") << "also when it changed nothing";
    EXPECT_THAT(failure_of({EDERR_NONE, EDERR_BADARGS}),
                HasSubstr("gave its edit up with error 3"));
    EXPECT_EQ(failure_of({EDERR_BADARGS, EDERR_NONE}), "");
}

TEST(RunFailure, ARunThatWasRefusedOrCancelledIsNone)
{
    modeler::RunResult refused;
    refused.errors.push_back({"no", ""});
    EXPECT_EQ(modeler::run_failure(refused), "");
    modeler::RunResult cancelled;
    cancelled.panel_cancelled = true;
    EXPECT_EQ(modeler::run_failure(cancelled), "");
}

TEST(Session, ChecksWhatItIsGiven)
{
    using modeler::LayerRole;
    EXPECT_THROW(modeler::Modeler(session::sample_document(), {LayerRole::foreground}),
                 std::invalid_argument);
    modeler::Modeler host = sample_host();
    EXPECT_THROW(host.replace(session::sample_document(), {}), std::invalid_argument);
    EXPECT_EQ(first_difference(host.document(), session::sample_document()), "");
    EXPECT_THROW(host.set_role(5, LayerRole::hidden), std::out_of_range);
    EXPECT_THROW(host.select(5, 0, true), std::out_of_range);
    EXPECT_THROW(host.select(0, 3, true), std::out_of_range);
}

TEST(Session, AFrontEndsExceptionEndsTheRunAndComesOut)
{
    struct Interrupted {};
    modeler::Modeler host = sample_host();
    session::LoggingFrontEnd front_end;
    front_end.on_message = [] { throw Interrupted(); };
    bool went_on = false;
    EXPECT_THROW(run(host, front_end,
                     [&](GlobalFunc* global, MeshEditBegin* begin) {
                         change(2)(global, begin);
                         auto* const messages =
                             static_cast<LWMessageFuncs*>(global(LWMESSAGEFUNCS_GLOBAL, 0));
                         messages->info("stop here", nullptr);
                         went_on = true;
                         return 0;
                     }),
                 Interrupted);
    EXPECT_TRUE(went_on) << "the exception must not cross into the module";
    EXPECT_EQ(first_difference(host.document(), session::sample_document()), "");
    EXPECT_FALSE(host.can_undo());
}

TEST(Session, NothingElseMayTouchTheDocumentDuringARun)
{
    modeler::Modeler host = sample_host();
    session::LoggingFrontEnd front_end;
    Module module = Module::load(session::module_file("failing"));
    std::vector<std::string> refused;
    const auto attempt = [&](const std::function<void()>& call) {
        try {
            call();
            refused.emplace_back("nothing");
        } catch (const std::exception& error) {
            refused.emplace_back(error.what());
        }
    };
    run(host, front_end, [&](GlobalFunc*, MeshEditBegin*) {
        attempt([&] { host.run(module, "NeverDone", front_end); });
        attempt([&] { host.undo(); });
        attempt([&] { host.select(0, 0, true); });
        attempt([&] { host.set_role(0, modeler::LayerRole::hidden); });
        attempt([&] { host.replace({}, {}); });
        attempt([&] { (void)host.release(); });
        return 0;
    });
    ASSERT_EQ(refused.size(), 6u);
    EXPECT_THAT(refused[0], HasSubstr("a command is running already"));
    for (std::size_t i = 1; i < refused.size(); ++i)
        EXPECT_THAT(refused[i], HasSubstr("cannot be changed while a command works on it"));
    EXPECT_EQ(first_difference(host.document(), session::sample_document()), "");
}

} // namespace
