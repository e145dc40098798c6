// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <deque>
#include <string>
#include <vector>

#include "cli/arguments/command_line.h"
#include "settings/given.h"

namespace cli {

/// The parsed request of `dastrel scatter`; file names are not resolved yet.
struct ScatterRequest {
    std::vector<std::string> inputs; ///< ground and models, or one scene
    std::string output;
    std::string picture;                 ///< picture file; empty: none
    bool scene = false;                  ///< the input is one file with ground and model layers
    std::vector<std::size_t> foreground; ///< layer positions in the scene, from 1
    std::vector<std::size_t> background; ///< layer positions, from 1; empty: all others
    std::vector<std::string> select_surfaces;
    std::vector<settings::GivenSetting> settings;
    std::string settings_file; ///< empty: not given
    std::string clock;         ///< empty: not given
    std::string module;        ///< module file; empty: search for it
    bool own_layer = false;    ///< put the clones into a new layer
    bool force = false;        ///< the output may replace an input
    bool json = false;
    bool quiet = false;
};

/// The arguments of `dastrel scatter`.
class ScatterArguments {
public:
    ScatterArguments();

    [[nodiscard]] CommandLine& command_line() noexcept { return line_; }

    /// Validates the parsed arguments and reads the settings file. @throws UsageError, Failure
    [[nodiscard]] ScatterRequest request() const;

private:
    void add_settings();
    void validate_inputs(ScatterRequest& request) const;
    void validate_picture_name(const ScatterRequest& request) const;
    [[nodiscard]] std::vector<settings::GivenSetting> given_settings() const;

    CommandLine line_;
    std::vector<std::string> inputs_;
    std::string output_;
    std::string picture_;
    std::string foreground_;
    std::string background_;
    std::vector<std::string> select_surfaces_;
    std::string settings_file_;
    std::string clock_;
    std::string module_;
    bool own_layer_ = false;
    bool force_ = false;
    bool json_ = false;
    bool quiet_ = false;

    struct SettingOption {
        const settings::Setting* setting;
        std::string text;
    };
    std::deque<SettingOption> settings_; ///< a deque: the parser has pointers to the strings
};

} // namespace cli
