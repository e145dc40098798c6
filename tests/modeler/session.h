// SPDX-License-Identifier: MIT
/// A host to test: a small document, a front end that writes down what it is told, and commands
/// that are functions of the test.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "hostapi/mesh_edit.h"
#include "hostapi/module.h"
#include "modeler/form_panel.h"
#include "modeler/modeler.h"

namespace session {

/// Writes every call into `log` and answers as it is told to.
class LoggingFrontEnd : public modeler::FrontEnd {
public:
    void info(std::string_view line1, std::string_view line2) override;
    void error(std::string_view line1, std::string_view line2) override;
    [[nodiscard]] bool ask(std::string_view title, std::string_view line1,
                           std::string_view line2) override;
    [[nodiscard]] std::unique_ptr<modeler::Progress>
    begin_progress(std::string_view title, std::string_view caption) override;
    [[nodiscard]] bool run_panel(modeler::FormPanel& panel) override;

    std::vector<std::string> log;
    bool answer = true;
    bool shows_progress = true;
    int stop_at_step = 1000; ///< from this many calls of `step` on, the user wants to stop
    std::function<bool(modeler::FormPanel&)> on_panel; ///< none: Cancel
    std::function<void()> on_message;                  ///< called by every message box
};

/// A command: it is given the service lookup and the way to begin an edit.
using Command = std::function<int(GlobalFunc*, MeshEditBegin*)>;

/// Runs a function of the test as a command of a module.
modeler::RunResult run(modeler::Modeler& host, modeler::FrontEnd& front_end, Command command,
                       const modeler::RunOptions& options = {});
modeler::RunResult run(modeler::Modeler& host, Command command);

/// What the module "script" told so far: "startup" and "shutdown", and the last token of each.
std::vector<std::string>& module_events();
void*& module_token(const std::string& event);

[[nodiscard]] std::filesystem::path module_file(const std::string& name);

/// Layer 0 foreground (two faces, one patch, a point of no polygon), 1 background (a face and a
/// curve), 2 hidden, 3 foreground (one face), 4 background (points only); maps in all but the last.
[[nodiscard]] mesh::Document sample_document();
[[nodiscard]] std::vector<modeler::LayerRole> sample_roles();
[[nodiscard]] modeler::Modeler sample_host();

/// The id of a point or polygon as a command is told of it, found by scanning and counting.
[[nodiscard]] std::vector<LWPolID> scanned_polygons(MeshEditOp* edit, int layers);
[[nodiscard]] std::vector<LWPntID> scanned_points(MeshEditOp* edit, LWPolID polygon);

} // namespace session
