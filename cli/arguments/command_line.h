// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <CLI/CLI.hpp>

namespace cli {

/// The arguments of one verb: its options, what the help says around them, and the reading of them.
/// Options are added to `app()`; a switch option is one added by `add_switch`.
class CommandLine {
public:
    /// `usage` are the lines after "usage: ", `intro` and `examples` paragraphs of the help.
    CommandLine(std::string verb, std::vector<std::string> usage, std::string intro,
                std::string examples);

    [[nodiscard]] CLI::App& app() noexcept { return app_; }

    /// An option with a value; given twice, the last counts.
    CLI::Option* add_value(const std::string& names, std::string& value, std::string_view shown,
                           const std::string& description, const std::string& group);

    /// An option that stands alone or is followed by on, off or a like word. `value` receives the
    /// word, `on` where it stands alone. A following argument that is no such word is left alone.
    CLI::Option* add_switch(const std::string& name, std::string& value,
                            const std::string& description, const std::string& group);

    /// Reads the arguments behind the verb. Returns false when help was asked for and shown.
    /// @throws UsageError
    [[nodiscard]] bool parse(std::vector<std::string> arguments);

    [[nodiscard]] std::string help() const;
    /// The usage lines alone.
    [[nodiscard]] std::string usage() const;
    [[nodiscard]] const std::string& verb() const noexcept { return verb_; }

private:
    [[nodiscard]] std::vector<std::string> option_names() const;
    void join_switches(std::vector<std::string>& arguments) const;
    void refuse_extras() const;

    std::string verb_;
    std::vector<std::string> usage_;
    std::string intro_;
    std::string examples_;
    std::vector<std::string> switches_;
    bool help_ = false;
    CLI::App app_;
};

/// The text in lines of at most `width` characters, all after the first indented by `indent`.
/// Words are never broken.
[[nodiscard]] std::string wrapped(std::string_view text, std::size_t width, std::size_t indent);

} // namespace cli
