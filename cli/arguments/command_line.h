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

/// The arguments of one verb: its options, what the help says around them, and the reading of them.
/// What an option is given is written into the variable it was added with, which has to live as
/// long as this. In the help options stand under the heading `group`, `shown` in place of the
/// value.
class CommandLine {
public:
    /// `usage` are the lines after "usage: ", `intro` and `examples` paragraphs of the help.
    CommandLine(std::vector<std::string> usage, std::string intro, std::string examples);
    CommandLine(const CommandLine&) = delete;
    CommandLine& operator=(const CommandLine&) = delete;
    ~CommandLine();

    /// All arguments that belong to no option.
    void add_positionals(std::vector<std::string>& values);

    /// An option without a value. `names` are one long name and maybe a short one: `-q,--quiet`.
    void add_flag(const std::string& names, bool& value, const std::string& description,
                  const std::string& group);

    /// An option with a value; given twice, the last counts.
    void add_value(const std::string& names, std::string& value, std::string_view shown,
                   const std::string& description, const std::string& group);

    /// An option with a value that may be given several times.
    void add_repeatable(const std::string& name, std::vector<std::string>& values,
                        std::string_view shown, const std::string& description,
                        const std::string& group);

    /// An option that stands alone or is followed by on, off or a like word. `value` receives the
    /// word, `on` where it stands alone. A following argument that is no such word is left alone.
    void add_switch(const std::string& name, std::string& value, const std::string& description,
                    const std::string& group);

    /// The option that is meant by a name which is none, such as a word that other programs have
    /// for it. It is told where the name is used.
    void add_other_word(std::string word, std::string option);

    /// Reads the arguments behind the verb. Returns false when help was asked for and shown.
    /// @throws UsageError
    [[nodiscard]] bool parse(std::vector<std::string> arguments);

    /// Whether there is an option of this long name (`--seed`).
    [[nodiscard]] bool has(const std::string& name) const;

    /// Whether the option of this long name was among the arguments.
    [[nodiscard]] bool was_given(const std::string& name) const;

    [[nodiscard]] std::string help() const;
    /// The usage lines alone.
    [[nodiscard]] std::string usage() const;

private:
    [[nodiscard]] std::vector<std::string> option_names() const;
    void join_switches(std::vector<std::string>& arguments) const;
    void refuse_extras() const;
    [[nodiscard]] std::string suggestion(const std::string& name) const;

    std::vector<std::string> usage_;
    std::string intro_;
    std::string examples_;
    std::vector<std::string> switches_;
    std::map<std::string, std::string, std::less<>> other_words_; ///< to the options they mean
    bool help_ = false;
    std::unique_ptr<CLI::App> app_; ///< behind a pointer: its header takes long to compile
};

} // namespace cli
