// SPDX-License-Identifier: MIT
#include "mesh/fourcc.h"

namespace mesh {

std::string to_text(FourCC id)
{
    constexpr char digits[] = "0123456789ABCDEF";
    std::string text;
    for (int shift = 24; shift >= 0; shift -= 8) {
        const unsigned byte = (id >> shift) & 0xFFu;
        if (byte >= 0x20 && byte < 0x7F) {
            text += static_cast<char>(byte);
        } else {
            text += "\\x";
            text += digits[byte >> 4];
            text += digits[byte & 0xFu];
        }
    }
    return text;
}

} // namespace mesh
