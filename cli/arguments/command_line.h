// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace CLI { // NOLINT(readability-identifier-naming): the library's own name
class App;
}

namespace cli {

/// What the help tells of one option.
struct OptionHelp {
    std::vector<std::string> names; ///< with their hyphens, the short one first
    std::string value;              ///< what stands for its value, such as FILE; empty: it has none
    std::string description;
    std::string group; ///< its heading
};

/// The command line of one verb: defines options, parses arguments, and formats the help. Parsing
/// writes to the variables passed to the `add_` functions, which must outlive this object. In the
/// help, options are listed under the heading `group`, with `shown` as placeholder for the value.
class CommandLine {
public:
    /// @param usage     lines after "usage: "
    /// @param intro     first paragraphs of the help
    /// @param examples  last paragraphs of the help
    CommandLine(std::vector<std::string> usage, std::string intro, std::string examples);
    CommandLine(const CommandLine&) = delete;
    CommandLine& operator=(const CommandLine&) = delete;
    ~CommandLine();

    /// Adds the positional arguments.
    void add_positionals(std::vector<std::string>& values);

    /// Adds an option without a value. `names`: a long name and optionally a short one, such as
    /// `-q,--quiet`.
    void add_flag(const std::string& names, bool& value, const std::string& description,
                  const std::string& group);

    /// Adds an option with a value; if it is repeated, the last value counts.
    void add_value(const std::string& names, std::string& value, std::string_view shown,
                   const std::string& description, const std::string& group);

    /// Adds an option with a value that may be given several times.
    void add_repeatable(const std::string& name, std::vector<std::string>& values,
                        std::string_view shown, const std::string& description,
                        const std::string& group);

    /// Adds an option with an optional on/off value (see settings::is_switch_word). `value`
    /// receives that word, or `on` if there is none. Any other following argument is not consumed.
    void add_switch(const std::string& name, std::string& value, const std::string& description,
                    const std::string& group);

    /// Adds a hint: if the unknown option `word` is used, the error message suggests `option`.
    void add_other_word(std::string word, std::string option);

    /// Parses the arguments after the verb. Returns false if help was requested and printed.
    /// @throws UsageError
    [[nodiscard]] bool parse(std::vector<std::string> arguments);

    /// Whether there is an option of this long name (`--seed`).
    [[nodiscard]] bool has(const std::string& name) const;

    /// Whether the option of this long name was among the arguments.
    [[nodiscard]] bool was_given(const std::string& name) const;

    [[nodiscard]] std::string help() const;
    /// The usage lines alone.
    [[nodiscard]] std::string usage() const;
    /// The paragraphs of the help before and behind the options.
    [[nodiscard]] const std::string& intro() const noexcept { return intro_; }
    [[nodiscard]] const std::string& examples() const noexcept { return examples_; }
    /// The options as the help tells of them, in its order.
    [[nodiscard]] std::vector<OptionHelp> option_help() const;

private:
    [[nodiscard]] std::vector<std::string> option_names() const;
    void join_switches(std::vector<std::string>& arguments) const;
    void refuse_extras() const;
    [[nodiscard]] std::string suggestion(const std::string& name) const;

    std::vector<std::string> usage_;
    std::string intro_;
    std::string examples_;
    std::vector<std::string> switches_;
    std::map<std::string, std::string, std::less<>> other_words_; ///< unknown option to suggestion
    bool help_ = false;
    std::unique_ptr<CLI::App> app_; ///< a pointer, because its header is slow to compile
};

} // namespace cli
