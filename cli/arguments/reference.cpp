// SPDX-License-Identifier: MIT
#include "cli/arguments/reference.h"

#include <fmt/format.h>

#include "cli/version.h"

namespace cli {

namespace {

/// Text for roff: no word of it is taken for a request, and hyphens can be copied.
std::string roff(std::string_view text)
{
    std::string result;
    bool at_line_start = true;
    for (const char c : text) {
        if (at_line_start && (c == '.' || c == '\''))
            result += "\\&";
        if (c == '\\')
            result += "\\e";
        else if (c == '-')
            result += "\\-";
        else
            result += c;
        at_line_start = c == '\n';
    }
    return result;
}

/// Lines as they stand, in one type width.
std::string roff_block(std::string_view text)
{
    return fmt::format(".PP\n.nf\n{}{}.fi\n", roff(text), text.ends_with('\n') ? "" : "\n");
}

std::string joined(const std::vector<std::string>& names, std::string_view between)
{
    return fmt::format("{}", fmt::join(names, between));
}

/// Text between single quotes for a shell.
std::string shell_quoted(std::string_view text)
{
    std::string result = "'";
    for (const char c : text)
        result += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return result + "'";
}

std::string fish_quoted(std::string_view text)
{
    std::string result = "'";
    for (const char c : text) {
        if (c == '\'' || c == '\\')
            result += '\\';
        result += c;
    }
    return result + "'";
}

std::string verb_names(std::span<const VerbHelp> verbs)
{
    std::string names = "help";
    for (const VerbHelp& verb : verbs)
        names += fmt::format(" {}", verb.name);
    return names;
}

} // namespace

std::string man_page(std::span<const VerbHelp> verbs)
{
    std::string page = fmt::format(".TH DASTREL 1 \"\" \"dastrel {}\" \"User Commands\"\n"
                                   ".SH NAME\ndastrel \\- scatter clones of a model over a ground\n"
                                   ".SH SYNOPSIS\n.B dastrel\n.I VERB\n[\\fIOPTIONS\\fR] ...\n"
                                   ".SH VERBS\n",
                                   version);
    for (const VerbHelp& verb : verbs)
        page += fmt::format(".TP\n.B {}\n{}\n", verb.name, roff(verb.summary));
    for (const VerbHelp& verb : verbs) {
        page += fmt::format(".SH {}\n", roff(fmt::format("dastrel {}", verb.name)));
        page += roff_block(verb.line->usage());
        page += fmt::format(".PP\n{}", roff(verb.line->intro()));
        std::string group;
        for (const OptionHelp& option : verb.line->option_help()) {
            if (option.group != group)
                page += fmt::format(".SS {}\n", roff(option.group));
            group = option.group;
            page += fmt::format(".TP\n\\fB{}\\fR {}\n{}\n", roff(joined(option.names, ", ")),
                                roff(option.value), roff(option.description));
        }
        page += ".SS examples\n" + roff_block(verb.line->examples());
    }
    return page;
}

std::string bash_completion(std::span<const VerbHelp> verbs)
{
    std::string text = "# bash completion for dastrel\n_dastrel()\n{\n"
                       "    local options=\n    case ${COMP_WORDS[1]-} in\n";
    for (const VerbHelp& verb : verbs) {
        std::string options;
        for (const OptionHelp& option : verb.line->option_help())
            options += (options.empty() ? "" : " ") + joined(option.names, " ");
        text += fmt::format("        {}) options='{}' ;;\n", verb.name, options);
    }
    return text +
           fmt::format(
               "    esac\n"
               "    if [ \"$COMP_CWORD\" -eq 1 ] || [ \"${{COMP_WORDS[1]}}\" = help ]; then\n"
               "        options='{} --help --version'\n"
               "    elif [[ $2 != -* ]]; then\n"
               "        options=\n"
               "    fi\n"
               "    mapfile -t COMPREPLY < <(compgen -W \"$options\" -- \"$2\")\n"
               "}}\n"
               "complete -o default -F _dastrel dastrel\n",
               verb_names(verbs));
}

std::string zsh_completion(std::span<const VerbHelp> verbs)
{
    std::string text = "#compdef dastrel\nlocal -a verbs options\nverbs=(\n";
    for (const VerbHelp& verb : verbs)
        text +=
            fmt::format("    {}\n", shell_quoted(fmt::format("{}:{}", verb.name, verb.summary)));
    text += "    'help:show all about one verb'\n)\n"
            "if (( CURRENT == 2 )) || [[ $words[2] == help ]]; then\n"
            "    _describe verb verbs\n    return\nfi\ncase $words[2] in\n";
    for (const VerbHelp& verb : verbs) {
        text += fmt::format("    {})\n        options=(\n", verb.name);
        for (const OptionHelp& option : verb.line->option_help())
            for (const std::string& name : option.names)
                text += fmt::format("            {}\n",
                                    shell_quoted(fmt::format("{}:{}", name, option.description)));
        text += "        ) ;;\n";
    }
    return text + "esac\n"
                  "if [[ $PREFIX == -* ]]; then\n    _describe -o option options\n"
                  "else\n    _files\nfi\n";
}

std::string fish_completion(std::span<const VerbHelp> verbs)
{
    std::string text = "# fish completion for dastrel\n";
    for (const VerbHelp& verb : verbs)
        text += fmt::format("complete -c dastrel -n __fish_use_subcommand -a {} -d {}\n", verb.name,
                            fish_quoted(verb.summary));
    for (const VerbHelp& verb : verbs) {
        for (const OptionHelp& option : verb.line->option_help()) {
            text +=
                fmt::format("complete -c dastrel -n '__fish_seen_subcommand_from {}'", verb.name);
            for (const std::string& name : option.names)
                text += name.starts_with("--") ? " -l " + name.substr(2) : " -s " + name.substr(1);
            text += fmt::format("{} -d {}\n", option.value.empty() ? "" : " -r",
                                fish_quoted(option.description));
        }
    }
    return text;
}

} // namespace cli
