// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <deque>
#include <string>
#include <vector>

#include "cli/arguments/command_line.h"
#include "settings/given.h"

namespace cli {

/// What `dastrel scatter` was asked to do, as far as the words alone tell.
struct ScatterRequest {
    std::vector<std::string> inputs; ///< ground and models, or one scene
    std::string output;
    std::string picture;                 ///< empty: none is made
    bool scene = false;                  ///< one file whose layers are ground and model
    std::vector<std::size_t> foreground; ///< layers of the scene, from 1
    std::vector<std::size_t> background; ///< the same; empty: all others
    std::vector<std::string> select_surfaces;
    std::vector<settings::GivenSetting> settings;
    std::string settings_file; ///< empty: none given
    std::string clock;         ///< empty: none given
    std::string module;        ///< empty: the one that is found
    bool own_layer = false;    ///< the clones get a layer of their own
    bool force = false;        ///< the output may replace an input
    bool json = false;
    bool quiet = false;
};

/// The arguments of `dastrel scatter`.
class ScatterArguments {
public:
    ScatterArguments();

    [[nodiscard]] CommandLine& command_line() noexcept { return line_; }

    /// Judges what was parsed, and reads the settings file. @throws UsageError, Failure
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
    std::deque<SettingOption> settings_; ///< the parser writes into the texts: they must not move
};

} // namespace cli
