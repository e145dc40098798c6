// SPDX-License-Identifier: MIT
/// Whole runs of the command against the recording host.
#pragma once

#include <initializer_list>

#include "tests/plugin/module_test.h"

namespace dastrel {

/// The calls of each stage of a run.
inline const Lines panel_until_shown = {"panel create(1)", "panel describe(null, null)",
                                        "panel hint(0)", "panel post"};

inline const Lines services = {"global(\"Info Messages 3\", 0)", "global(\"Scene Objects 7\", 0)",
                               "global(\"LWXPanel 2\", 0)", "global(\"LWM: Dynamic Monitor\", 0)",
                               "begin(0, 0, 1)"};

inline const Lines checks = {"polyCount(foreground, all)", "polyCount(foreground, selected)",
                             "polyScan(foreground)", "pointCount(background, all)"};

inline const Lines lists_without_maps = {"numVMaps(WGHT)", "numVMaps(TXUV)", "numVMaps(WGHT)",
                                         "numVMaps(MORF)", "numVMaps(MNVW)", "numVMaps(SPOT)"};

inline Lines joined(std::initializer_list<Lines> parts)
{
    Lines all;
    for (const Lines& part : parts)
        all.insert(all.end(), part.begin(), part.end());
    return all;
}

/// Starts with nothing that a run fetches itself.
class RunSequence : public ModuleTest {
protected:
    RunSequence()
    {
        msg = nullptr; // a run fetches them itself
        objfunc = nullptr;
        xpanf = nullptr;
        monf = nullptr;
        edit = nullptr;
        use(still());
        par.clone_num = 1;
    }

    /// What was called, the panel's description and the filling of its controls left out.
    Lines calls() const
    {
        Lines kept;
        for (const std::string& call : host.calls)
            if (call.compare(0, 4, "hint") != 0 && call.compare(0, 4, "data") != 0 &&
                call.compare(0, 7, "control") != 0 && call.compare(0, 4, "form") != 0)
                kept.push_back(call);
        return kept;
    }
};

} // namespace dastrel
