// SPDX-License-Identifier: MIT
#pragma once

#include <stdexcept>

namespace settings {

/// Invalid settings: the file is not a JSON object of settings, or a name, value or map is invalid.
/// The message says where, and what is allowed.
class WrongSettings : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A settings file cannot be read. The message has the system's reason.
class UnreadableSettings : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The panel has no control for a setting, or its control does not accept the value.
class PanelMismatch : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

} // namespace settings
