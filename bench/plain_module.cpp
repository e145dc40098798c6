// SPDX-License-Identifier: MIT
#include "plugin/host/run_state.h"

namespace {

[[maybe_unused]] const bool switched = [] {
    dastrel::plain_lists = true;
    return true;
}();

} // namespace
