// SPDX-License-Identifier: MIT
// Memory that ends in the scene of a window: every allocation of every operation fails once.
#include <functional>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

#include <QTest>

#include "desktop/window/selection.h"
#include "desktop/window/workspace.h"
#include "formats/errors.h"
#include "tests/desktop/support.h"
#include "tests/support/failing_memory.h"
#include "tests/support/mesh_compare.h"

namespace {

using desktop::Workspace;
using support::example;
using support::FailingMemory;

/// Confirms each panel with the values that are in it.
class Confirm : public modeler::FrontEnd {
public:
    void info(std::string_view, std::string_view) override {}
    void error(std::string_view, std::string_view) override {}
    bool ask(std::string_view, std::string_view, std::string_view) override { return false; }
    std::unique_ptr<modeler::Progress> begin_progress(std::string_view, std::string_view) override
    {
        return nullptr;
    }
    bool run_panel(modeler::FormPanel&) override { return true; }
};

/// Everything that can be seen of a workspace.
struct Seen {
    mesh::Document document;
    std::vector<modeler::LayerRole> roles;
    std::filesystem::path path;
    std::string title;
    std::vector<std::filesystem::path> files;
    bool modified = false;
    std::size_t undo_steps = 0;
    std::size_t redo_steps = 0;

    explicit Seen(const Workspace& workspace)
        : document(support::copy_of(workspace.session().document())),
          roles(workspace.session().roles()), path(workspace.path()), title(workspace.title()),
          modified(workspace.modified()), undo_steps(workspace.session().undo_steps()),
          redo_steps(workspace.session().redo_steps())
    {
        for (std::size_t i = 0; i < roles.size(); ++i)
            files.push_back(workspace.file_of(i));
    }
};

std::string difference(const Seen& a, const Seen& b)
{
    if (a.roles != b.roles || a.path != b.path || a.title != b.title || a.files != b.files)
        return "roles or files";
    if (a.modified != b.modified)
        return "modified";
    if (a.undo_steps != b.undo_steps || a.redo_steps != b.redo_steps)
        return "undo";
    return support::first_difference(a.document, b.document);
}

void add(Workspace& workspace, const char* file)
{
    std::vector<std::string> warnings;
    workspace.add(Workspace::read(example(file)), warnings);
}

using Work = std::function<void(Workspace&)>;

/// Lets each allocation of `work` fail, in a workspace of its own each time, and looks at what is
/// left. `work` may also get through, where it does without. With `step`, only every so many of
/// the allocations.
/// Gives how often it threw.
std::size_t try_all(const Work& prepare, const Work& work, std::size_t step = 1)
{
    std::size_t thrown = 0;
    for (std::size_t number = 1;; number += step) {
        Workspace workspace;
        prepare(workspace);
        const Seen before(workspace);
        bool failed = false;
        bool through = false;
        {
            const FailingMemory memory(number);
            try {
                work(workspace);
                through = true;
            } catch (const std::bad_alloc&) {
            } catch (const modeler::ModuleError&) {
            } catch (const std::system_error&) { // the C++ library's own view of it
            }
            failed = memory.failed();
        }
        if (!failed)
            break;
        if (through)
            continue;
        ++thrown;
        const std::string changed = difference(before, Seen(workspace));
        work(workspace); // it works as if nothing had been
        Workspace other;
        prepare(other);
        work(other);
        const std::string later = difference(Seen(other), Seen(workspace));
        if (!changed.empty() || !later.empty()) {
            const std::string message = "allocation " + std::to_string(number) +
                                        ": changed: " + changed +
                                        "; different afterwards: " + later;
            QTest::qFail(message.c_str(), __FILE__, __LINE__);
            break;
        }
    }
    return thrown;
}

class WorkspaceMemoryTest : public QObject {
    Q_OBJECT

private:
    QTemporaryDir folder_;
    Confirm front_end_;
    std::optional<modeler::Module> module_;

    void run(Workspace& workspace)
    {
        (void)workspace.session().run(*module_, "Dastrel", front_end_);
    }

    /// The module's sampler begins anew, so that all runs are the same.
    void reload()
    {
        module_.reset();
        module_ = modeler::Module::load(DASTREL_MODULE);
    }

private Q_SLOTS:
    void keeps_the_scene_when_a_file_is_added()
    {
        for (const char* const file : {"tree.lwo", "stone.lwo"})
            QVERIFY(try_all([](Workspace& workspace) { add(workspace, "terrain.lwo"); },
                            [&](Workspace& workspace) { add(workspace, file); }) > 0);
    }

    void keeps_the_scene_and_its_undo_when_a_file_is_added_after_a_run()
    {
        const Work prepare = [&](Workspace& workspace) {
            add(workspace, "terrain.lwo");
            add(workspace, "tree.lwo");
            reload();
            run(workspace);
            run(workspace);
            workspace.session().undo();
        };
        QVERIFY(try_all(prepare, [](Workspace& workspace) { add(workspace, "stone.lwo"); }) > 0);
    }

    void keeps_the_scene_when_another_is_begun()
    {
        QVERIFY(try_all([](Workspace& workspace) { add(workspace, "terrain.lwo"); },
                        [](Workspace& workspace) {
                            std::vector<std::string> warnings;
                            workspace.begin(Workspace::read(example("tree.lwo")), warnings);
                        }) > 0);
    }

    void keeps_the_scene_when_it_cannot_be_emptied()
    {
        QVERIFY(try_all([](Workspace& workspace) { add(workspace, "terrain.lwo"); },
                        [](Workspace& workspace) { workspace.clear(); }) > 0);
    }

    void keeps_the_scene_when_a_run_fails()
    {
        const Work prepare = [](Workspace& workspace) {
            add(workspace, "terrain.lwo");
            add(workspace, "tree.lwo");
        };
        const Work work = [&](Workspace& workspace) {
            reload();
            run(workspace);
        };
        QVERIFY(try_all(prepare, work, 37) > 0);
    }

    void keeps_the_scene_when_undo_and_redo_fail()
    {
        const Work run_twice = [&](Workspace& workspace) {
            add(workspace, "terrain.lwo");
            add(workspace, "tree.lwo");
            reload();
            run(workspace);
            run(workspace);
        };
        QVERIFY(try_all(run_twice, [](Workspace& workspace) { workspace.session().undo(); }) > 0);
        // Redo may need nothing: what the undo cut off is still allocated.
        try_all(
            [&](Workspace& workspace) {
                run_twice(workspace);
                workspace.session().undo();
            },
            [](Workspace& workspace) { workspace.session().redo(); });
    }

    void keeps_the_scene_when_it_cannot_be_written()
    {
        const std::filesystem::path file = folder_.filePath("scene.lwo").toStdString();
        const auto prepare = [](Workspace& workspace) {
            add(workspace, "terrain.lwo");
            add(workspace, "tree.lwo");
        };
        Workspace whole;
        prepare(whole);
        for (const bool foreground_only : {false, true}) {
            whole.write(file, foreground_only);
            const std::string bytes = support::bytes_of(file);
            const Work write = [&](Workspace& workspace) {
                workspace.write(file, foreground_only);
            };
            QVERIFY(try_all(prepare, write) > 0);
            QCOMPARE(support::bytes_of(file), bytes); // whole after every failure
        }
        QVERIFY(try_all(prepare, [&](Workspace& workspace) { workspace.saved_as(file); }) > 0);
    }
};

} // namespace

int main(int count, char** arguments)
{
    WorkspaceMemoryTest tests;
    return support::run_tests(tests, count, arguments);
}

#include "workspace_memory_test.moc"
