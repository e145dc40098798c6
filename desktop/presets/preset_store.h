// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

namespace desktop {

/// A preset that cannot be kept under its name.
class PresetError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Presets by name, each one a settings file in a folder.
class PresetStore {
public:
    /// The folder is made when the first preset is saved.
    explicit PresetStore(std::filesystem::path folder) : folder_(std::move(folder)) {}

    /// In alphabetical order.
    [[nodiscard]] std::vector<std::string> names() const;
    [[nodiscard]] bool has(const std::string& name) const;

    /// The file of a preset, whether it is there or not.
    /// @throws PresetError for a name that can be no file's
    [[nodiscard]] std::filesystem::path file_of(const std::string& name) const;

    /// Keeps a settings file's text, in place of an older one of this name.
    /// @throws PresetError, formats::FileError
    void save(const std::string& name, const std::string& text);
    /// @throws PresetError when there is none, or the system refuses
    void remove(const std::string& name);

private:
    std::filesystem::path folder_;
};

/// Writes a text file, whole or not at all. @throws formats::FileError
void write_text(const std::filesystem::path& file, const std::string& text);

} // namespace desktop
