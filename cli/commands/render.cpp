// SPDX-License-Identifier: MIT
#include "cli/commands/render.h"

#include <algorithm>
#include <chrono>
#include <cstddef>

#include <fmt/format.h>

#include "cli/file_conflicts.h"
#include "cli/files.h"
#include "cli/pictures/picture_maker.h"
#include "mesh/document.h"

namespace cli {

namespace {

constexpr const char* intro =
    R"(Make a picture of what is in object files, all in one scene: the colours of the
surfaces in the light of sun and sky. No screen is needed. The picture shows the
whole mesh unless told otherwise, hidden layers included. Curves and polygons of
two points are thin lines, loose points dots. The same mesh and options always
give the same picture.

The axes are the object's own: x right, y up, z forward. - is standard input, or
standard output.
)";

constexpr const char* examples =
    R"(  dastrel render forest.lwo -o forest.png
  dastrel render forest.lwo -o clones.png --color-by DT_index --view top
  dastrel render terrain.lwo -o density.png --color-by Density --wireframe
  dastrel render terrain.lwo tree.lwo -o large.png --size 3840x2160 \
      --samples 256 --azimuth 200 --elevation 12
)";

} // namespace

RenderVerb::RenderVerb()
    : line_({"dastrel render FILE... -o PICTURE.png [options]"}, intro, examples), picture_(line_)
{
    line_.add_positionals(files_);
    line_.add_value("-o,--output", output_, "PICTURE", "PNG file to write", "files");
    line_.add_flag("--force", force_, "let the picture replace an input", "files");
    line_.add_flag("-q,--quiet", quiet_, "say errors only", "running");
}

void RenderVerb::check_output() const
{
    std::vector<RunFile> inputs;
    for (const std::string& file : files_)
        inputs.push_back({"the input", file});
    const RunFile output{"-o", output_};
    check_file_conflicts(inputs, {&output, 1}, force_ ? Replacing::allowed : Replacing::refused);
}

ExitStatus RenderVerb::run(Console& console)
{
    if (files_.empty())
        throw UsageError("names no file");
    if (output_.empty())
        throw UsageError("names no picture; add -o PICTURE.png");
    if (std::count(files_.begin(), files_.end(), standard_stream) > 1)
        throw UsageError("-: standard input can be read only once");
    const PictureRequest request = picture_.request();
    if (quiet_)
        console.set_quiet();
    for (const std::string& file : files_)
        validate_input(file);
    check_output(); // before the file extension is checked
    validate_picture_output(output_);

    const auto start = std::chrono::steady_clock::now();
    std::vector<mesh::Document> documents;
    for (const std::string& file : files_)
        documents.push_back(read_document(file, console));
    const std::size_t triangles = make_picture(documents, request, output_, console);
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
    console.note(fmt::format("{}{} -> {} ({} x {} pixels, {}, {}, {:.2f} s)", short_name(files_[0]),
                             files_.size() > 1 ? fmt::format(" + {} more", files_.size() - 1) : "",
                             short_name(output_), request.width, request.height,
                             grouped(triangles, "triangle"), grouped(request.samples, "sample"),
                             seconds.count()));
    return ExitStatus::done;
}

} // namespace cli
