// SPDX-License-Identifier: MIT
#include "cli/file_conflicts.h"

#include <cstddef>
#include <optional>

#include <fmt/format.h>
#include <unistd.h>

#include "cli/errors.h"
#include "cli/files.h"
#include "formats/file_identity.h"

namespace cli {

namespace {

using formats::FileIdentity;
using std::filesystem::file_type;

std::optional<FileIdentity> identify(const RunFile& file, int standard_descriptor)
{
    return file.name == standard_stream ? formats::identify_descriptor(standard_descriptor)
                                        : formats::identify_file(file.name);
}

std::string shown_output(const RunFile& output)
{
    return output.name == standard_stream ? "standard output" : output.name;
}

std::string shown_input(const RunFile& input)
{
    return input.name == standard_stream ? "standard input" : input.source + " " + input.name;
}

/// The file for the error report: that of the output or, if it is a stream, of the other one.
[[noreturn]] void refuse(const RunFile& output, const RunFile& other, const std::string& message)
{
    const std::string& file = output.name == standard_stream ? other.name : output.name;
    throw UsageError(message, {file == standard_stream ? std::string() : file, output.source});
}

void check_against_inputs(const RunFile& output, std::span<const RunFile> inputs,
                          Replacing replacing)
{
    const auto written = identify(output, STDOUT_FILENO);
    if (replacing == Replacing::allowed || !written || written->type != file_type::regular)
        return;
    for (const RunFile& input : inputs) {
        if (identify(input, STDIN_FILENO) == written)
            refuse(output, input,
                   fmt::format("{}: {} is the same file as {} and would replace it; name another "
                               "file, or add --force",
                               output.source, shown_output(output), shown_input(input)));
    }
}

/// Whether both names refer to the same file or byte stream.
bool collide(const RunFile& one, const RunFile& other)
{
    if (one.name == standard_stream && other.name == standard_stream)
        return true;
    const auto identity = identify(one, STDOUT_FILENO);
    return identity && identity->type != file_type::character &&
           identify(other, STDOUT_FILENO) == identity;
}

} // namespace

void check_file_conflicts(std::span<const RunFile> inputs, std::span<const RunFile> outputs,
                          Replacing replacing)
{
    for (std::size_t i = 0; i < outputs.size(); ++i) {
        for (std::size_t j = 0; j < i; ++j) {
            if (collide(outputs[j], outputs[i]))
                refuse(outputs[i], outputs[j],
                       fmt::format("{}: {} is the same file as {} of {}; name another file",
                                   outputs[i].source, shown_output(outputs[i]),
                                   shown_output(outputs[j]), outputs[j].source));
        }
        check_against_inputs(outputs[i], inputs, replacing);
    }
}

} // namespace cli
