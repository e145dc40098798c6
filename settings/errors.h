// SPDX-License-Identifier: MIT
#pragma once

#include <stdexcept>

namespace settings {

/// Settings that make no sense: a file that is no object of settings, an unknown name, a value that
/// is none, a map that is not there. Says where, and what to write.
class WrongSettings : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A settings file that cannot be read, with the system's reason.
class UnreadableSettings : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A panel that lacks a control which a setting needs, or whose control does not take its value.
class PanelMismatch : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

} // namespace settings
