// SPDX-License-Identifier: MIT
#include "plugin/util/stringi.h"

#include <cstddef>
#include <cstdio>
#include <cstring>

namespace dastrel {

namespace {

char* copy_of(const char* text, int length)
{
    char* const copy = new char[static_cast<std::size_t>(length) + 1];
    std::memcpy(copy, text, static_cast<std::size_t>(length));
    copy[length] = '\0';
    return copy;
}

int length_of(const char* text) { return static_cast<int>(std::strlen(text)); }

} // namespace

Cstr::Cstr(const char* text) : buffer(nullptr), length(0)
{
    if (text == nullptr)
        text = "";
    length = length_of(text);
    buffer = copy_of(text, length);
}

Cstr::Cstr(int number) : buffer(nullptr), length(0)
{
    char digits[25];
    std::snprintf(digits, sizeof digits, "%i", number);
    length = length_of(digits);
    buffer = copy_of(digits, length);
}

Cstr::~Cstr() { delete[] buffer; }

Cstr& Cstr::operator+=(const char* text)
{
    if (text == nullptr)
        return *this;
    const int added = length_of(text);
    char* const joint =
        new char[static_cast<std::size_t>(length) + static_cast<std::size_t>(added) + 1];
    std::memcpy(joint, buffer, static_cast<std::size_t>(length));
    std::memcpy(joint + length, text, static_cast<std::size_t>(added) + 1);
    delete[] buffer;
    buffer = joint;
    length += added;
    return *this;
}

} // namespace dastrel
