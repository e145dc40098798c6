// SPDX-License-Identifier: MIT
#pragma once

namespace dastrel {

/// A small owned text, used to compose names.
class Cstr {
public:
    /// A copy of `text`; null gives the empty text.
    explicit Cstr(const char* text);
    /// The number in decimal.
    explicit Cstr(int number);
    Cstr(const Cstr&) = delete;
    Cstr& operator=(const Cstr&) = delete;
    ~Cstr();

    /// Appends `text`, in a new buffer of exactly the joint size. Null appends nothing.
    Cstr& operator+=(const char* text);

    /// The text, ended by NUL, owned by this object and valid until it changes.
    operator const char*() const { return buffer; }

private:
    char* buffer;
    int length; ///< without the NUL
};

} // namespace dastrel
