// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

namespace desktop {

/// A preset cannot be saved or removed under its name.
class PresetError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Presets by name, stored as settings files in a folder.
class PresetStore {
public:
    /// The folder is created when the first preset is saved.
    explicit PresetStore(std::filesystem::path folder) : folder_(std::move(folder)) {}

    /// In alphabetical order.
    [[nodiscard]] std::vector<std::string> names() const;
    [[nodiscard]] bool has(const std::string& name) const;

    /// The file of a preset, which need not exist.
    /// @throws PresetError for a name that is not a valid file name
    [[nodiscard]] std::filesystem::path file_of(const std::string& name) const;

    /// Saves the text of a settings file; replaces an existing preset of this name.
    /// @throws PresetError, formats::FileError
    void save(const std::string& name, const std::string& text);
    /// Deletes a preset. @throws PresetError if there is none, or deleting fails
    void remove(const std::string& name);

private:
    std::filesystem::path folder_;
};

/// Writes a text file atomically. @throws formats::FileError
void write_text(const std::filesystem::path& file, const std::string& text);

} // namespace desktop
